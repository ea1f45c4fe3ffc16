#include "QRVUnitSystem/QRVUnit.hpp"

#include <cmath>
#include <string>

#include "QRVUnitSystem/UnitSystemLoader.hpp"

namespace qrv::units {
namespace {

// Calls a snprintf-style library function twice when the first buffer is short.
template <typename Call>
std::optional<std::string> readText(Call call) {
    std::string text(64, '\0');
    long length = call(text.data(), text.size());
    if (length < 0) return std::nullopt;
    if (static_cast<std::size_t>(length) >= text.size()) {
        text.assign(static_cast<std::size_t>(length) + 1, '\0');
        length = call(text.data(), text.size());
        if (length < 0) return std::nullopt;
    }
    text.resize(static_cast<std::size_t>(length));
    return text;
}

bool knows(const UnitSystemFunctions& lib, int unitType) { return lib.isKnownType(unitType) != 0; }

}  // namespace

std::optional<QRVUnit> QRVUnit::unitWithType(int unitType) {
    const auto lib = unitSystem();
    if (!lib || !knows(*lib, unitType)) return std::nullopt;
    return QRVUnit(unitType);
}

std::optional<int> QRVUnit::defaultDecimalPlaces() const {
    const auto lib = unitSystem();
    int places = 0;
    if (!lib || lib->defaultDecimalPlaces(unitType_, &places) == 0) return std::nullopt;
    return places;
}

std::optional<std::string> QRVUnit::name(bool abbreviated, bool plural) const {
    const auto lib = unitSystem();
    if (!lib) return std::nullopt;
    return readText([&](char* buffer, std::size_t capacity) {
        return lib->name(unitType_, abbreviated ? 1 : 0, plural ? 1 : 0, buffer, capacity);
    });
}

std::optional<QRVUnitValue> QRVUnitValue::initWithUnitType(int unitType, double value) {
    const auto lib = unitSystem();
    if (!lib || !knows(*lib, unitType) || !std::isfinite(value)) return std::nullopt;
    return QRVUnitValue(unitType, value);
}

std::optional<QRVUnitValue> QRVUnitValue::initWithUnit(const QRVUnit& unit, double value) {
    return initWithUnitType(unit.unitType(), value);
}

std::optional<QRVUnit> QRVUnitValue::unit() const { return QRVUnit::unitWithType(unitType_); }

std::optional<std::string> QRVUnitValue::stringRepresentationToDecimalPlaces(int decimalPlaces,
                                                                             bool abbreviated) const {
    const auto lib = unitSystem();
    if (!lib) return std::nullopt;
    return readText([&](char* buffer, std::size_t capacity) {
        return lib->format(unitType_, value_, decimalPlaces, abbreviated ? 1 : 0, buffer, capacity);
    });
}

std::optional<std::string> QRVUnitValue::roundedValueAsString() const {
    const auto lib = unitSystem();
    if (!lib) return std::nullopt;
    return readText([&](char* buffer, std::size_t capacity) {
        return lib->formatRounded(unitType_, value_, buffer, capacity);
    });
}

std::optional<QRVUnitValue> QRVUnitValue::convertToUnitValueWithUnitType(int unitType) const {
    const auto lib = unitSystem();
    double converted = 0;
    if (!lib || lib->convert(unitType_, value_, unitType, &converted) == 0) return std::nullopt;
    return QRVUnitValue(unitType, converted);
}

}  // namespace qrv::units
