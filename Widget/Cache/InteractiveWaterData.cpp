#include "Widget/Cache/InteractiveWaterData.hpp"

#include <cmath>

#include "Platform/coding/JSONDecoder.hpp"
#include "Platform/coding/JSONWriter.hpp"

namespace qrv::widget {
namespace {

using platform::JSONValue;

InteractiveWaterData decodeRecord(const JSONValue& value) {
    const auto object = value.keyedContainer();
    InteractiveWaterData record;
    record.date = object.decodeDate("date");
    record.waterValue = object.decodeFloat("waterValue");
    const auto unitValue = object["waterUnit"];
    const auto unit = waterWidgetUnit(unitValue.decodeString());
    if (!unit) unitValue.failDataCorrupted("Cannot initialize WaterWidgetUnit from invalid String value");
    record.waterUnit = *unit;
    return record;
}

}  // namespace

std::optional<InteractiveWaterDataList> decodeInteractiveWaterDataList(std::span<const std::uint8_t> json) {
    return platform::decodeJSON<InteractiveWaterDataList>(
               json,
               [](const JSONValue& root) {
                   auto array = root.unkeyedContainer();
                   InteractiveWaterDataList records;
                   records.reserve(array.count());
                   while (!array.isAtEnd()) records.push_back(decodeRecord(array.next()));
                   return records;
               })
        .toOptional();
}

SalvagedInteractiveWaterData salvageInteractiveWaterDataList(std::span<const std::uint8_t> json) {
    SalvagedInteractiveWaterData salvaged;
    platform::JSONDecoder decoder;
    decoder.visit(json, [&](const JSONValue& root) {
        if (root.kind() != platform::JSONKind::array) return;
        salvaged.isArray = true;
        auto array = root.unkeyedContainer();
        while (!array.isAtEnd()) {
            try {
                salvaged.records.push_back(decodeRecord(array.next()));
            } catch (const platform::DecodingFailure&) {
                ++salvaged.unreadableElements;
            }
        }
    });
    return salvaged;
}

std::vector<std::uint8_t> encodeInteractiveWaterDataList(const InteractiveWaterDataList& records) {
    platform::JSONWriter writer;
    writer.beginArray();
    try {
        for (const auto& record : records) {
            writer.beginObject();
            writer.key("date").date(record.date);
            writer.key("waterValue").number(record.waterValue);
            writer.key("waterUnit").string(rawValue(record.waterUnit));
            writer.endObject();
        }
    } catch (const platform::EncodingError& error) {
        throw InteractiveDataEncodingError(error.what());
    }
    writer.endArray();
    const std::string& json = writer.text();
    return {json.begin(), json.end()};
}

}  // namespace qrv::widget
