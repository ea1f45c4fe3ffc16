#include "Widget/Cache/WidgetDataCacheReadStrategy.hpp"

#include <array>

#include "Widget/Cache/WidgetDataCacheReaderEnvironment.hpp"

namespace qrv::widget {

platform::Date entryDate(const AnyWidgetDataCacheEntry& entry) {
    return std::visit([](const auto& record) { return record.date; }, entry);
}

DatedReadStrategy::DatedReadStrategy(std::string dataKey, platform::Calendar calendar,
                                     std::shared_ptr<const platform::Clock> clock)
    : dataKey_(std::move(dataKey)), calendar_(calendar), clock_(clock ? std::move(clock) : systemClock()) {}

platform::Date DatedReadStrategy::startOfNextDay(platform::Date date) const {
    const auto nextDay = calendar_.dateByAddingDays(1, date);
    return calendar_.startOfDay(nextDay ? *nextDay : now());
}

bool DatedReadStrategy::isDatedToday(const AnyWidgetDataCacheEntry& entry) const {
    const auto startOfToday = calendar_.startOfDay(now());
    return entryDate(entry).timeIntervalSince1970() > startOfToday.timeIntervalSince1970();
}

namespace {
template <class Record>
std::optional<AnyWidgetDataCacheEntry> decodeAs(std::span<const std::uint8_t> data) {
    // A fresh decode per call; nothing is shared between reads.
    if (auto record = Record::decode(data)) return AnyWidgetDataCacheEntry{std::move(*record)};
    return std::nullopt;
}
}  // namespace

CaloriesDataReadStrategy::CaloriesDataReadStrategy(std::string dataKey, platform::Calendar calendar,
                                                   std::shared_ptr<const platform::Clock> clock)
    : DatedReadStrategy(std::move(dataKey), calendar, std::move(clock)) {}

std::optional<AnyWidgetDataCacheEntry> CaloriesDataReadStrategy::decodeEntry(
    std::span<const std::uint8_t> data) const {
    return decodeAs<CaloriesConsumedDataEntry>(data);
}

AnyWidgetDataCacheEntry CaloriesDataReadStrategy::makeNextDayEntry(
    const AnyWidgetDataCacheEntry& entry) const {
    const auto* calories = std::get_if<CaloriesConsumedDataEntry>(&entry);
    if (!calories) return entry;
    auto next = *calories;
    next.date = startOfNextDay(calories->date);
    next.consumed = "0";
    next.exercise = "0";
    next.remaining = next.goal;  // the base goal: no exercise logged yet on the new day
    next.progress = 0;
    next.reverseProgress = 0;
    next.exerciseProgress = 0;
    return next;
}

MacronutrientsDataReadStrategy::MacronutrientsDataReadStrategy(std::string dataKey,
                                                               platform::Calendar calendar,
                                                               std::shared_ptr<const platform::Clock> clock)
    : DatedReadStrategy(std::move(dataKey), calendar, std::move(clock)) {}

std::optional<AnyWidgetDataCacheEntry> MacronutrientsDataReadStrategy::decodeEntry(
    std::span<const std::uint8_t> data) const {
    return decodeAs<MacronutrientsDataEntry>(data);
}

AnyWidgetDataCacheEntry MacronutrientsDataReadStrategy::makeNextDayEntry(
    const AnyWidgetDataCacheEntry& entry) const {
    const auto* macros = std::get_if<MacronutrientsDataEntry>(&entry);
    if (!macros) return entry;
    auto next = *macros;
    next.date = startOfNextDay(macros->date);
    constexpr std::array kinds{MacronutrientsDataValueType::carbs, MacronutrientsDataValueType::fat,
                               MacronutrientsDataValueType::protein};
    for (auto kind : kinds) {
        if (auto found = next.values.find(kind); found != next.values.end()) found->second.value = 0;
    }
    return next;
}

WaterDataReadStrategy::WaterDataReadStrategy(std::string dataKey, platform::Calendar calendar,
                                             std::shared_ptr<const platform::Clock> clock)
    : DatedReadStrategy(std::move(dataKey), calendar, std::move(clock)) {}

std::optional<AnyWidgetDataCacheEntry> WaterDataReadStrategy::decodeEntry(
    std::span<const std::uint8_t> data) const {
    return decodeAs<WaterDataEntry>(data);
}

AnyWidgetDataCacheEntry WaterDataReadStrategy::makeNextDayEntry(const AnyWidgetDataCacheEntry& entry) const {
    const auto* water = std::get_if<WaterDataEntry>(&entry);
    if (!water) return entry;
    auto next = *water;
    next.date = startOfNextDay(water->date);
    next.waterValue = 0;
    return next;
}

}  // namespace qrv::widget
