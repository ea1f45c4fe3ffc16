#include "Widget/Cache/CaloriesConsumedDataEntry.hpp"

#include "Platform/coding/JSONDecoder.hpp"
#include "Platform/coding/JSONWriter.hpp"
#include "Platform/time/Clock.hpp"
#include "Widget/Cache/WidgetDataCacheEntry.hpp"

namespace qrv::widget {

static_assert(WidgetDataCacheEntry<CaloriesConsumedDataEntry>);

CaloriesConsumedDataEntry CaloriesConsumedDataEntry::fromJSON(const platform::JSONValue& value) {
    auto json = value.keyedContainer();
    CaloriesConsumedDataEntry entry;
    entry.date = json.decodeDate("date");
    entry.isLoggedIn = json.decodeBool("isLoggedIn");
    entry.shouldShowBarcodeButton = json.decodeBool("shouldShowBarcodeButton");
    entry.energyUnitTitle = json.decodeString("energyUnitTitle");
    entry.condensedEnergyUnitTitle = json.decodeString("condensedEnergyUnitTitle");
    entry.goalTitle = json.decodeString("goalTitle");
    entry.goal = json.decodeString("goal");
    entry.goalAdjustedForExercise = json.decodeString("goalAdjustedForExercise");
    entry.consumedTitle = json.decodeString("consumedTitle");
    entry.consumed = json.decodeString("consumed");
    entry.exerciseTitle = json.decodeString("exerciseTitle");
    entry.exercise = json.decodeString("exercise");
    entry.remaining = json.decodeString("remaining");
    entry.subtitle = json.decodeString("subtitle");
    entry.progress = json.decodeDouble("progress");
    entry.reverseProgress = json.decodeDouble("reverseProgress");
    entry.exerciseProgress = json.decodeDouble("exerciseProgress");
    return entry;
}

platform::DecodingResult<CaloriesConsumedDataEntry> CaloriesConsumedDataEntry::decodeResult(
    std::span<const std::uint8_t> json) {
    return platform::decodeJSON<CaloriesConsumedDataEntry>(json, &CaloriesConsumedDataEntry::fromJSON);
}

std::optional<CaloriesConsumedDataEntry> CaloriesConsumedDataEntry::decode(std::span<const std::uint8_t> json) {
    return decodeResult(json).toOptional();
}

std::optional<CaloriesConsumedDataEntry> CaloriesConsumedDataEntry::decode(std::string_view json) {
    return decode(platform::bytesOf(json));
}

void CaloriesConsumedDataEntry::encode(platform::JSONWriter& writer) const {
    writer.beginObject()
        .key("date").date(date)
        .key("isLoggedIn").boolean(isLoggedIn)
        .key("shouldShowBarcodeButton").boolean(shouldShowBarcodeButton)
        .key("energyUnitTitle").string(energyUnitTitle)
        .key("condensedEnergyUnitTitle").string(condensedEnergyUnitTitle)
        .key("goalTitle").string(goalTitle)
        .key("goal").string(goal)
        .key("goalAdjustedForExercise").string(goalAdjustedForExercise)
        .key("consumedTitle").string(consumedTitle)
        .key("consumed").string(consumed)
        .key("exerciseTitle").string(exerciseTitle)
        .key("exercise").string(exercise)
        .key("remaining").string(remaining)
        .key("subtitle").string(subtitle)
        .key("progress").number(progress)
        .key("reverseProgress").number(reverseProgress)
        .key("exerciseProgress").number(exerciseProgress)
        .endObject();
}

std::string CaloriesConsumedDataEntry::encode() const {
    platform::JSONWriter writer;
    encode(writer);
    return std::move(writer).take();
}

CaloriesConsumedDataEntry CaloriesConsumedDataEntry::makeSample(platform::Date date) {
    return CaloriesConsumedDataEntry{
        .date = date,
        .isLoggedIn = true,
        .shouldShowBarcodeButton = true,
        .energyUnitTitle = "cals",
        .condensedEnergyUnitTitle = "cal",
        .goalTitle = "Base Goal",
        .goal = "1,500",
        .goalAdjustedForExercise = "1,750",
        .consumedTitle = "Food",
        .consumed = "500",
        .exerciseTitle = "Exercise",
        .exercise = "250",
        .remaining = "1,250",
        .subtitle = "Remaining",
        .progress = 0.33,
        .reverseProgress = 0,
        .exerciseProgress = 0,
    };
}

const CaloriesConsumedDataEntry& CaloriesConsumedDataEntry::sample() {
    static const CaloriesConsumedDataEntry entry = makeSample(platform::SystemClock::shared().now());
    return entry;
}

}  // namespace qrv::widget
