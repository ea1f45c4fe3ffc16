#include "Host/TargetsJSON.hpp"

#include <cmath>

#include "Host/HostEngineIntents.hpp"

namespace qrv::host {

using platform::JSONWriter;

namespace {

double rounded(double value) { return std::round(value * 100) / 100; }

}  // namespace

void writeRect(JSONWriter& json, const platform::Rect& rect) {
    json.beginObject()
        .key("x")
        .number(rounded(rect.minX()))
        .key("y")
        .number(rounded(rect.minY()))
        .key("width")
        .number(rounded(rect.width()))
        .key("height")
        .number(rounded(rect.height()))
        .endObject();
}

void writeSize(JSONWriter& json, platform::Size size) {
    json.beginObject()
        .key("width")
        .number(rounded(size.width))
        .key("height")
        .number(rounded(size.height))
        .endObject();
}

void writeOptional(JSONWriter& json, const std::optional<std::string>& text) {
    if (text)
        json.string(*text);
    else
        json.null();
}

void writeLinks(JSONWriter& json, const std::vector<LinkRegion>& links) {
    json.beginArray();
    for (const auto& link : links) {
        json.beginObject().key("url").string(link.url).key("rect");
        writeRect(json, link.rect);
        json.endObject();
    }
    json.endArray();
}

void writeButtons(JSONWriter& json, const std::vector<ButtonRegion>& buttons) {
    json.beginArray();
    for (const auto& button : buttons) {
        const auto names = buttonParameterNames(button.intent.intent);
        json.beginObject().key("intent").string(button.intent.intent).key("parameters").beginObject();
        for (std::size_t i = 0; i < button.intent.parameters.size() && i < names.size(); ++i)
            json.key(names[i]).string(button.intent.parameters[i]);
        json.endObject().key("rect");
        writeRect(json, button.rect);
        json.endObject();
    }
    json.endArray();
}

std::vector<std::string> buttonParameterNames(const std::string& intentName) {
    if (intentName == waterIntentName()) return {"waterUnit", "waterValue"};
    return intentParameterNames(intentName).value_or(std::vector<std::string>{});
}

}  // namespace qrv::host
