#pragma once
// One refresh of a widget by the widget host, left in the shared store for the
// main app to count: which widget, at which coarse size, and when.
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/coding/DecodingError.hpp"
#include "Platform/time/Date.hpp"
#include "Platform/timeline/WidgetFamily.hpp"

namespace qrv::widget {

struct WidgetFetchEvent {
    std::string widgetName;  // "widget_calories" or "widget_macros"
    std::string widgetSize;  // "small" or "medium"
    platform::Date date;     // the moment of recording

    // {"widgetName":...,"widgetSize":...,"date":seconds since 2001}, compact.
    // Throws platform::EncodingError for a date that is not finite.
    std::vector<std::uint8_t> encode() const;
    // All three keys required, extra keys ignored.
    static platform::DecodingResult<WidgetFetchEvent> decode(std::span<const std::uint8_t> json);

    friend bool operator==(const WidgetFetchEvent&, const WidgetFetchEvent&) = default;
};

// The size the events record: "medium" for systemMedium and "small" for every
// other family, the lock-screen ones included. Deliberately coarse: the main app
// only tells home-screen small from medium.
constexpr std::string_view fetchEventSize(platform::WidgetFamily family) {
    return family == platform::WidgetFamily::systemMedium ? "medium" : "small";
}

}  // namespace qrv::widget
