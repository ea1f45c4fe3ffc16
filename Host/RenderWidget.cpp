#include "Host/RenderWidget.hpp"

#include <algorithm>
#include <cctype>

#include "Platform/drawing/Recorder.hpp"
#include "Platform/locale/Locale.hpp"
#include "Platform/locale/ResourceLocator.hpp"
#include "QRVUICatalog/Fonts/DeviceIdiom.hpp"

namespace qrv::host {

using platform::DisplayList;
using platform::Rect;

std::optional<RenderedWidget> WidgetRenderer::render(const widget::WidgetConfiguration& widget,
                                                     const widget::WidgetEntry& entry,
                                                     platform::WidgetFamily family,
                                                     platform::ColorScheme scheme,
                                                     const WidgetPlacement& placement,
                                                     platform::Rgba tint) const {
    const auto size = device_.size(family);
    if (!size) return std::nullopt;
    // The fonts that grow on the tablet read the idiom while the view is built.
    const catalog::ScopedDeviceIdiom idiom(device_.idiom);

    platform::RenderOptions options;
    options.size = size->layout;
    options.colorScheme = scheme;
    options.widgetFamily = family;
    // The phone lays every widget out in its locale's direction; `render
    // --locale` and `serve --locale` pin the current locale.
    options.layoutDirection = platform::Locale::current().isRightToLeft() ? platform::LayoutDirection::rightToLeft
                                                                         : platform::LayoutDirection::leftToRight;
    options.contentMargins = device_.contentMargins(family, widget.contentMarginsAreDisabled());
    // The lock screen draws widgets vibrant, without their container background.
    const bool lock = platform::isAccessory(family);
    options.showsContainerBackground = placement.showsContainerBackground && !lock;
    options.renderingMode = lock ? platform::WidgetRenderingMode::vibrant : placement.renderingMode;

    const auto content = widget.content(entry, family, scheme);
    auto tree = painter_.layout(content.body(), options);
    int passes = 1;
    while (content.afterLayout && passes < kMaxLayoutPasses && content.afterLayout(tree.preferences)) {
        tree = painter_.layout(content.body(), options);
        ++passes;
    }
    RenderedWidget rendered{platform::record(tree, options.showsContainerBackground), *size, passes};
    rendered.displayList = platform::applyRenderingMode(
        std::move(rendered.displayList),
        platform::RenderingModeStyle{options.renderingMode, tint, placement.lowLight});
    const double sx = size->scaleX() * placement.scale, sy = size->scaleY() * placement.scale;
    if (sx != 1 || sy != 1) {
        rendered.displayList = scaledDisplayList(rendered.displayList, sx, sy);
        rendered.size.display = {size->layout.width * sx, size->layout.height * sy};
    }
    return rendered;
}

namespace {
Rect scaled(const Rect& rect, double sx, double sy) {
    return Rect{{rect.minX() * sx, rect.minY() * sy}, {rect.width() * sx, rect.height() * sy}};
}
}  // namespace

DisplayList scaledDisplayList(const DisplayList& list, double sx, double sy) {
    DisplayList out;
    out.size = {list.size.width * sx, list.size.height * sy};
    out.ops.reserve(list.ops.size() + 3);
    out.ops.emplace_back(platform::op::Save{});
    out.ops.emplace_back(platform::op::Scale{sx, sy});
    out.ops.insert(out.ops.end(), list.ops.begin(), list.ops.end());
    out.ops.emplace_back(platform::op::Restore{});
    out.widgetURL = list.widgetURL;
    for (auto region : list.hitRegions) {
        region.rect = scaled(region.rect, sx, sy);
        out.hitRegions.push_back(std::move(region));
    }
    for (auto text : list.texts) {
        text.rect = scaled(text.rect, sx, sy);
        text.fontSize *= std::min(sx, sy);
        out.texts.push_back(std::move(text));
    }
    for (auto element : list.accessibility) {
        element.rect = scaled(element.rect, sx, sy);
        out.accessibility.push_back(std::move(element));
    }
    return out;
}

DisplayList redactedDisplayList(const DisplayList& list) {
    DisplayList out = list;
    out.texts.clear();
    for (auto& element : out.accessibility) element.label.clear();
    for (auto& op : out.ops) {
        const auto* text = std::get_if<platform::op::DrawText>(&op);
        if (!text || text->width <= 0) continue;
        // A bar over the letters' body: from a little below the line's top to the baseline.
        const double ascent = text->baseline - text->origin.y;
        const Rect bar{{text->origin.x, text->origin.y + ascent * 0.2}, {text->width, ascent * 0.8}};
        platform::Color shade = text->color;
        shade.light.alpha *= 0.3;
        shade.dark.alpha *= 0.3;
        op = platform::op::FillPath{platform::Path::roundedRect(bar, bar.height() / 3), std::move(shade),
                                    platform::FillRule::nonZero};
    }
    return out;
}

std::optional<std::size_t> currentEntryIndex(const std::vector<widget::WidgetEntry>& entries, platform::Date now) {
    if (entries.empty()) return std::nullopt;
    std::optional<std::size_t> current;
    for (std::size_t i = 0; i < entries.size(); ++i)
        if (entries[i].date() <= now && (!current || entries[*current].date() <= entries[i].date())) current = i;
    return current.value_or(0);
}

std::filesystem::path widgetIconDirectory() {
    return platform::programResourceDirectory().value_or(std::filesystem::path("Resources")) / "Icons";
}

std::string hostWidgetName(std::string_view kind) {
    if (kind == "com.qrv.widget.CaloriesConsumed") return "calories";
    if (kind == "com.qrv.widget.Macronutrients") return "macronutrients";
    if (kind == "com.qrv.widget.Water") return "water";
    const auto dot = kind.rfind('.');
    std::string name(dot == std::string_view::npos ? kind : kind.substr(dot + 1));
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return name;
}

}  // namespace qrv::host
