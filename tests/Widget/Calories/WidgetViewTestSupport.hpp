#pragma once
// Rendering widget content views into display lists for tests: text measured
// by the fixed-advance measurer and every icon 16 × 16, so positions are exact
// on every machine. Views with a two-pass layout get their second pass here as
// the renderer gives it.
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Platform/drawing/DisplayList.hpp"
#include "Platform/drawing/FixedAdvanceTextMeasurer.hpp"
#include "Platform/drawing/Layout.hpp"
#include "Platform/drawing/Recorder.hpp"
#include "Platform/timeline/Timeline.hpp"
#include "QRVUICatalog/Fonts/DeviceIdiom.hpp"

namespace qrv::widget::testing {

using Preferences = std::vector<std::pair<std::string, platform::Rect>>;

inline constexpr std::array<platform::WidgetFamily, 5> kContentFamilies{
    platform::WidgetFamily::systemSmall, platform::WidgetFamily::systemMedium,
    platform::WidgetFamily::accessoryCircular, platform::WidgetFamily::accessoryRectangular,
    platform::WidgetFamily::accessoryInline};

// Widget sizes on the reference phone and tablet (laid out at canvas size).
inline platform::Size phoneSize(platform::WidgetFamily family) {
    return platform::TimelineProviderContext::typicalDisplaySize(family);
}
inline platform::Size padSize(platform::WidgetFamily family) {
    if (family == platform::WidgetFamily::systemSmall) return {155, 155};
    if (family == platform::WidgetFamily::systemMedium) return {342, 155};
    return phoneSize(family);
}

// Runs `check(family, size)` for each family on the reference phone, then on the tablet.
template <class Check>
void onPhoneAndTablet(std::span<const platform::WidgetFamily> families, Check check) {
    for (auto idiom : {catalog::DeviceIdiom::phone, catalog::DeviceIdiom::pad}) {
        catalog::ScopedDeviceIdiom scoped(idiom);
        const bool pad = idiom == catalog::DeviceIdiom::pad;
        for (auto family : families) {
            SCOPED_TRACE(std::string(name(family)) + (pad ? " on the tablet" : " on the phone"));
            check(family, pad ? padSize(family) : phoneSize(family));
        }
    }
}

struct ViewRender {
    platform::Size size{};
    platform::WidgetFamily family = platform::WidgetFamily::systemSmall;
    platform::ColorScheme scheme = platform::ColorScheme::light;
    std::function<bool(const Preferences&)> afterLayout{};
    int passes = 0;             // layouts done before recording
    Preferences preferences{};  // of the last layout

    platform::DisplayList record(const std::function<platform::View()>& body) {
        static const platform::FixedAdvanceTextMeasurer measurer;
        static const platform::FixedImageSizer images({16, 16});
        platform::LayoutOptions options{size, {}, {}, &images};
        options.environment.colorScheme = scheme;
        options.environment.widgetFamily = family;
        platform::LayoutTree tree;
        for (passes = 1;; ++passes) {
            tree = platform::layout(body(), options, measurer);
            if (!afterLayout || passes == 3 || !afterLayout(tree.preferences)) break;
        }
        preferences = tree.preferences;
        return platform::record(tree);
    }
};

inline std::vector<std::string> shownTexts(const platform::DisplayList& list) {
    std::vector<std::string> out;
    for (const auto& t : list.texts) out.push_back(t.shown);
    return out;
}

// Every text as given to the view, each followed by "|".
inline std::string allTexts(const platform::DisplayList& list) {
    std::string all;
    for (const auto& t : list.texts) all += t.text + "|";
    return all;
}

inline bool showsText(const platform::DisplayList& list, std::string_view text) {
    for (const auto& t : list.texts)
        if (t.shown == text) return true;
    return false;
}

inline bool showsTextContaining(const platform::DisplayList& list, std::string_view part) {
    for (const auto& t : list.texts)
        if (t.shown.find(part) != std::string::npos) return true;
    return false;
}

inline std::set<std::string> linkURLs(const platform::DisplayList& list) {
    std::set<std::string> out;
    for (const auto& region : list.hitRegions)
        if (auto* link = std::get_if<platform::LinkTarget>(&region.target)) out.insert(link->url);
    return out;
}

// Every text drawn whole (not cut short with "…") and inside the widget.
inline void expectNothingClipped(const platform::DisplayList& list) {
    constexpr double slack = 0.5;
    for (const auto& t : list.texts) {
        if (t.shown.empty()) continue;
        SCOPED_TRACE("\"" + t.text + "\" shows as \"" + t.shown + "\"");
        EXPECT_FALSE(t.truncated);
        EXPECT_EQ(t.shown.find("\u2026"), std::string::npos);
        EXPECT_GE(t.rect.minX(), -slack);
        EXPECT_GE(t.rect.minY(), -slack);
        EXPECT_LE(t.rect.maxX(), list.size.width + slack);
        EXPECT_LE(t.rect.maxY(), list.size.height + slack);
    }
}

}  // namespace qrv::widget::testing
