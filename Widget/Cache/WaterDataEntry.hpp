#pragma once
// The water record the main app leaves for the widget: what was drunk today in
// the user's unit.
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "Platform/coding/DecodingError.hpp"
#include "Platform/time/Date.hpp"
#include "Widget/Water/WaterWidgetUnit.hpp"

namespace qrv::platform {
class JSONValue;
class JSONWriter;
}  // namespace qrv::platform

namespace qrv::widget {

struct WaterDataEntry {
    platform::Date date;
    bool isLoggedIn = false;
    float waterValue = 0;  // single precision, as the app keeps it
    WaterWidgetUnit waterUnit = WaterWidgetUnit::oz;  // coded as its raw text

    friend bool operator==(const WaterDataEntry&, const WaterDataEntry&) = default;

    static std::optional<WaterDataEntry> decode(std::span<const std::uint8_t> json);
    static std::optional<WaterDataEntry> decode(std::string_view json);
    static platform::DecodingResult<WaterDataEntry> decodeResult(std::span<const std::uint8_t> json);
    static WaterDataEntry fromJSON(const platform::JSONValue& value);

    // Compact JSON: date, isLoggedIn, waterValue, waterUnit.
    std::string encode() const;
    void encode(platform::JSONWriter& writer) const;

    // 24 oz; made once, on first use.
    static const WaterDataEntry& sample();
    static WaterDataEntry makeSample(platform::Date date);
};

}  // namespace qrv::widget
