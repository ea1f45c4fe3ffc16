#pragma once
// One amount of water logged by tapping the water widget, and the JSON list of
// them the extension keeps under "WaterInteractiveData", oldest first.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>
#include <vector>

#include "Platform/time/Date.hpp"
#include "Widget/Water/WaterWidgetUnit.hpp"

namespace qrv::widget {

// Any record the interactive cache can store. Only water exists today; the
// writer's behaviour for other kinds is part of its contract.
class InteractiveWidgetData {
  public:
    virtual ~InteractiveWidgetData() = default;

  protected:
    InteractiveWidgetData() = default;
    InteractiveWidgetData(const InteractiveWidgetData&) = default;
    InteractiveWidgetData& operator=(const InteractiveWidgetData&) = default;
};

class InteractiveWaterData final : public InteractiveWidgetData {
  public:
    platform::Date date;
    float waterValue = 0;
    WaterWidgetUnit waterUnit = WaterWidgetUnit::oz;

    InteractiveWaterData() = default;
    InteractiveWaterData(platform::Date when, float value, WaterWidgetUnit unit)
        : date(when), waterValue(value), waterUnit(unit) {}
    InteractiveWaterData(const InteractiveWaterData&) = default;
    InteractiveWaterData& operator=(const InteractiveWaterData&) = default;

    // Field by field, numbers compared exactly.
    friend bool operator==(const InteractiveWaterData& a, const InteractiveWaterData& b) {
        return a.date == b.date && a.waterValue == b.waterValue && a.waterUnit == b.waterUnit;
    }
};

using InteractiveWaterDataList = std::vector<InteractiveWaterData>;

// A record that cannot be written as JSON (an amount or date that is not finite).
class InteractiveDataEncodingError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// The stored list: a JSON array of objects with the keys "date" (seconds since
// 2001 as a number), "waterValue" (a number read at single precision) and
// "waterUnit" ("oz", "ml" or "cups"); every key required, extra keys ignored.
// Nothing when the bytes are not such an array, whatever the reason.
std::optional<InteractiveWaterDataList> decodeInteractiveWaterDataList(std::span<const std::uint8_t> json);

// What can still be read from a list that does not decode as a whole.
struct SalvagedInteractiveWaterData {
    InteractiveWaterDataList records;  // every element that decodes, in order
    std::size_t unreadableElements = 0;
    bool isArray = false;  // false when the bytes are not a JSON array at all
};
SalvagedInteractiveWaterData salvageInteractiveWaterDataList(std::span<const std::uint8_t> json);

// Compact JSON of the list. Throws InteractiveDataEncodingError for a value
// that is not finite.
std::vector<std::uint8_t> encodeInteractiveWaterDataList(const InteractiveWaterDataList& records);

}  // namespace qrv::widget
