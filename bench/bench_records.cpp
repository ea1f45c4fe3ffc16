// Decoding what the main app and the extension leave in the store: each
// record as its strategy decodes it, and the extension's own lists (water
// taps, fetch events) at the sizes they reach.
#include <benchmark/benchmark.h>

#include "Platform/store/PropertyList.hpp"
#include "Widget/Cache/CaloriesConsumedDataEntry.hpp"
#include "Widget/Cache/InteractiveWaterData.hpp"
#include "Widget/Cache/MacronutrientsDataEntry.hpp"
#include "Widget/Cache/WaterDataEntry.hpp"
#include "Widget/Providers/WidgetFetchEvent.hpp"
#include "bench/BenchSupport.hpp"

using namespace qrv;
using namespace qrv::bench;

namespace {

template <class Record>
void decodeRecord(benchmark::State& state, const std::string& json) {
    const auto bytes = bytesOf(json);
    for (auto _ : state) {
        auto record = Record::decode(std::span<const std::uint8_t>(bytes));
        if (!record) state.SkipWithError("record does not decode");
        benchmark::DoNotOptimize(record);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes.size()));
}

void BM_DecodeCaloriesRecord(benchmark::State& state) {
    decodeRecord<widget::CaloriesConsumedDataEntry>(state, caloriesRecord());
}
BENCHMARK(BM_DecodeCaloriesRecord)->Unit(benchmark::kMicrosecond);

void BM_DecodeMacronutrientsRecord(benchmark::State& state) {
    decodeRecord<widget::MacronutrientsDataEntry>(state, macronutrientsRecord());
}
BENCHMARK(BM_DecodeMacronutrientsRecord)->Unit(benchmark::kMicrosecond);

void BM_DecodeWaterRecord(benchmark::State& state) { decodeRecord<widget::WaterDataEntry>(state, waterRecord()); }
BENCHMARK(BM_DecodeWaterRecord)->Unit(benchmark::kMicrosecond);

// The water tap list at N records: what the water timeline and every tap decode.
void BM_DecodeTapList(benchmark::State& state) {
    const auto bytes = widget::encodeInteractiveWaterDataList(taps(static_cast<std::size_t>(state.range(0))));
    for (auto _ : state) {
        auto list = widget::decodeInteractiveWaterDataList(bytes);
        benchmark::DoNotOptimize(list);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes.size()));
    state.counters["bytes"] = static_cast<double>(bytes.size());
}
BENCHMARK(BM_DecodeTapList)->Arg(10)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

void BM_EncodeTapList(benchmark::State& state) {
    const auto list = taps(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        auto bytes = widget::encodeInteractiveWaterDataList(list);
        benchmark::DoNotOptimize(bytes);
    }
}
BENCHMARK(BM_EncodeTapList)->Arg(10)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

// The store file holding N fetch events, parsed as the store reads it.
void BM_ParseStoreWithEvents(benchmark::State& state) {
    platform::PropertyListValue::Dictionary contents{{"widget_events", events(static_cast<std::size_t>(state.range(0)))},
                                                     {"CaloriesData", bytesOf(caloriesRecord())}};
    const auto bytes = platform::PropertyList::encode(platform::PropertyListValue(std::move(contents)));
    for (auto _ : state) {
        auto value = platform::PropertyList::decode(bytes);
        benchmark::DoNotOptimize(value);
    }
    state.counters["bytes"] = static_cast<double>(bytes.size());
}
BENCHMARK(BM_ParseStoreWithEvents)->Arg(10)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

}  // namespace
