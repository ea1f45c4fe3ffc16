#include "Widget/Cache/InteractiveWidgetDataCacheWriter.hpp"

#include <cmath>
#include <cstdio>

#include "Widget/Cache/WidgetSettings.hpp"

namespace qrv::widget {
namespace {

using platform::PropertyListValue;

// A retry happens only when the value changed into another unreadable one
// between keeping it and replacing it; a handful of rounds is plenty.
constexpr int kMaxAttempts = 4;

// Appends `value` to the array kept under `key` (a non-array there is kept as
// the array's first element).
void keepUnreadable(platform::UserDefaults& store, const std::string& key, const PropertyListValue& value) {
    store.update(key, [&](std::optional<PropertyListValue> kept) -> std::optional<PropertyListValue> {
        PropertyListValue::Array values;
        if (kept) {
            if (const auto* array = kept->arrayValue())
                values = *array;
            else
                values.push_back(std::move(*kept));
        }
        values.push_back(value);
        return PropertyListValue(std::move(values));
    });
}

// One write per line, so lines from several threads never interleave.
void printLine(std::string line) {
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fflush(stdout);
}

}  // namespace

std::optional<PropertyListValue::Data> InteractiveWaterDataWriteStrategy::encode(
    const InteractiveWidgetData& record, const std::optional<PropertyListValue>& current,
    const std::optional<PropertyListValue>& replaceable) const {
    const auto* water = dynamic_cast<const InteractiveWaterData*>(&record);
    if (water == nullptr) return std::nullopt;
    // Refuse a record that cannot be stored before touching anything else.
    if (!std::isfinite(water->waterValue) || !std::isfinite(water->date.timeIntervalSinceReferenceDate))
        throw InteractiveDataEncodingError("the amount or date is not a finite number");

    InteractiveWaterDataList records;
    if (current) {
        auto decoded =
            InteractiveWidgetDataCacheReader::shared().decode(InteractiveWidgetDataType::water, current);
        if (auto* list = std::any_cast<InteractiveWaterDataList>(&decoded)) {
            records = std::move(*list);
        } else {
            if (!replaceable || *replaceable != *current) throw UnreadableInteractiveData(*current);
            if (const auto* data = current->dataValue())
                records = salvageInteractiveWaterDataList(*data).records;
        }
    }
    records.push_back(*water);
    return encodeInteractiveWaterDataList(records);
}

InteractiveWidgetDataCacheWriter::InteractiveWidgetDataCacheWriter(
    Strategies strategies, std::shared_ptr<platform::UserDefaults> store)
    : strategies_(std::move(strategies)), store_(std::move(store)) {}

InteractiveWidgetDataCacheWriter& InteractiveWidgetDataCacheWriter::shared() {
    // Never destroyed: an intent may still be writing while the process exits.
    static auto* writer = new InteractiveWidgetDataCacheWriter(
        {{InteractiveWidgetDataType::water, std::make_shared<InteractiveWaterDataWriteStrategy>(
                                                std::string(WidgetStoreKeys::waterInteractiveData))}});
    return *writer;
}

std::shared_ptr<platform::UserDefaults> InteractiveWidgetDataCacheWriter::store() const {
    return store_ ? store_ : WidgetSettings::defaults();
}

InteractiveWriteResult InteractiveWidgetDataCacheWriter::write(const InteractiveWidgetData& record,
                                                               InteractiveWidgetDataType type) {
    const auto it = strategies_.find(type);
    if (it == strategies_.end()) return InteractiveWriteResult::noStrategy;
    const auto& strategy = *it->second;
    const std::string key = strategy.dataKey();
    std::optional<PropertyListValue> replaceable;
    try {
        const auto target = store();
        for (int attempt = 0; attempt < kMaxAttempts; ++attempt) {
            try {
                // One locked read-modify-write: a record of another kind stores
                // nothing, which removes the key and every amount under it.
                const auto stored = target->update(
                    key, [&](std::optional<PropertyListValue> current) -> std::optional<PropertyListValue> {
                        auto data = strategy.encode(record, current, replaceable);
                        if (!data) return std::nullopt;
                        return PropertyListValue(std::move(*data));
                    });
                return stored ? InteractiveWriteResult::stored : InteractiveWriteResult::removed;
            } catch (const UnreadableInteractiveData& unreadable) {
                const std::string safeKey = unreadableKey(key);
                keepUnreadable(*target, safeKey, unreadable.value());
                replaceable = unreadable.value();
                printLine("unable to decode stored data for type: " + std::string(typeName(type)) +
                          "; kept it under " + safeKey + " and carried over the records that still read");
            }
        }
        printLine("unable to store data for type: " + std::string(typeName(type)) +
                  ": the stored value keeps changing");
    } catch (const InteractiveDataEncodingError& error) {
        printLine("unable to encode data for type: " + std::string(typeName(type)) + ": " + error.what());
    } catch (const std::exception& error) {
        printLine("unable to store data for type: " + std::string(typeName(type)) + ": " + error.what());
    }
    return InteractiveWriteResult::failed;
}

}  // namespace qrv::widget
