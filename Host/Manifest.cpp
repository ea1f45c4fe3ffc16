#include "Host/Manifest.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "Host/TargetsJSON.hpp"
#include "Platform/coding/JSONWriter.hpp"
#include "Platform/time/ISO8601.hpp"

namespace qrv::host {

using platform::JSONWriter;

std::string_view schemeName(platform::ColorScheme scheme) {
    return scheme == platform::ColorScheme::dark ? "dark" : "light";
}

std::string hexColor(platform::Rgba color) {
    auto byte = [](double v) { return static_cast<int>(std::lround(std::clamp(v, 0.0, 1.0) * 255)); };
    char buffer[8];
    std::snprintf(buffer, sizeof buffer, "#%02x%02x%02x", byte(color.red), byte(color.green),
                  byte(color.blue));
    return buffer;
}

std::string_view momentName(EntryMoment moment) {
    return moment == EntryMoment::now ? "now" : "nextMidnight";
}

void ManifestImage::describe(const platform::DisplayList& list, const TapRules& rules) {
    size = list.size;
    auto targets = reachableTargets(list, rules);
    widgetURL = std::move(targets.widgetURL);
    links = std::move(targets.links);
    buttons = std::move(targets.buttons);
    texts.clear();
    for (const auto& text : list.texts) {
        std::optional<std::string> id;
        if (!text.accessibilityIdentifier.empty()) id = text.accessibilityIdentifier;
        texts.push_back({std::move(id), text.text, text.shown, text.rect});
    }
}

namespace {

void writeImage(JSONWriter& json, const ManifestImage& image, const platform::Calendar& calendar) {
    json.beginObject();
    json.key("kind").string(image.kind);
    json.key("family").string(platform::name(image.family));
    json.key("scheme").string(schemeName(image.scheme));
    json.key("appearance").string(appearanceName(image.appearance));
    json.key("renderingMode").string(renderingModeName(image.renderingMode));
    json.key("showsContainerBackground").boolean(image.showsContainerBackground);
    json.key("tint");
    writeOptional(json, image.tint);
    json.key("entryDate").string(platform::formatISO8601(image.entryDate, calendar));
    json.key("moment").string(momentName(image.moment));
    json.key("device").string(image.device);
    json.key("os").integer(image.systemVersion);
    json.key("locale").string(image.locale);
    json.key("placeholder").boolean(image.placeholder);
    json.key("png").string(image.png);
    json.key("svg").string(image.svg);
    json.key("size");
    writeSize(json, image.size);
    json.key("widgetURL");
    writeOptional(json, image.widgetURL);
    json.key("links");
    writeLinks(json, image.links);
    json.key("buttons");
    writeButtons(json, image.buttons);
    json.key("texts").beginArray();
    for (const auto& text : image.texts) {
        json.beginObject().key("id");
        writeOptional(json, text.id);
        json.key("text").string(text.text).key("shown").string(text.shown).key("rect");
        writeRect(json, text.rect);
        json.endObject();
    }
    json.endArray();
    json.endObject();
}

}  // namespace

std::string Manifest::toJSON(const platform::Calendar& calendar) const {
    JSONWriter json;
    json.beginObject();
    json.key("device").string(device);
    json.key("os").integer(systemVersion);
    json.key("locale").string(locale);
    json.key("now").string(platform::formatISO8601(now, calendar));
    json.key("widgets").beginArray();
    for (const auto& widget : widgets) {
        json.beginObject()
            .key("kind")
            .string(widget.kind)
            .key("displayName")
            .string(widget.displayName)
            .key("description")
            .string(widget.description)
            .key("families")
            .beginArray();
        for (auto family : widget.families) json.string(platform::name(family));
        json.endArray().endObject();
    }
    json.endArray();
    json.key("images").beginArray();
    for (const auto& image : images) writeImage(json, image, calendar);
    json.endArray();
    json.endObject();
    return std::move(json).take();
}

}  // namespace qrv::host
