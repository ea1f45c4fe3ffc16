#include "Widget/Water/WaterAmounts.hpp"

#include "Platform/coding/FloatDescription.hpp"
#include "QRVUnitSystem/QRVUnit.hpp"

namespace qrv::widget {

using units::QRVUnitValue;

std::string formattedAmount(WaterWidgetUnit unit, float amount) {
    if (const auto value = QRVUnitValue::initWithUnitType(unitTypeCode(unit), static_cast<double>(amount))) {
        std::optional<int> places = 0;  // millilitres are always whole
        if (unit != WaterWidgetUnit::ml) {
            const auto unitObject = value->unit();
            places = unitObject ? unitObject->defaultDecimalPlaces() : std::nullopt;
        }
        if (places) {
            if (auto text = value->stringRepresentationToDecimalPlaces(*places, true)) return *text;
        }
    }
    return platform::floatDescription(amount) + " " + std::string(rawValue(unit));
}

float totalAmount(const std::vector<InteractiveWaterData>& records, WaterWidgetUnit unit) {
    float sum = 0;
    for (const auto& record : records) {
        if (record.waterUnit == unit) {
            sum += record.waterValue;
            continue;
        }
        const auto value = QRVUnitValue::initWithUnitType(unitTypeCode(record.waterUnit),
                                                          static_cast<double>(record.waterValue));
        const auto converted =
            value ? value->convertToUnitValueWithUnitType(unitTypeCode(unit)) : std::nullopt;
        // A conversion the library cannot do keeps the amount as logged rather than losing it.
        sum += converted ? static_cast<float>(converted->value()) : record.waterValue;
    }
    return sum;
}

}  // namespace qrv::widget
