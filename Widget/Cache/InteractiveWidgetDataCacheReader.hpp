#pragma once
// Reads back what the extension logged itself (the amounts of water tapped on
// the widget). Strict and quiet: anything missing, of the wrong kind or not
// decoding reads as nothing, and every stored record of every day is returned;
// which ones count for today is the water provider's business.
#include <any>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "Platform/store/UserDefaults.hpp"
#include "Widget/Cache/InteractiveWaterData.hpp"
#include "Widget/Cache/InteractiveWidgetDataType.hpp"

namespace qrv::widget {

class InteractiveWidgetDataCacheReadStrategy {
  public:
    virtual ~InteractiveWidgetDataCacheReadStrategy() = default;
    virtual std::string dataKey() const = 0;
    // The stored value decoded into the type's list; empty when it does not
    // decode. Gets the object under dataKey(), which may be of any kind.
    virtual std::any decode(const platform::PropertyListValue& stored) const = 0;
};

struct InteractiveWaterDataReadStrategy final : InteractiveWidgetDataCacheReadStrategy {
    std::string key;

    explicit InteractiveWaterDataReadStrategy(std::string dataKeyValue) : key(std::move(dataKeyValue)) {}
    std::string dataKey() const override { return key; }
    // An InteractiveWaterDataList for binary data holding the JSON list.
    std::any decode(const platform::PropertyListValue& stored) const override;
};

class InteractiveWidgetDataCacheReaderProtocol {
  public:
    virtual ~InteractiveWidgetDataCacheReaderProtocol() = default;
    // The type's list (for water an InteractiveWaterDataList); empty for nothing.
    virtual std::any read(InteractiveWidgetDataType type) const = 0;
};

class InteractiveWidgetDataCacheReader final : public InteractiveWidgetDataCacheReaderProtocol {
  public:
    using Strategies =
        std::map<InteractiveWidgetDataType, std::shared_ptr<const InteractiveWidgetDataCacheReadStrategy>>;

    // `store` null means the shared store (WidgetSettings::defaults()), looked
    // up at each read so that the host can choose its container first.
    explicit InteractiveWidgetDataCacheReader(Strategies strategies,
                                              std::shared_ptr<platform::UserDefaults> store = nullptr);

    // The process's reader: water read from "WaterInteractiveData" of the shared
    // store. Made once, thread-safely, on first use.
    static InteractiveWidgetDataCacheReader& shared();

    const Strategies& strategies() const { return strategies_; }

    std::any read(InteractiveWidgetDataType type) const override;
    // read(water) unpacked.
    std::optional<InteractiveWaterDataList> readWater() const;

    // The decoding step alone, for a value already fetched (the writer decodes
    // the current list under the store's lock with it). Empty for no strategy,
    // a missing value or one that does not decode.
    std::any decode(InteractiveWidgetDataType type,
                    const std::optional<platform::PropertyListValue>& stored) const;

    std::shared_ptr<platform::UserDefaults> store() const;

  private:
    Strategies strategies_;
    std::shared_ptr<platform::UserDefaults> store_;
};

}  // namespace qrv::widget
