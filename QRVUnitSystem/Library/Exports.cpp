// The exported C functions: thin, exception-free wrappers over Units.cpp.
#include <cstring>
#include <string>

#include "QRVUnitSystem/Library/QRVUnitSystemABI.hpp"
#include "QRVUnitSystem/Library/Units.hpp"

using qrv::units::library::findUnit;

namespace {

constexpr int kMaxDecimalPlaces = 20;

// snprintf-style copy: returns the full length whatever the capacity.
long copyOut(const std::string& text, char* buffer, size_t capacity) {
    if (buffer != nullptr && capacity > 0) {
        const size_t n = text.size() < capacity - 1 ? text.size() : capacity - 1;
        std::memcpy(buffer, text.data(), n);
        buffer[n] = '\0';
    }
    return static_cast<long>(text.size());
}

}  // namespace

extern "C" {

int QRVUnitSystemABIVersion(void) { return QRV_UNIT_SYSTEM_ABI_VERSION; }

int QRVUnitIsKnownType(int unitType) { return findUnit(unitType) != nullptr ? 1 : 0; }

int QRVUnitDefaultDecimalPlaces(int unitType, int* out) {
    const auto* unit = findUnit(unitType);
    if (unit == nullptr || out == nullptr) return 0;
    *out = unit->defaultDecimalPlaces;
    return 1;
}

long QRVUnitName(int unitType, int abbreviated, int plural, char* buffer, size_t capacity) {
    const auto* unit = findUnit(unitType);
    if (unit == nullptr) return -1;
    try {
        const auto name = abbreviated != 0
                              ? (plural != 0 ? unit->abbreviationPlural : unit->abbreviationSingular)
                              : (plural != 0 ? unit->namePlural : unit->nameSingular);
        return copyOut(std::string(name), buffer, capacity);
    } catch (...) {
        return -1;
    }
}

int QRVUnitValueConvert(int fromUnitType, double value, int toUnitType, double* out) {
    const auto* from = findUnit(fromUnitType);
    const auto* to = findUnit(toUnitType);
    if (from == nullptr || to == nullptr || out == nullptr) return 0;
    const auto converted = qrv::units::library::convert(*from, value, *to);
    if (!converted) return 0;
    *out = *converted;
    return 1;
}

long QRVUnitValueFormat(int unitType, double value, int decimalPlaces, int abbreviated, char* buffer,
                        size_t capacity) {
    const auto* unit = findUnit(unitType);
    if (unit == nullptr || decimalPlaces < 0 || decimalPlaces > kMaxDecimalPlaces) return -1;
    try {
        const auto text = qrv::units::library::formatValue(*unit, value, decimalPlaces, abbreviated != 0);
        return text ? copyOut(*text, buffer, capacity) : -1;
    } catch (...) {
        return -1;
    }
}

long QRVUnitValueFormatRounded(int unitType, double value, char* buffer, size_t capacity) {
    const auto* unit = findUnit(unitType);
    if (unit == nullptr) return -1;
    try {
        const auto text = qrv::units::library::roundedDecimalText(value, unit->defaultDecimalPlaces);
        return text ? copyOut(*text, buffer, capacity) : -1;
    } catch (...) {
        return -1;
    }
}

}  // extern "C"
