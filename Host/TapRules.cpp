#include "Host/TapRules.hpp"

#include "Widget/Widgets/WidgetConfiguration.hpp"

namespace qrv::host {

using platform::WidgetFamily;

bool TapRules::linksAreTargets() const {
    switch (family) {
        case WidgetFamily::systemMedium:
        case WidgetFamily::systemLarge:
        case WidgetFamily::systemExtraLarge:
            return true;
        case WidgetFamily::systemSmall:
        case WidgetFamily::accessoryCircular:
        case WidgetFamily::accessoryRectangular:
        case WidgetFamily::accessoryInline:
            return false;
    }
    return false;
}

bool TapRules::buttonsAreActive() const {
    return systemVersion >= widget::kInteractiveWidgetsSystemVersion && family != WidgetFamily::accessoryInline;
}

bool TapRules::reacts(const platform::HitRegion& region) const {
    if (std::holds_alternative<platform::LinkTarget>(region.target)) return linksAreTargets();
    return buttonsAreActive();
}

TapOutcome TapRules::tap(const platform::DisplayList& list, platform::Point point) const {
    // Later regions lie on top.
    for (auto region = list.hitRegions.rbegin(); region != list.hitRegions.rend(); ++region) {
        if (!region->rect.contains(point)) continue;
        if (const auto* button = std::get_if<platform::IntentInvocation>(&region->target)) {
            // A button swallows the tap even where it does nothing.
            if (buttonsAreActive()) return RunIntent{*button};
            if (family != WidgetFamily::accessoryInline) return NoAction{};
            continue;
        }
        if (linksAreTargets()) return OpenURL{std::get<platform::LinkTarget>(region->target).url};
    }
    if (list.widgetURL) return OpenURL{*list.widgetURL};
    return LaunchApp{};
}

ReachableTargets reachableTargets(const platform::DisplayList& list, const TapRules& rules) {
    ReachableTargets targets;
    targets.widgetURL = list.widgetURL;
    for (const auto& region : list.hitRegions) {
        if (!rules.reacts(region)) continue;
        if (const auto* link = std::get_if<platform::LinkTarget>(&region.target))
            targets.links.push_back({link->url, region.rect});
        else
            targets.buttons.push_back({std::get<platform::IntentInvocation>(region.target), region.rect});
    }
    return targets;
}

}  // namespace qrv::host
