#pragma once
// The unit framework as the widget sees it: units and unit values known by the
// framework's unit type codes. Every operation goes to the run-time loaded
// library and answers nothing (std::nullopt) when it is unavailable or does
// not know the unit, so callers always have a fallback path.
#include <optional>
#include <string>

namespace qrv::units {

// The framework's numbering of the units the widget uses.
enum QRVUnitType : int {
    kQRVUnitTypeUSCup = 14,
    kQRVUnitTypeMillilitre = 15,
    kQRVUnitTypeUSFluidOunce = 16,
    kQRVUnitTypeGram = 17,
};

class QRVUnit {
  public:
    // The unit of a type code; nothing when the library is unavailable or does
    // not know the code.
    static std::optional<QRVUnit> unitWithType(int unitType);

    int unitType() const { return unitType_; }
    // Decimal places the unit normally shows; nothing if the library went away.
    std::optional<int> defaultDecimalPlaces() const;
    // "ml", "fl oz", "cups" / "milliliters", ...
    std::optional<std::string> name(bool abbreviated, bool plural) const;

    friend bool operator==(const QRVUnit&, const QRVUnit&) = default;

  private:
    explicit QRVUnit(int unitType) : unitType_(unitType) {}
    int unitType_;
};

class QRVUnitValue {
  public:
    // Nothing when the library is unavailable, the code is unknown or the value
    // is not finite.
    static std::optional<QRVUnitValue> initWithUnitType(int unitType, double value);
    static std::optional<QRVUnitValue> initWithUnit(const QRVUnit& unit, double value);

    double value() const { return value_; }
    int unitType() const { return unitType_; }
    std::optional<QRVUnit> unit() const;

    // "250 ml", "8.5 fl oz", "2.0 cups": rounded half away from zero.
    std::optional<std::string> stringRepresentationToDecimalPlaces(int decimalPlaces, bool abbreviated) const;
    // The number alone at the unit's default decimal places ("15" for 15.4 g).
    std::optional<std::string> roundedValueAsString() const;
    // Nothing across dimensions (volume to mass) or for an unknown code.
    std::optional<QRVUnitValue> convertToUnitValueWithUnitType(int unitType) const;

    friend bool operator==(const QRVUnitValue&, const QRVUnitValue&) = default;

  private:
    QRVUnitValue(int unitType, double value) : unitType_(unitType), value_(value) {}
    int unitType_;
    double value_;
};

}  // namespace qrv::units
