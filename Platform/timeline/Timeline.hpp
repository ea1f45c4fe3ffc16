#pragma once
// What a timeline provider hands the widget host: the entries to show, each
// from its own date on, and when the host should ask again.
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "Platform/drawing/Geometry.hpp"
#include "Platform/time/Date.hpp"
#include "Platform/timeline/WidgetFamily.hpp"

namespace qrv::platform {

// Where and how the host is about to show the widget.
struct TimelineProviderContext {
    WidgetFamily family = WidgetFamily::systemSmall;
    Size displaySize;
    // True while the widget is shown in the gallery the user picks widgets from.
    bool isPreview = false;

    // The context of a widget on a 6.1-inch phone's screen (an extra-large one on
    // an 11-inch tablet's, the only devices that offer it).
    static TimelineProviderContext forFamily(WidgetFamily family, bool preview = false) {
        return TimelineProviderContext{family, typicalDisplaySize(family), preview};
    }

    static constexpr Size typicalDisplaySize(WidgetFamily family) {
        switch (family) {
            case WidgetFamily::systemSmall:
                return {158, 158};
            case WidgetFamily::systemMedium:
                return {338, 158};
            case WidgetFamily::systemLarge:
                return {338, 354};
            case WidgetFamily::systemExtraLarge:
                return {715.5, 342};
            case WidgetFamily::accessoryCircular:
                return {72, 72};
            case WidgetFamily::accessoryRectangular:
                return {160, 72};
            case WidgetFamily::accessoryInline:
                return {234, 26};
        }
        return {158, 158};
    }

    friend bool operator==(const TimelineProviderContext&, const TimelineProviderContext&) = default;
};

// The earliest moment the host asks the provider for a new timeline.
class TimelineReloadPolicy {
  public:
    enum class Kind { atEnd, after, never };

    // After the last entry's date has passed.
    static TimelineReloadPolicy atEnd() { return TimelineReloadPolicy{Kind::atEnd, std::nullopt}; }
    // At `date`, which may lie before or after the last entry.
    static TimelineReloadPolicy after(Date date) { return TimelineReloadPolicy{Kind::after, date}; }
    // Only when the app asks the host to reload.
    static TimelineReloadPolicy never() { return TimelineReloadPolicy{Kind::never, std::nullopt}; }

    Kind kind() const { return kind_; }
    // The reload date of `after`; nothing for the other kinds.
    std::optional<Date> date() const { return date_; }

    friend bool operator==(const TimelineReloadPolicy&, const TimelineReloadPolicy&) = default;

  private:
    TimelineReloadPolicy(Kind kind, std::optional<Date> date) : kind_(kind), date_(date) {}
    Kind kind_;
    std::optional<Date> date_;
};

// "atEnd", "after" or "never".
constexpr std::string_view name(TimelineReloadPolicy::Kind kind) {
    switch (kind) {
        case TimelineReloadPolicy::Kind::atEnd:
            return "atEnd";
        case TimelineReloadPolicy::Kind::after:
            return "after";
        case TimelineReloadPolicy::Kind::never:
            return "never";
    }
    return "atEnd";
}

template <class Entry>
struct Timeline {
    std::vector<Entry> entries;
    TimelineReloadPolicy policy = TimelineReloadPolicy::atEnd();

    Timeline() = default;
    Timeline(std::vector<Entry> timelineEntries, TimelineReloadPolicy reloadPolicy)
        : entries(std::move(timelineEntries)), policy(reloadPolicy) {}

    friend bool operator==(const Timeline&, const Timeline&) = default;
};

}  // namespace qrv::platform
