#include "Widget/Cache/InteractiveWidgetDataCacheWriter.hpp"

#include <cmath>
#include <cstdio>

#include "Platform/store/PropertyList.hpp"
#include "Widget/Cache/WidgetSettings.hpp"

namespace qrv::widget {
namespace {

using platform::PropertyListValue;

// A retry happens only when the value changed into another unreadable one
// between keeping it and replacing it; a handful of rounds is plenty.
constexpr int kMaxAttempts = 4;

// The bytes of a stored value that no longer decodes: the data itself, or any
// other kind of value as a binary property list.
PropertyListValue::Data bytesOf(const PropertyListValue& value) {
    if (const auto* data = value.dataValue()) return *data;
    return platform::PropertyList::encode(value, platform::PropertyList::Format::binary);
}

// Standard output belongs to the reader's three lines; the writer's own
// diagnostics go to standard error, one write per line so lines from several
// threads never interleave.
void printLine(std::string line) {
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fflush(stderr);
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
        if (auto* list = std::any_cast<InteractiveWaterDataList>(&decoded))
            records = std::move(*list);
        else if (!replaceable || *replaceable != *current)
            throw UnreadableInteractiveData(*current);
        // Otherwise the list starts over: none of its records counted for the
        // widget, so none may come back with this tap.
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
                const auto kept = target->keepBeside(unreadableLabel(key), bytesOf(unreadable.value()));
                replaceable = unreadable.value();
                printLine("the stored " + key + " does not decode; kept it in " + kept.string() +
                          " and started a new list");
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
