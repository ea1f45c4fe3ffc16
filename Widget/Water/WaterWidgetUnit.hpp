#pragma once
// The unit the user chose for water in the app. Stored and exchanged as its raw
// text; the unit library knows it by its unit type code.
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace qrv::widget {

enum class WaterWidgetUnit { oz, ml, cups };

inline constexpr std::array<WaterWidgetUnit, 3> kAllWaterWidgetUnits{WaterWidgetUnit::oz, WaterWidgetUnit::ml,
                                                                     WaterWidgetUnit::cups};

constexpr std::size_t position(WaterWidgetUnit unit) { return static_cast<std::size_t>(unit); }

constexpr std::string_view rawValue(WaterWidgetUnit unit) {
    constexpr std::array<std::string_view, 3> raw{"oz", "ml", "cups"};
    return raw[position(unit)];
}

// Exactly the three raw texts, case-sensitive; anything else is no unit.
constexpr std::optional<WaterWidgetUnit> waterWidgetUnit(std::string_view raw) {
    for (auto unit : kAllWaterWidgetUnits)
        if (rawValue(unit) == raw) return unit;
    return std::nullopt;
}

// The unit library numbers fluid units downwards from fluid ounces.
constexpr int unitTypeCode(WaterWidgetUnit unit) { return 16 - static_cast<int>(position(unit)); }

// What one tap of the widget's button adds, in the unit itself.
constexpr float increment(WaterWidgetUnit unit) {
    constexpr std::array<float, 3> increments{8.0f, 250.0f, 2.0f};
    return increments[position(unit)];
}

}  // namespace qrv::widget
