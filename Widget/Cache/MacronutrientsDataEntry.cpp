#include "Widget/Cache/MacronutrientsDataEntry.hpp"

#include "Platform/coding/JSONDecoder.hpp"
#include "Platform/coding/JSONWriter.hpp"
#include "Platform/time/Clock.hpp"
#include "Widget/Cache/WidgetDataCacheEntry.hpp"

namespace qrv::widget {

static_assert(WidgetDataCacheEntry<MacronutrientsDataEntry>);

namespace {

MacronutrientsDataValueType decodeType(const platform::JSONValue& value) {
    auto raw = value.decodeInt();
    auto type = macronutrientsDataValueType(raw);
    if (!type)
        value.failDataCorrupted("Cannot initialize MacronutrientsDataValueType from invalid Int value " +
                                std::to_string(raw));
    return *type;
}

}  // namespace

MacronutrientsDataEntryValue MacronutrientsDataEntryValue::fromJSON(const platform::JSONValue& value) {
    auto json = value.keyedContainer();
    MacronutrientsDataEntryValue result;
    result.title = json.decodeString("title");
    result.maxValue = json.decodeDouble("maxValue");
    result.value = json.decodeDouble("value");
    result.type = decodeType(json["type"]);
    return result;
}

void MacronutrientsDataEntryValue::encode(platform::JSONWriter& writer) const {
    writer.beginObject()
        .key("title").string(title)
        .key("maxValue").number(maxValue)
        .key("value").number(value)
        .key("type").integer(rawValue(type))
        .endObject();
}

MacronutrientsDataEntry MacronutrientsDataEntry::fromJSON(const platform::JSONValue& value) {
    auto json = value.keyedContainer();
    MacronutrientsDataEntry entry;
    entry.date = json.decodeDate("date");
    entry.isLoggedIn = json.decodeBool("isLoggedIn");

    // A dictionary keyed by an enumeration travels as [key, value, key, value...].
    auto valuesJSON = json["values"];
    auto pairs = valuesJSON.unkeyedContainer();
    if (pairs.count() % 2 != 0)
        valuesJSON.failDataCorrupted("Expected collection of key-value pairs; encountered odd-length array instead.");
    while (!pairs.isAtEnd()) {
        auto type = decodeType(pairs.next());
        entry.values.insert_or_assign(type, MacronutrientsDataEntryValue::fromJSON(pairs.next()));
    }
    return entry;
}

platform::DecodingResult<MacronutrientsDataEntry> MacronutrientsDataEntry::decodeResult(
    std::span<const std::uint8_t> json) {
    return platform::decodeJSON<MacronutrientsDataEntry>(json, &MacronutrientsDataEntry::fromJSON);
}

std::optional<MacronutrientsDataEntry> MacronutrientsDataEntry::decode(std::span<const std::uint8_t> json) {
    return decodeResult(json).toOptional();
}

std::optional<MacronutrientsDataEntry> MacronutrientsDataEntry::decode(std::string_view json) {
    return decode(platform::bytesOf(json));
}

void MacronutrientsDataEntry::encode(platform::JSONWriter& writer) const {
    writer.beginObject().key("date").date(date).key("isLoggedIn").boolean(isLoggedIn).key("values").beginArray();
    for (const auto& [type, value] : values) {
        writer.integer(rawValue(type));
        value.encode(writer);
    }
    writer.endArray().endObject();
}

std::string MacronutrientsDataEntry::encode() const {
    platform::JSONWriter writer;
    encode(writer);
    return std::move(writer).take();
}

MacronutrientsDataEntry MacronutrientsDataEntry::makeSample(platform::Date date) {
    using enum MacronutrientsDataValueType;
    return MacronutrientsDataEntry{
        .date = date,
        .isLoggedIn = true,
        .values = {{carbs, {"Carbs", 165, 50, carbs}}, {fat, {"Fat", 65, 35, fat}}, {protein, {"Protein", 85, 65, protein}}},
    };
}

const MacronutrientsDataEntry& MacronutrientsDataEntry::sample() {
    static const MacronutrientsDataEntry entry = makeSample(platform::SystemClock::shared().now());
    return entry;
}

}  // namespace qrv::widget
