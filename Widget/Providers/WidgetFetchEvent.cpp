#include "Widget/Providers/WidgetFetchEvent.hpp"

#include "Platform/coding/JSONDecoder.hpp"
#include "Platform/coding/JSONWriter.hpp"

namespace qrv::widget {

std::vector<std::uint8_t> WidgetFetchEvent::encode() const {
    platform::JSONWriter writer;
    writer.beginObject()
        .key("widgetName")
        .string(widgetName)
        .key("widgetSize")
        .string(widgetSize)
        .key("date")
        .date(date)
        .endObject();
    const auto& text = writer.text();
    return {text.begin(), text.end()};
}

platform::DecodingResult<WidgetFetchEvent> WidgetFetchEvent::decode(std::span<const std::uint8_t> json) {
    return platform::decodeJSON<WidgetFetchEvent>(json, [](const platform::JSONValue& root) {
        const auto object = root.keyedContainer();
        return WidgetFetchEvent{object.decodeString("widgetName"), object.decodeString("widgetSize"),
                                object.decodeDate("date")};
    });
}

}  // namespace qrv::widget
