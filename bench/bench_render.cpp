// Drawing each widget family at 3x with the demo day's entry, in the three
// steps the host takes: the content view built and laid out (every pass) and
// recorded as a display list, the list painted, the pixels encoded as PNG.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "Host/DeviceProfile.hpp"
#include "Host/RenderWidget.hpp"
#include "Platform/drawing/CairoPainter.hpp"
#include "Widget/Cache/CaloriesConsumedDataEntry.hpp"
#include "Widget/Cache/MacronutrientsDataEntry.hpp"
#include "Widget/Cache/WaterDataEntry.hpp"
#include "Widget/Widgets/QRVWidgets.hpp"
#include "bench/BenchSupport.hpp"

using namespace qrv;
using namespace qrv::bench;

namespace {

constexpr double kScale = 3;
constexpr auto kScheme = platform::ColorScheme::light;

const platform::Painter& painter() {
    static const platform::Painter shared(host::widgetIconDirectory());
    return shared;
}

const host::WidgetRenderer& renderer() {
    static const host::WidgetRenderer shared(painter(), host::DeviceProfile::phone());
    return shared;
}

widget::WidgetEntry demoEntry(const std::string& widgetName) {
    if (widgetName == "calories")
        return widget::WidgetEntry(*widget::CaloriesConsumedDataEntry::decode(caloriesRecord()));
    if (widgetName == "macronutrients")
        return widget::WidgetEntry(*widget::MacronutrientsDataEntry::decode(macronutrientsRecord()));
    return widget::WidgetEntry(*widget::WaterDataEntry::decode(waterRecord()));
}

struct Case {
    widget::WidgetConfiguration widget;
    platform::WidgetFamily family;
    widget::WidgetEntry entry;
};

void viewBuildAndLayout(benchmark::State& state, const Case& c) {
    for (auto _ : state) {
        auto rendered = renderer().render(c.widget, c.entry, c.family, kScheme);
        if (!rendered) state.SkipWithError("nothing rendered");
        benchmark::DoNotOptimize(rendered);
    }
}

void paint(benchmark::State& state, const Case& c) {
    const auto rendered = renderer().render(c.widget, c.entry, c.family, kScheme);
    if (!rendered) return state.SkipWithError("nothing rendered");
    for (auto _ : state) {
        auto raster = painter().rasterize(rendered->displayList, kScale, kScheme);
        if (!raster) state.SkipWithError(raster.error().c_str());
        benchmark::DoNotOptimize(raster);
    }
}

// Also the PNG writer's candidate settings, on one large image (the medium
// water widget, the costliest to encode), to choose the defaults by measurement.
void encodePNG(benchmark::State& state, const Case& c, platform::PngSettings settings = {}) {
    const auto rendered = renderer().render(c.widget, c.entry, c.family, kScheme);
    if (!rendered) return state.SkipWithError("nothing rendered");
    const auto raster = painter().rasterize(rendered->displayList, kScale, kScheme);
    if (!raster) return state.SkipWithError(raster.error().c_str());
    std::size_t bytes = 0;
    for (auto _ : state) {
        auto png = platform::encodePNG(raster.value(), settings);
        if (!png) state.SkipWithError(png.error().c_str());
        bytes = png.value().size();
        benchmark::DoNotOptimize(png);
    }
    state.counters["png_bytes"] = static_cast<double>(bytes);
    state.counters["pixels"] = static_cast<double>(raster.value().width) * raster.value().height;
}

const bool registeredSettings = [] {
    using Deflate = platform::PngSettings::Deflate;
    const std::vector<std::pair<std::string, platform::PngSettings>> candidates{
        {"isal-0", {Deflate::isal, 0}}, {"isal-1", {Deflate::isal, 1}}, {"isal-2", {Deflate::isal, 2}},
        {"isal-3", {Deflate::isal, 3}}, {"zlib-1", {Deflate::zlib, 1}}, {"zlib-2", {Deflate::zlib, 2}},
        {"zlib-6", {Deflate::zlib, 6}},
    };
    for (const auto& widget : widget::QRVWidgets{}.body(17)) {
        if (host::hostWidgetName(widget.kind()) != "water") continue;
        const auto c =
            std::make_shared<Case>(Case{widget, platform::WidgetFamily::systemMedium, demoEntry("water")});
        for (const auto& [label, settings] : candidates)
            benchmark::RegisterBenchmark(
                ("BM_EncodePNGSettings/" + label).c_str(),
                [c, settings](benchmark::State& state) { encodePNG(state, *c, settings); })
                ->Unit(benchmark::kMicrosecond);
    }
    return true;
}();

// One benchmark of each step for every widget the bundle offers and every
// family it supports.
const bool registered = [] {
    for (const auto& widget : widget::QRVWidgets{}.body(17)) {
        const auto name = host::hostWidgetName(widget.kind());
        for (const auto family : widget.supportedFamilies()) {
            const auto suffix = "/" + name + "/" + std::string(platform::name(family));
            const auto c = std::make_shared<Case>(Case{widget, family, demoEntry(name)});
            benchmark::RegisterBenchmark(("BM_ViewBuildAndLayout" + suffix).c_str(),
                                         [c](benchmark::State& state) { viewBuildAndLayout(state, *c); })
                ->Unit(benchmark::kMicrosecond);
            benchmark::RegisterBenchmark(("BM_Paint" + suffix).c_str(),
                                         [c](benchmark::State& state) { paint(state, *c); })
                ->Unit(benchmark::kMicrosecond);
            benchmark::RegisterBenchmark(("BM_EncodePNG" + suffix).c_str(),
                                         [c](benchmark::State& state) { encodePNG(state, *c); })
                ->Unit(benchmark::kMicrosecond);
        }
    }
    return true;
}();

}  // namespace
