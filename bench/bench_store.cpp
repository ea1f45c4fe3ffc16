// The widget's work against a store file on disk: the cache reader end to end,
// each provider's timeline, and a log-water tap, at the sizes the extension's
// own lists reach (taps are never pruned, fetch events never trimmed).
#include <benchmark/benchmark.h>

#include "Platform/timeline/TimelineProvider.hpp"
#include "Widget/Cache/InteractiveWidgetDataCacheReader.hpp"
#include "Widget/Cache/InteractiveWidgetDataCacheWriter.hpp"
#include "Widget/Cache/WidgetDataCacheReader.hpp"
#include "Widget/Providers/CaloriesWidgetProvider.hpp"
#include "Widget/Providers/MacronutrientsWidgetProvider.hpp"
#include "Widget/Providers/WaterWidgetProvider.hpp"
#include "Widget/Water/WaterWidgetIntent.hpp"
#include "bench/BenchSupport.hpp"

using namespace qrv;
using namespace qrv::bench;

namespace {

const auto kContext = platform::TimelineProviderContext::forFamily(platform::WidgetFamily::systemSmall);

// Completion-style read of the calories record: flag, fetch, decode, current?,
// then the main queue's callback.
void BM_ReaderEndToEnd(benchmark::State& state) {
    ScratchStore scratch;
    scratch.fillDemoDay();
    DrainedEnvironment env(scratch.store());
    auto reader = widget::WidgetDataCacheReader::make(env.environment);
    reader->registerStrategy(widget::WidgetDataCacheType::calories,
                             std::make_shared<widget::CaloriesDataReadStrategy>(
                                 "CaloriesData", env.environment.calendar, env.environment.clock));
    int delivered = 0;
    for (auto _ : state) {
        reader->read(widget::WidgetDataCacheType::calories, [&](widget::AnyWidgetDataCacheEntry) { ++delivered; });
        env.drain();
    }
    if (delivered != static_cast<int>(state.iterations())) state.SkipWithError("the reader did not deliver");
}
BENCHMARK(BM_ReaderEndToEnd)->Unit(benchmark::kMicrosecond);

// A provider's timeline, start to completion. The calories and macronutrient
// providers then append a fetch event; the list is set back to N events
// before each request, outside the timing.
template <class Provider>
void timeline(benchmark::State& state) {
    ScratchStore scratch;
    scratch.fillDemoDay();
    const auto existing = events(static_cast<std::size_t>(state.range(0)));
    DrainedEnvironment env(scratch.store());
    const auto provider = Provider::make(env.environment);
    int answered = 0;
    for (auto _ : state) {
        state.PauseTiming();
        scratch.store()->set("widget_events", existing);
        state.ResumeTiming();
        provider.getTimeline(kContext, [&](auto timeline) {
            answered += static_cast<int>(timeline.entries.size());
        });
        env.drain();
    }
    if (answered != 2 * static_cast<int>(state.iterations())) state.SkipWithError("no two-entry timeline");
}

void BM_CaloriesTimeline(benchmark::State& state) { timeline<widget::CaloriesWidgetProvider>(state); }
BENCHMARK(BM_CaloriesTimeline)->Arg(0)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void BM_MacronutrientsTimeline(benchmark::State& state) { timeline<widget::MacronutrientsWidgetProvider>(state); }
BENCHMARK(BM_MacronutrientsTimeline)->Arg(0)->Arg(1000)->Unit(benchmark::kMillisecond);

// The water timeline with N taps in the widget's own list (all of today).
void BM_WaterTimeline(benchmark::State& state) {
    ScratchStore scratch;
    scratch.fillDemoDay();
    scratch.store()->set("WaterInteractiveData",
                         widget::encodeInteractiveWaterDataList(taps(static_cast<std::size_t>(state.range(0)))));
    DrainedEnvironment env(scratch.store());
    const auto provider = widget::WaterWidgetProvider::make(env.environment);
    int answered = 0;
    for (auto _ : state) {
        provider.getTimeline(kContext, [&](auto timeline) { answered += static_cast<int>(timeline.entries.size()); });
        env.drain();
    }
    if (answered != 2 * static_cast<int>(state.iterations())) state.SkipWithError("no two-entry timeline");
}
BENCHMARK(BM_WaterTimeline)->Arg(0)->Arg(10)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

// One tap of the log button with N earlier taps stored: read under the lock,
// decode, append, encode, write a temporary file, fsync, rename. The list is
// set back to N taps before each tap, outside the timing.
void BM_LogWaterTap(benchmark::State& state) {
    ScratchStore scratch;
    scratch.fillDemoDay();
    const auto earlier = widget::encodeInteractiveWaterDataList(taps(static_cast<std::size_t>(state.range(0))));
    widget::InteractiveWidgetDataCacheWriter writer(
        {{widget::InteractiveWidgetDataType::water,
          std::make_shared<widget::InteractiveWaterDataWriteStrategy>("WaterInteractiveData")}},
        scratch.store());
    const platform::FixedClock clock(platform::Date{kNow});
    auto intent = widget::WaterWidgetIntent("ml", "250");
    intent.withClock(clock).withWriter(writer);
    for (auto _ : state) {
        state.PauseTiming();
        scratch.store()->set("WaterInteractiveData", earlier);
        state.ResumeTiming();
        const auto logged = intent.log();
        if (logged.result != widget::InteractiveWriteResult::stored) state.SkipWithError("the tap was not stored");
    }
    state.counters["list_bytes"] = static_cast<double>(earlier.size());
}
BENCHMARK(BM_LogWaterTap)->Arg(10)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
