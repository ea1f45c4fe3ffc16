#pragma once
// The macronutrients record the main app leaves for the widget: for each of
// carbohydrates, fat and protein, its name, the day's goal and what was eaten.
#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "Platform/coding/DecodingError.hpp"
#include "Platform/time/Date.hpp"

namespace qrv::platform {
class JSONValue;
class JSONWriter;
}  // namespace qrv::platform

namespace qrv::widget {

// Coded as its raw integer.
enum class MacronutrientsDataValueType : int { carbs = 0, fat = 1, protein = 2 };

inline constexpr std::array<MacronutrientsDataValueType, 3> kAllMacronutrientsDataValueTypes{
    MacronutrientsDataValueType::carbs, MacronutrientsDataValueType::fat, MacronutrientsDataValueType::protein};

constexpr int rawValue(MacronutrientsDataValueType type) { return static_cast<int>(type); }

constexpr std::optional<MacronutrientsDataValueType> macronutrientsDataValueType(std::int64_t raw) {
    for (auto type : kAllMacronutrientsDataValueTypes)
        if (rawValue(type) == raw) return type;
    return std::nullopt;
}

struct MacronutrientsDataEntryValue {
    std::string title;  // display name, as the app sends it
    double maxValue = 0;  // the day's goal, grams
    double value = 0;     // eaten, grams
    MacronutrientsDataValueType type = MacronutrientsDataValueType::carbs;

    friend bool operator==(const MacronutrientsDataEntryValue&, const MacronutrientsDataEntryValue&) = default;

    static MacronutrientsDataEntryValue fromJSON(const platform::JSONValue& value);
    void encode(platform::JSONWriter& writer) const;
};

struct MacronutrientsDataEntry {
    platform::Date date;
    bool isLoggedIn = false;
    // In JSON an array alternating raw key and value: [0, {...}, 1, {...}, ...].
    // A key repeated there: the later pair wins. The `type` inside a value is
    // carried as sent and never checked against its key.
    std::map<MacronutrientsDataValueType, MacronutrientsDataEntryValue> values;

    friend bool operator==(const MacronutrientsDataEntry&, const MacronutrientsDataEntry&) = default;

    static std::optional<MacronutrientsDataEntry> decode(std::span<const std::uint8_t> json);
    static std::optional<MacronutrientsDataEntry> decode(std::string_view json);
    static platform::DecodingResult<MacronutrientsDataEntry> decodeResult(std::span<const std::uint8_t> json);
    static MacronutrientsDataEntry fromJSON(const platform::JSONValue& value);

    // Compact JSON: date, isLoggedIn, values; the pairs in the order carbs, fat,
    // protein; each value's keys title, maxValue, value, type.
    std::string encode() const;
    void encode(platform::JSONWriter& writer) const;

    // Carbs 50 of 165 g, fat 35 of 65 g, protein 65 of 85 g; made once, on first use.
    static const MacronutrientsDataEntry& sample();
    static MacronutrientsDataEntry makeSample(platform::Date date);
};

}  // namespace qrv::widget
