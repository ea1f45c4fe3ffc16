#include "Widget/Cache/WaterDataEntry.hpp"

#include "Platform/coding/JSONDecoder.hpp"
#include "Platform/coding/JSONWriter.hpp"
#include "Platform/time/Clock.hpp"
#include "Widget/Cache/WidgetDataCacheEntry.hpp"

namespace qrv::widget {

static_assert(WidgetDataCacheEntry<WaterDataEntry>);

WaterDataEntry WaterDataEntry::fromJSON(const platform::JSONValue& value) {
    auto json = value.keyedContainer();
    WaterDataEntry entry;
    entry.date = json.decodeDate("date");
    entry.isLoggedIn = json.decodeBool("isLoggedIn");
    entry.waterValue = json.decodeFloat("waterValue");
    auto unitJSON = json["waterUnit"];
    auto raw = unitJSON.decodeString();
    auto unit = waterWidgetUnit(raw);
    if (!unit) unitJSON.failDataCorrupted("Cannot initialize WaterWidgetUnit from invalid String value " + raw);
    entry.waterUnit = *unit;
    return entry;
}

platform::DecodingResult<WaterDataEntry> WaterDataEntry::decodeResult(std::span<const std::uint8_t> json) {
    return platform::decodeJSON<WaterDataEntry>(json, &WaterDataEntry::fromJSON);
}

std::optional<WaterDataEntry> WaterDataEntry::decode(std::span<const std::uint8_t> json) {
    return decodeResult(json).toOptional();
}

std::optional<WaterDataEntry> WaterDataEntry::decode(std::string_view json) { return decode(platform::bytesOf(json)); }

void WaterDataEntry::encode(platform::JSONWriter& writer) const {
    writer.beginObject()
        .key("date").date(date)
        .key("isLoggedIn").boolean(isLoggedIn)
        .key("waterValue").number(waterValue)
        .key("waterUnit").string(rawValue(waterUnit))
        .endObject();
}

std::string WaterDataEntry::encode() const {
    platform::JSONWriter writer;
    encode(writer);
    return std::move(writer).take();
}

WaterDataEntry WaterDataEntry::makeSample(platform::Date date) {
    return WaterDataEntry{.date = date, .isLoggedIn = true, .waterValue = 24, .waterUnit = WaterWidgetUnit::oz};
}

const WaterDataEntry& WaterDataEntry::sample() {
    static const WaterDataEntry entry = makeSample(platform::SystemClock::shared().now());
    return entry;
}

}  // namespace qrv::widget
