// The fetch events under "widget_events": one event's JSON on its own, and the
// list as it sits in the shared store's file. The bytes are read both ways:
//  - as one event's JSON, which must decode or fail cleanly and round-trip;
//  - as a property-list file; when it is a dictionary (a store the extension
//    would accept), an event is recorded into it through the real append, and
//    the list must then hold the old events plus the new one last, or just the
//    new one when the old value was not a list of data.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "Platform/coding/JSONWriter.hpp"
#include "Platform/store/PropertyList.hpp"
#include "Platform/store/UserDefaults.hpp"
#include "Platform/time/Clock.hpp"
#include "Widget/Providers/WidgetBackgroundFetchAnalytics.hpp"
#include "Widget/Providers/WidgetFetchEvent.hpp"
#include "fuzz/FuzzSupport.hpp"
#include "fuzz/SameValue.hpp"

using namespace qrv;
using platform::PropertyListValue;
using widget::WidgetFetchEvent;

namespace {

constexpr double kNow = 753000000.25;

std::filesystem::path& scratchDirectory() {
    static std::filesystem::path dir;
    return dir;
}

void removeScratchDirectory() {
    std::error_code error;
    std::filesystem::remove_all(scratchDirectory(), error);
}

// One store file per fuzzing process, on memory where there is /dev/shm,
// removed when the process ends normally.
std::filesystem::path scratchStore() {
    static const std::filesystem::path path = [] {
        const std::filesystem::path base =
            std::filesystem::exists("/dev/shm") ? "/dev/shm" : std::filesystem::temp_directory_path();
        scratchDirectory() = base / ("qrv-fuzz-events-" + std::to_string(::getpid()));
        std::filesystem::create_directories(scratchDirectory());
        std::atexit(removeScratchDirectory);
        return scratchDirectory() / "store.plist";
    }();
    return path;
}

void checkOneEvent(std::span<const std::uint8_t> input) {
    const auto event = WidgetFetchEvent::decode(input);
    if (!event) {
        (void)event.error().describe();
        return;
    }
    std::vector<std::uint8_t> encoded;
    try {
        encoded = event.value().encode();
    } catch (const platform::EncodingError&) {
        return;
    }
    const auto again = WidgetFetchEvent::decode(encoded);
    QRV_FUZZ_CHECK(again.hasValue());
    QRV_FUZZ_CHECK(again.value() == event.value());
}

// How many events the append should keep from the old value.
std::size_t keptEvents(const PropertyListValue::Dictionary& store) {
    const auto found = store.find("widget_events");
    if (found == store.end()) return 0;
    const auto* array = found->second.arrayValue();
    if (!array) return 0;
    for (const auto& element : *array) {
        if (!element.dataValue()) return 0;
    }
    return array->size();
}

void checkAppend(std::span<const std::uint8_t> input) {
    PropertyListValue parsed{PropertyListValue::Dictionary{}};
    try {
        parsed = platform::PropertyList::decode(input);
    } catch (const platform::PropertyListError&) {
        return;
    }
    const auto* dictionary = parsed.dictionaryValue();
    if (!dictionary) return;
    const auto path = scratchStore();
    {
        std::ofstream file(path, std::ios::binary | std::ios::trunc);
        file.write(reinterpret_cast<const char*>(input.data()), static_cast<std::streamsize>(input.size()));
    }
    const std::size_t kept = keptEvents(*dictionary);
    auto store = platform::UserDefaults::atPath(path);
    auto clock = std::make_shared<platform::FixedClock>(platform::Date{kNow});
    widget::WidgetBackgroundFetchAnalytics(store, clock).recordFetch("widget_calories", "small");

    const auto stored = store->object("widget_events");
    QRV_FUZZ_CHECK(stored.has_value());
    const auto* list = stored->arrayValue();
    QRV_FUZZ_CHECK(list != nullptr);
    QRV_FUZZ_CHECK(list->size() == kept + 1);
    const auto* last = list->back().dataValue();
    QRV_FUZZ_CHECK(last != nullptr);
    const auto event = WidgetFetchEvent::decode(*last);
    QRV_FUZZ_CHECK(event.hasValue());
    QRV_FUZZ_CHECK((event.value() == WidgetFetchEvent{"widget_calories", "small", platform::Date{kNow}}));
    // Every other key of the store is left as it was.
    auto after = store->dictionaryRepresentation();
    after.erase("widget_events");
    auto before = *dictionary;
    before.erase("widget_events");
    QRV_FUZZ_CHECK(qrv::fuzz::sameValue(PropertyListValue(std::move(after)), PropertyListValue(std::move(before))));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto input = qrv::fuzz::bytes(data, size);
    checkOneEvent(input);
    checkAppend(input);
    return 0;
}
