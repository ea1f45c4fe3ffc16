#include "Widget/Cache/WidgetDataCacheReader.hpp"

#include <cstdio>
#include <mutex>
#include <string>

#include "Widget/Cache/WidgetSettings.hpp"

namespace qrv::widget {
namespace {

constexpr std::string_view kNoStrategy = "unable to find strategy for type: ";
constexpr std::string_view kNoData = "unable to find data for type: ";
constexpr std::string_view kNotDecoded = "unable to decode entry for type: ";

std::string line(std::string_view message, std::string_view name) {
    std::string text(message);
    text += name;
    return text;
}

// The flag is a courtesy to the main app: failing to write it must not stop the
// read, and nothing may escape a queued work item.
void markInstalled(platform::UserDefaults& store, const std::string& key) {
    try {
        store.set(key, true);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "could not set %s: %s\n", key.c_str(), error.what());
    }
}

std::optional<AnyWidgetDataCacheEntry> decode(const WidgetDataCacheReadStrategy& strategy,
                                              const platform::UserDefaults::Data& data) {
    try {
        return strategy.decodeEntry(data);
    } catch (const std::exception&) {
        return std::nullopt;  // a decoding error is only ever reported as "not decoded"
    }
}

}  // namespace

std::shared_ptr<WidgetDataCacheReader> WidgetDataCacheReader::make(
    WidgetDataCacheReaderEnvironment environment) {
    return std::make_shared<WidgetDataCacheReader>(Token{}, std::move(environment));
}

WidgetDataCacheReader::WidgetDataCacheReader(Token, WidgetDataCacheReaderEnvironment environment)
    : environment_(std::move(environment)) {}

void WidgetDataCacheReader::registerStrategy(WidgetDataCacheType type, Strategy strategy) {
    std::unique_lock lock(strategiesMutex_);
    strategies_[type] = std::move(strategy);
}

WidgetDataCacheReader::Strategy WidgetDataCacheReader::strategy(WidgetDataCacheType type) const {
    std::shared_lock lock(strategiesMutex_);
    const auto found = strategies_.find(type);
    return found == strategies_.end() ? nullptr : found->second;
}

void WidgetDataCacheReader::read(WidgetDataCacheType type, Completion completion) {
    auto chosen = strategy(type);
    if (!chosen) {
        environment_.print(line(kNoStrategy, typeName(type)));
        return;
    }
    // The work item keeps what it needs by value and the reader only weakly: a
    // pending read neither keeps its reader alive nor touches its strategy table.
    // Nor does it hold the queue it runs on, whose owner may be waiting for it.
    auto environment = environment_;
    environment.queues.background = nullptr;
    const auto background = environment_.queues.background;
    background->async([weakReader = weak_from_this(), type, strategy = std::move(chosen),
                       completion = std::move(completion), environment = std::move(environment)] {
        const auto readerExists = [&] { return !weakReader.expired(); };
        const auto store = environment.resolvedStore();
        markInstalled(*store, readerExists() ? installedKey(type)
                                             : std::string(WidgetStoreKeys::unknownWidgetInstalled));
        const auto name = [&]() -> std::string_view { return readerExists() ? typeName(type) : "unknown"; };

        const auto data = store->data(strategy->dataKey());
        if (!data) {
            environment.print(line(kNoData, name()));
            return;
        }
        auto entry = decode(*strategy, *data);
        if (!entry || !strategy->isEntryCurrent(*entry)) {
            // A record of an earlier day is reported exactly like one that does not decode.
            environment.print(line(kNotDecoded, name()));
            return;
        }
        environment.queues.main->async(
            [completion, delivered = std::move(*entry)]() { completion(delivered); });
    });
}

std::optional<AnyWidgetDataCacheEntry> WidgetDataCacheReader::read(WidgetDataCacheType type) {
    const auto store = environment_.resolvedStore();
    markInstalled(*store, installedKey(type));
    const auto chosen = strategy(type);
    if (!chosen) return std::nullopt;
    const auto data = store->data(chosen->dataKey());
    if (!data) return std::nullopt;
    auto entry = decode(*chosen, *data);
    if (!entry || !chosen->isEntryCurrent(*entry)) return std::nullopt;
    return entry;
}

std::optional<AnyWidgetDataCacheEntry> WidgetDataCacheReader::nextDayEntry(
    const AnyWidgetDataCacheEntry& entry, WidgetDataCacheType type) const {
    const auto chosen = strategy(type);
    if (!chosen) {
        environment_.print(line(kNoStrategy, typeName(type)));
        return std::nullopt;
    }
    return chosen->makeNextDayEntry(entry);
}

}  // namespace qrv::widget
