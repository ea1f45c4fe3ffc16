#pragma once
// The library's table of units and the arithmetic behind the C interface.
// Internal to libQRVUnitSystem.so; clients see only QRVUnitSystemABI.hpp.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qrv::units::library {

enum class Dimension { volume, mass };

struct UnitInfo {
    int code;
    Dimension dimension;
    // Size of one unit in the dimension's base step: 1e-10 ml for volumes (so
    // the US customary factors are whole numbers and ratios reduce exactly),
    // 1 g for masses.
    std::int64_t baseSteps;
    int defaultDecimalPlaces;
    std::string_view abbreviationSingular;
    std::string_view abbreviationPlural;
    std::string_view nameSingular;
    std::string_view namePlural;
};

const UnitInfo* findUnit(int code);

// value in `from` expressed in `to`; nothing across dimensions or for a
// non-finite value.
std::optional<double> convert(const UnitInfo& from, double value, const UnitInfo& to);

// The value rounded half away from zero to `decimalPlaces`, as plain decimal
// text ('.' separator, no grouping, no "-" on a result of zero). It rounds the
// number as people read it, the shortest decimal that reads back as the same
// double: 8.45 is stored as 8.4499999999999993 but shows as 8.5, as a number
// formatter rounding half up shows it. Nothing for a non-finite value.
std::optional<std::string> roundedDecimalText(double value, int decimalPlaces);

// "<number> <name>", the name singular only for a plain "1" (English counts
// "1.0 cups" as plural).
std::optional<std::string> formatValue(const UnitInfo& unit, double value, int decimalPlaces,
                                       bool abbreviated);

}  // namespace qrv::units::library
