#pragma once
// Turns a record the main app left in the shared store into a timeline entry.
// The reader knows no record type itself: each WidgetDataCacheType it can read
// has a strategy registered (a provider registers exactly one). Failures never
// reach the caller: they print one line to standard output, and the
// completion-style read then simply never calls back.
#include <functional>
#include <memory>
#include <optional>
#include <shared_mutex>
#include <unordered_map>

#include "Widget/Cache/WidgetDataCacheReadStrategy.hpp"
#include "Widget/Cache/WidgetDataCacheReaderEnvironment.hpp"
#include "Widget/Cache/WidgetDataCacheType.hpp"

namespace qrv::widget {

class WidgetDataCacheReader : public std::enable_shared_from_this<WidgetDataCacheReader> {
    struct Token {};

  public:
    using Completion = std::function<void(AnyWidgetDataCacheEntry)>;
    using Strategy = std::shared_ptr<const WidgetDataCacheReadStrategy>;

    // Readers are shared: a pending read holds its reader only weakly.
    static std::shared_ptr<WidgetDataCacheReader> make(
        WidgetDataCacheReaderEnvironment environment = WidgetDataCacheReaderEnvironment::defaults());
    WidgetDataCacheReader(Token, WidgetDataCacheReaderEnvironment environment);

    // Registers (or replaces) the strategy for `type`.
    void registerStrategy(WidgetDataCacheType type, Strategy strategy);
    Strategy strategy(WidgetDataCacheType type) const;

    // Returns at once. On the background queue: sets the type's installed flag,
    // fetches, decodes and checks that the record is current; then calls
    // `completion` on the main queue. On any failure one line is printed and the
    // completion is never called. Once the reader is gone the pending read still
    // finishes, naming the type "Unknown" in the flag and "unknown" in its lines.
    void read(WidgetDataCacheType type, Completion completion);

    // The same lookup, done on the calling thread, for callers already running as
    // a task. The installed flag is set first, even with no strategy registered;
    // nothing is printed; any failure gives nothing.
    std::optional<AnyWidgetDataCacheEntry> read(WidgetDataCacheType type);

    // The strategy's next-day copy of `entry`; nothing (and one line printed)
    // when no strategy is registered for `type`.
    std::optional<AnyWidgetDataCacheEntry> nextDayEntry(const AnyWidgetDataCacheEntry& entry,
                                                        WidgetDataCacheType type) const;

    const WidgetDataCacheReaderEnvironment& environment() const { return environment_; }

  private:
    WidgetDataCacheReaderEnvironment environment_;
    mutable std::shared_mutex strategiesMutex_;
    std::unordered_map<WidgetDataCacheType, Strategy> strategies_;
};

}  // namespace qrv::widget
