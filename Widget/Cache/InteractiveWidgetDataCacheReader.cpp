#include "Widget/Cache/InteractiveWidgetDataCacheReader.hpp"

#include "Widget/Cache/WidgetSettings.hpp"

namespace qrv::widget {

std::any InteractiveWaterDataReadStrategy::decode(const platform::PropertyListValue& stored) const {
    const auto* data = stored.dataValue();
    if (data == nullptr) return {};
    auto records = decodeInteractiveWaterDataList(*data);
    if (!records) return {};
    return std::move(*records);
}

InteractiveWidgetDataCacheReader::InteractiveWidgetDataCacheReader(
    Strategies strategies, std::shared_ptr<platform::UserDefaults> store)
    : strategies_(std::move(strategies)), store_(std::move(store)) {}

InteractiveWidgetDataCacheReader& InteractiveWidgetDataCacheReader::shared() {
    // Never destroyed: tasks may still read while the process exits.
    static auto* reader = new InteractiveWidgetDataCacheReader(
        {{InteractiveWidgetDataType::water, std::make_shared<InteractiveWaterDataReadStrategy>(
                                                std::string(WidgetStoreKeys::waterInteractiveData))}});
    return *reader;
}

std::shared_ptr<platform::UserDefaults> InteractiveWidgetDataCacheReader::store() const {
    return store_ ? store_ : WidgetSettings::defaults();
}

std::any InteractiveWidgetDataCacheReader::decode(
    InteractiveWidgetDataType type, const std::optional<platform::PropertyListValue>& stored) const {
    const auto it = strategies_.find(type);
    if (it == strategies_.end() || !stored) return {};
    return it->second->decode(*stored);
}

std::any InteractiveWidgetDataCacheReader::read(InteractiveWidgetDataType type) const {
    const auto it = strategies_.find(type);
    if (it == strategies_.end()) return {};
    return decode(type, store()->object(it->second->dataKey()));
}

std::optional<InteractiveWaterDataList> InteractiveWidgetDataCacheReader::readWater() const {
    auto result = read(InteractiveWidgetDataType::water);
    if (auto* records = std::any_cast<InteractiveWaterDataList>(&result)) return std::move(*records);
    return std::nullopt;
}

}  // namespace qrv::widget
