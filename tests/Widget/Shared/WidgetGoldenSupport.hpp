#pragma once
// Golden display lists for the widget views: the recorded list, printed as
// text, must match tests/golden/widget/<name>.txt. QRV_UPDATE_GOLDEN=1 rewrites
// the files instead (review the diff before committing). Text is measured by
// the fixed-advance measurer so the files are the same on every machine.
#include "Platform/drawing/DisplayList.hpp"
#include "Platform/drawing/FixedAdvanceTextMeasurer.hpp"
#include "Platform/drawing/Recorder.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
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
    const std::string path = std::string(QRV_TEST_DATA) + "/golden/widget/" + name + ".txt";
    const std::string actual = platform::toText(list);
    const char* update = std::getenv("QRV_UPDATE_GOLDEN");
    if (update && std::string(update) == "1") {
        std::ofstream(path, std::ios::binary) << actual;
        return;
    }
    std::ifstream in(path, std::ios::binary);
    ASSERT_TRUE(in) << "missing golden file " << path << " (run with QRV_UPDATE_GOLDEN=1 to create it)";
    std::stringstream expected;
    expected << in.rdbuf();
    EXPECT_EQ(actual, expected.str()) << "golden file " << path << " differs (QRV_UPDATE_GOLDEN=1 rewrites it)";
}

}  // namespace qrv::widget::testing
