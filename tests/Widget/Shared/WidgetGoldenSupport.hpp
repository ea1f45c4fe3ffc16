#pragma once
// Golden display lists for the widget views: the recorded list, printed as
// text, must match tests/golden/widget/<name>.txt. QRV_UPDATE_GOLDEN=1 rewrites
// the files instead (review the diff before committing). Text is measured by
// the fixed-advance measurer so the files are the same on every machine.
#include "Platform/drawing/DisplayList.hpp"
#include "Platform/drawing/FixedAdvanceTextMeasurer.hpp"
#include "Platform/drawing/Recorder.hpp"
#include "tests/Platform/drawing/GoldenSupport.hpp"

#include <string>

namespace qrv::widget::testing {

inline platform::DisplayList recorded(const platform::View& view, platform::Size size,
                                      platform::WidgetFamily family = platform::WidgetFamily::systemSmall,
                                      platform::ColorScheme scheme = platform::ColorScheme::light) {
    static const platform::FixedAdvanceTextMeasurer measurer;
    platform::RenderOptions options;
    options.size = size;
    options.widgetFamily = family;
    options.colorScheme = scheme;
    return platform::render(view, options, measurer);
}

inline void expectGolden(const std::string& name, const platform::DisplayList& list) {
    platform::testing::expectGolden("widget", name, list);
}

}  // namespace qrv::widget::testing
