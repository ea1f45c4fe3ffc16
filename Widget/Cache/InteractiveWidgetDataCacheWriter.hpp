#pragma once
// Appends what the user logs on the widget to the extension's own list in the
// shared store. Each write is one atomic read-modify-write of the key (across
// threads and processes), so taps that overlap all land.
//
// A stored value that no longer decodes is replaced by a new list holding only
// the new record, as if nothing had been stored: none of its records counted
// for the widget, so none may come back with a tap. Its bytes are never lost:
// before they are replaced they go to a file beside the store file,
// "<store file>.WaterInteractiveData-unreadable-<UTC stamp>", and one line on
// standard error says where.
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "Platform/store/UserDefaults.hpp"
#include "Widget/Cache/InteractiveWaterData.hpp"
#include "Widget/Cache/InteractiveWidgetDataCacheReader.hpp"
#include "Widget/Cache/InteractiveWidgetDataType.hpp"

namespace qrv::widget {

// Thrown by a write strategy that finds a value under its key that it cannot
// read; carries that value so the writer can keep it before replacing it.
class UnreadableInteractiveData : public std::runtime_error {
  public:
    explicit UnreadableInteractiveData(platform::PropertyListValue value)
        : std::runtime_error("stored value does not decode"), value_(std::move(value)) {}
    const platform::PropertyListValue& value() const { return value_; }

  private:
    platform::PropertyListValue value_;
};

class InteractiveWidgetDataCacheWriteStrategy {
  public:
    virtual ~InteractiveWidgetDataCacheWriteStrategy() = default;
    virtual std::string dataKey() const = 0;
    // The complete new value for dataKey(), given the value stored there now
    // (read under the store's lock). Nothing when the record is not of the
    // strategy's kind. Throws InteractiveDataEncodingError when the record
    // cannot be encoded, and UnreadableInteractiveData when `current` does not
    // decode, unless it equals `replaceable` (already kept safe by the writer):
    // then the list starts over with the record alone.
    virtual std::optional<platform::PropertyListValue::Data> encode(
        const InteractiveWidgetData& record, const std::optional<platform::PropertyListValue>& current,
        const std::optional<platform::PropertyListValue>& replaceable) const = 0;
};

struct InteractiveWaterDataWriteStrategy final : InteractiveWidgetDataCacheWriteStrategy {
    std::string key;

    explicit InteractiveWaterDataWriteStrategy(std::string dataKeyValue) : key(std::move(dataKeyValue)) {}
    std::string dataKey() const override { return key; }
    // The current list, as the shared interactive reader decodes it, with the
    // record appended.
    std::optional<platform::PropertyListValue::Data> encode(
        const InteractiveWidgetData& record, const std::optional<platform::PropertyListValue>& current,
        const std::optional<platform::PropertyListValue>& replaceable) const override;
};

enum class InteractiveWriteResult {
    stored,      // the new list is in the store
    removed,     // the record was of another kind: the key was removed
    noStrategy,  // nothing registered for the type: nothing done
    failed,      // not encodable or not storable: the store is as it was (one line on stderr)
};

class InteractiveWidgetDataCacheWriterProtocol {
  public:
    virtual ~InteractiveWidgetDataCacheWriterProtocol() = default;
    // Never throws.
    virtual InteractiveWriteResult write(const InteractiveWidgetData& record,
                                         InteractiveWidgetDataType type) = 0;
};

class InteractiveWidgetDataCacheWriter final : public InteractiveWidgetDataCacheWriterProtocol {
  public:
    using Strategies =
        std::map<InteractiveWidgetDataType, std::shared_ptr<const InteractiveWidgetDataCacheWriteStrategy>>;

    // `store` null means the shared store (WidgetSettings::defaults()), looked up
    // at each write.
    explicit InteractiveWidgetDataCacheWriter(Strategies strategies,
                                              std::shared_ptr<platform::UserDefaults> store = nullptr);

    // The process's writer: water appended to "WaterInteractiveData" of the
    // shared store. Made once, thread-safely, on first use.
    static InteractiveWidgetDataCacheWriter& shared();

    // How the file keeping a value under `dataKey` that no longer decodes is
    // named after the store file.
    static std::string unreadableLabel(std::string_view dataKey) {
        return std::string(dataKey) + "-unreadable";
    }

    const Strategies& strategies() const { return strategies_; }
    std::shared_ptr<platform::UserDefaults> store() const;

    InteractiveWriteResult write(const InteractiveWidgetData& record,
                                 InteractiveWidgetDataType type) override;

  private:
    Strategies strategies_;
    std::shared_ptr<platform::UserDefaults> store_;
};

}  // namespace qrv::widget
