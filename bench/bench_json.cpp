// Reading and writing a list the size of the widget's water log at its largest:
// 10,000 small objects, about 700 KB. The typed layer's cost over a bare
// simdjson DOM parse is what this watches.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

#if __has_include(<nlohmann/json.hpp>)
#include <nlohmann/json.hpp>
#define QRV_BENCH_NLOHMANN 1
#endif
#include <simdjson.h>

#include "Platform/coding/JSONDecoder.hpp"
#include "Platform/coding/JSONWriter.hpp"

using namespace qrv::platform;

namespace {

struct Tap {
    Date date;
    float waterValue = 0;
    std::string waterUnit;
};

std::vector<Tap> makeTaps(std::size_t count) {
    std::vector<Tap> taps;
    const char* units[] = {"oz", "ml", "cups"};
    for (std::size_t i = 0; i < count; ++i)
        taps.push_back(Tap{Date{731707200.0 + static_cast<double>(i) * 37.123456789},
                           static_cast<float>(i % 500) * 0.7f + 0.1f, units[i % 3]});
    return taps;
}

std::string encode(const std::vector<Tap>& taps) {
    JSONWriter writer;
    writer.beginArray();
    for (const auto& tap : taps)
        writer.beginObject()
            .key("date").date(tap.date)
            .key("waterValue").number(tap.waterValue)
            .key("waterUnit").string(tap.waterUnit)
            .endObject();
    writer.endArray();
    return std::move(writer).take();
}

const std::string& document() {
    static const std::string text = encode(makeTaps(10'000));
    return text;
}

std::vector<Tap> decodeTaps(const JSONValue& root) {
    std::vector<Tap> taps;
    auto list = root.unkeyedContainer();
    taps.reserve(list.count());
    while (!list.isAtEnd()) {
        auto object = list.next().keyedContainer();
        taps.push_back(Tap{object.decodeDate("date"), object.decodeFloat("waterValue"), object.decodeString("waterUnit")});
    }
    return taps;
}

void BM_TypedDecodeFreshDecoder(benchmark::State& state) {
    const auto& text = document();
    for (auto _ : state) {
        auto result = decodeJSON<std::vector<Tap>>(bytesOf(text), decodeTaps);
        benchmark::DoNotOptimize(result);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}
BENCHMARK(BM_TypedDecodeFreshDecoder)->Unit(benchmark::kMillisecond);

void BM_TypedDecodeReusedDecoder(benchmark::State& state) {
    const auto& text = document();
    JSONDecoder decoder;
    for (auto _ : state) {
        auto result = decoder.decode<std::vector<Tap>>(bytesOf(text), decodeTaps);
        benchmark::DoNotOptimize(result);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}
BENCHMARK(BM_TypedDecodeReusedDecoder)->Unit(benchmark::kMillisecond);

void BM_SimdjsonDomParseOnly(benchmark::State& state) {
    const auto& text = document();
    simdjson::padded_string padded(text);
    simdjson::dom::parser parser;
    for (auto _ : state) {
        simdjson::dom::element root;
        auto error = parser.parse(padded).get(root);
        benchmark::DoNotOptimize(error);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}
BENCHMARK(BM_SimdjsonDomParseOnly)->Unit(benchmark::kMillisecond);

#ifdef QRV_BENCH_NLOHMANN
void BM_NlohmannDecode(benchmark::State& state) {
    const auto& text = document();
    for (auto _ : state) {
        auto json = nlohmann::json::parse(text);
        std::vector<Tap> taps;
        taps.reserve(json.size());
        for (const auto& object : json)
            taps.push_back(Tap{Date{object.at("date").get<double>()}, object.at("waterValue").get<float>(),
                               object.at("waterUnit").get<std::string>()});
        benchmark::DoNotOptimize(taps);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}
BENCHMARK(BM_NlohmannDecode)->Unit(benchmark::kMillisecond);
#endif

void BM_Encode(benchmark::State& state) {
    const auto taps = makeTaps(10'000);
    for (auto _ : state) {
        auto text = encode(taps);
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(BM_Encode)->Unit(benchmark::kMillisecond);

}  // namespace
