#include "Host/TargetsJSON.hpp"

#include <cmath>

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

}  // namespace qrv::host
