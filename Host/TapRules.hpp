#pragma once
// What a tap on a widget does, by the platform's rules:
//   - a small home-screen widget is one tap target: its widget URL; links
//     inside it do nothing;
//   - medium and larger widgets honour their links and fall back to the widget
//     URL everywhere else;
//   - lock-screen widgets are one target too (links inside do nothing);
//   - a button runs its intent from system version 17 on, in every family but
//     the inline one (a single line of text has room for no control); before
//     17 a button does nothing at all;
//   - with no URL anywhere the tap just launches the app.
// Regions that do not react are transparent: the tap goes to what lies below.
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "Platform/drawing/DisplayList.hpp"
#include "Platform/timeline/WidgetFamily.hpp"

namespace qrv::host {

struct OpenURL {
    std::string url;
    friend bool operator==(const OpenURL&, const OpenURL&) = default;
};
struct RunIntent {
    platform::IntentInvocation intent;
    friend bool operator==(const RunIntent&, const RunIntent&) = default;
};
// The app opens without a link (the platform tells it which widget was tapped).
struct LaunchApp {
    friend bool operator==(const LaunchApp&, const LaunchApp&) = default;
};
// A tap on a control that does nothing on this system.
struct NoAction {
    friend bool operator==(const NoAction&, const NoAction&) = default;
};
using TapOutcome = std::variant<OpenURL, RunIntent, LaunchApp, NoAction>;

struct TapRules {
    platform::WidgetFamily family = platform::WidgetFamily::systemSmall;
    int systemVersion = 17;

    // Whether links inside the widget are targets of their own.
    bool linksAreTargets() const;
    // Whether buttons run their intents.
    bool buttonsAreActive() const;
    // Whether this region reacts to a tap at all.
    bool reacts(const platform::HitRegion& region) const;

    TapOutcome tap(const platform::DisplayList& list, platform::Point point) const;
};

struct LinkRegion {
    std::string url;
    platform::Rect rect;
    friend bool operator==(const LinkRegion&, const LinkRegion&) = default;
};
struct ButtonRegion {
    platform::IntentInvocation intent;
    platform::Rect rect;
    friend bool operator==(const ButtonRegion&, const ButtonRegion&) = default;
};

// What a tap can reach: the widget URL where nothing else takes the tap, the
// links and the buttons that react, in drawing order.
struct ReachableTargets {
    std::optional<std::string> widgetURL;
    std::vector<LinkRegion> links;
    std::vector<ButtonRegion> buttons;
};
ReachableTargets reachableTargets(const platform::DisplayList& list, const TapRules& rules);

}  // namespace qrv::host
