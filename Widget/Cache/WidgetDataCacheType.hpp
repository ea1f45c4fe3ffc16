#pragma once
// The kinds of record the main app caches for the widgets. The type name is what
// messages and store keys use ("Macros", not the case name, for macronutrients).
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace qrv::widget {

enum class WidgetDataCacheType : int {
    water = 0,
    calories = 1,
    macronutrients = 2,
};

inline constexpr std::array<WidgetDataCacheType, 3> allWidgetDataCacheTypes{
    WidgetDataCacheType::water, WidgetDataCacheType::calories, WidgetDataCacheType::macronutrients};

constexpr int rawValue(WidgetDataCacheType type) { return static_cast<int>(type); }

// Nothing for any raw value outside 0...2; the value is compared as unsigned, so
// negative values give nothing as well.
template <class Integer>
    requires std::is_integral_v<Integer>
constexpr std::optional<WidgetDataCacheType> widgetDataCacheTypeFromRawValue(Integer raw) {
    using Unsigned = std::make_unsigned_t<Integer>;
    if (static_cast<Unsigned>(raw) > static_cast<Unsigned>(2)) {
        return std::nullopt;
    }
    return static_cast<WidgetDataCacheType>(static_cast<int>(raw));
}

constexpr std::string_view typeName(WidgetDataCacheType type) {
    switch (type) {
        case WidgetDataCacheType::water: return "Water";
        case WidgetDataCacheType::calories: return "Calories";
        case WidgetDataCacheType::macronutrients: return "Macros";
    }
    return "Unknown";
}

// The flag the extension leaves for the main app on every read attempt of a type:
// "WaterWidgetInstalled", "CaloriesWidgetInstalled", "MacrosWidgetInstalled".
inline std::string installedKey(WidgetDataCacheType type) {
    return std::string(typeName(type)) + "WidgetInstalled";
}

}  // namespace qrv::widget

template <>
struct std::hash<qrv::widget::WidgetDataCacheType> {
    std::size_t operator()(qrv::widget::WidgetDataCacheType type) const noexcept {
        return std::hash<int>{}(qrv::widget::rawValue(type));
    }
};
