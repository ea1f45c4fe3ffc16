#pragma once
// The calories record the main app leaves for the widget: the day's figures as
// finished, localised text plus the three fractions that drive the ring.
#include <cstdint>
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

struct CaloriesConsumedDataEntry {
    platform::Date date;
    bool isLoggedIn = false;
    bool shouldShowBarcodeButton = false;
    std::string energyUnitTitle;
    std::string condensedEnergyUnitTitle;
    std::string goalTitle;
    std::string goal;
    std::string goalAdjustedForExercise;
    std::string consumedTitle;
    std::string consumed;
    std::string exerciseTitle;
    std::string exercise;
    std::string remaining;
    std::string subtitle;
    double progress = 0;
    double reverseProgress = 0;
    double exerciseProgress = 0;

    friend bool operator==(const CaloriesConsumedDataEntry&, const CaloriesConsumedDataEntry&) = default;

    // The JSON document as the main app writes it; nothing when it does not decode.
    static std::optional<CaloriesConsumedDataEntry> decode(std::span<const std::uint8_t> json);
    static std::optional<CaloriesConsumedDataEntry> decode(std::string_view json);
    // The same, with the reason when it does not decode.
    static platform::DecodingResult<CaloriesConsumedDataEntry> decodeResult(std::span<const std::uint8_t> json);
    // From a value inside a larger document being decoded.
    static CaloriesConsumedDataEntry fromJSON(const platform::JSONValue& value);

    // Compact JSON, keys in the order of the fields above. Throws
    // platform::EncodingError for a fraction that is NaN or infinite.
    std::string encode() const;
    void encode(platform::JSONWriter& writer) const;

    // The placeholder: "1,250 cals remaining" of a 1,500 goal; made once, on first
    // use, and dated then.
    static const CaloriesConsumedDataEntry& sample();
    static CaloriesConsumedDataEntry makeSample(platform::Date date);
};

}  // namespace qrv::widget
