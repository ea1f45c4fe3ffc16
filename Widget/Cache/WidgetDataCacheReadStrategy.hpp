#pragma once
// Per-kind knowledge of the cached records: under which key the main app keeps
// the record, how it decodes, whether it still belongs to today, and what the
// same record looks like at the start of the next day with the day's figures
// reset. The reader holds one strategy per WidgetDataCacheType and knows nothing
// of the records itself.
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <variant>

#include "Platform/time/Calendar.hpp"
#include "Platform/time/Clock.hpp"
#include "Widget/Cache/CaloriesConsumedDataEntry.hpp"
#include "Widget/Cache/MacronutrientsDataEntry.hpp"
#include "Widget/Cache/WaterDataEntry.hpp"

namespace qrv::widget {

// Any of the three cached records, as the reader hands them around.
using AnyWidgetDataCacheEntry =
    std::variant<WaterDataEntry, CaloriesConsumedDataEntry, MacronutrientsDataEntry>;

platform::Date entryDate(const AnyWidgetDataCacheEntry& entry);

class WidgetDataCacheReadStrategy {
  public:
    virtual ~WidgetDataCacheReadStrategy() = default;

    // The record decoded from its JSON bytes; nothing when they do not decode.
    virtual std::optional<AnyWidgetDataCacheEntry> decodeEntry(std::span<const std::uint8_t> data) const = 0;
    // A record of the strategy's own kind, dated at the start of the next day after
    // its own date, with the day's figures reset; any other record unchanged.
    virtual AnyWidgetDataCacheEntry makeNextDayEntry(const AnyWidgetDataCacheEntry& entry) const = 0;
    virtual bool isEntryCurrent(const AnyWidgetDataCacheEntry& entry) const = 0;
    // The store key of the record.
    virtual std::string dataKey() const = 0;

  protected:
    WidgetDataCacheReadStrategy() = default;
    WidgetDataCacheReadStrategy(const WidgetDataCacheReadStrategy&) = default;
    WidgetDataCacheReadStrategy& operator=(const WidgetDataCacheReadStrategy&) = default;
};

// The key, and the calendar and clock that say what "today" and "tomorrow" are.
// Strategies are immutable values once made.
class DatedReadStrategy : public WidgetDataCacheReadStrategy {
  public:
    std::string dataKey() const override { return dataKey_; }
    const platform::Calendar& calendar() const { return calendar_; }
    platform::Date now() const { return clock_->now(); }

  protected:
    DatedReadStrategy(std::string dataKey, platform::Calendar calendar,
                      std::shared_ptr<const platform::Clock> clock);

    // The start of the local day after the one `date` falls on: one day added with
    // the wall clock kept, then the start of that day. Should the calendar fail to
    // add the day, the present moment's day is used instead.
    platform::Date startOfNextDay(platform::Date date) const;
    // Dated strictly after the start of today: a record stamped exactly at
    // midnight belongs to the day before; one from the future counts as current.
    bool isDatedToday(const AnyWidgetDataCacheEntry& entry) const;

  private:
    std::string dataKey_;
    platform::Calendar calendar_;
    std::shared_ptr<const platform::Clock> clock_;
};

// Made with the current calendar and the system clock unless told otherwise.
class CaloriesDataReadStrategy final : public DatedReadStrategy {
  public:
    explicit CaloriesDataReadStrategy(std::string dataKey,
                                      platform::Calendar calendar = platform::Calendar::current(),
                                      std::shared_ptr<const platform::Clock> clock = nullptr);

    std::optional<AnyWidgetDataCacheEntry> decodeEntry(std::span<const std::uint8_t> data) const override;
    // Consumed and exercise "0", remaining the base goal, the three fractions 0.
    AnyWidgetDataCacheEntry makeNextDayEntry(const AnyWidgetDataCacheEntry& entry) const override;
    bool isEntryCurrent(const AnyWidgetDataCacheEntry& entry) const override { return isDatedToday(entry); }
};

class MacronutrientsDataReadStrategy final : public DatedReadStrategy {
  public:
    explicit MacronutrientsDataReadStrategy(std::string dataKey,
                                            platform::Calendar calendar = platform::Calendar::current(),
                                            std::shared_ptr<const platform::Clock> clock = nullptr);

    std::optional<AnyWidgetDataCacheEntry> decodeEntry(std::span<const std::uint8_t> data) const override;
    // Each present value's grams 0; titles and goals kept, absent nutrients absent.
    AnyWidgetDataCacheEntry makeNextDayEntry(const AnyWidgetDataCacheEntry& entry) const override;
    bool isEntryCurrent(const AnyWidgetDataCacheEntry& entry) const override { return isDatedToday(entry); }
};

class WaterDataReadStrategy final : public DatedReadStrategy {
  public:
    explicit WaterDataReadStrategy(std::string dataKey,
                                   platform::Calendar calendar = platform::Calendar::current(),
                                   std::shared_ptr<const platform::Clock> clock = nullptr);

    std::optional<AnyWidgetDataCacheEntry> decodeEntry(std::span<const std::uint8_t> data) const override;
    // Water drunk 0, unit kept.
    AnyWidgetDataCacheEntry makeNextDayEntry(const AnyWidgetDataCacheEntry& entry) const override;
    // Always: a water record of an earlier day is shown as it stands (the water
    // provider does its own daily reset), unlike the calories and macronutrient
    // records, which expire at midnight.
    bool isEntryCurrent(const AnyWidgetDataCacheEntry&) const override { return true; }
};

}  // namespace qrv::widget
