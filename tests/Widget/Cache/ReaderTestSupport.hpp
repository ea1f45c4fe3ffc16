#pragma once
// A store in a scratch file, New York's calendar, a clock stopped at
// 2024-03-09 15:00 local, manual queues and the printed lines collected: every
// reader and provider test runs in this world unless it says otherwise.
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "Platform/coding/JSONDecoder.hpp"
#include "Platform/dispatch/ManualExecutor.hpp"
#include "Platform/time/Calendar.hpp"
#include "Platform/time/Clock.hpp"
#include "Widget/Cache/WidgetDataCacheReaderEnvironment.hpp"
#include "tests/Platform/store/StoreTestSupport.hpp"

namespace qrv::test {

using ScratchFolder = ScratchDirectory;

inline const platform::Calendar& newYork() {
    static const platform::Calendar calendar(*platform::TimeZone::named("America/New_York"));
    return calendar;
}

// A wall-clock time in New York.
inline platform::Date local(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return *newYork().date({year, month, day, hour, minute, second});
}

// The record documents as the main app writes them: dates in seconds since 2001.
inline std::string loggedInRecord(platform::Date date, const std::string& fields) {
    return R"({"date":)" + std::to_string(date.timeIntervalSinceReferenceDate) + R"(,"isLoggedIn":true,)" +
           fields + "}";
}

inline std::string caloriesJSON(platform::Date date) {
    return loggedInRecord(
        date, R"("shouldShowBarcodeButton":true,"energyUnitTitle":"cals","condensedEnergyUnitTitle":"cal",)"
              R"("goalTitle":"Base Goal","goal":"2,000","goalAdjustedForExercise":"2,250",)"
              R"("consumedTitle":"Food","consumed":"1,900","exerciseTitle":"Exercise","exercise":"250",)"
              R"("remaining":"350","subtitle":"Remaining","progress":0.84,"reverseProgress":0.16,)"
              R"("exerciseProgress":0.11)");
}

// No fat: absent nutrients stay absent.
inline std::string macronutrientsJSON(platform::Date date) {
    return loggedInRecord(date, R"("values":[0,{"title":"Carbs","maxValue":165,"value":50,"type":0},)"
                                R"(2,{"title":"Protein","maxValue":85,"value":65.5,"type":2}])");
}

inline std::string waterJSON(platform::Date date, float value = 1200, const std::string& unit = "ml") {
    return loggedInRecord(date,
                          R"("waterValue":)" + std::to_string(value) + R"(,"waterUnit":")" + unit + '"');
}

struct ReaderWorld {
    ScratchFolder folder;
    std::shared_ptr<platform::UserDefaults> store =
        platform::UserDefaults::atPath(folder.path() / "store.plist");
    std::shared_ptr<platform::ManualClock> clock =
        std::make_shared<platform::ManualClock>(local(2024, 3, 9, 15));
    std::shared_ptr<platform::ManualExecutor> main = std::make_shared<platform::ManualExecutor>();
    std::shared_ptr<platform::ManualExecutor> background = std::make_shared<platform::ManualExecutor>();
    std::shared_ptr<std::mutex> linesMutex = std::make_shared<std::mutex>();
    std::shared_ptr<std::vector<std::string>> printed = std::make_shared<std::vector<std::string>>();

    widget::WidgetDataCacheReaderEnvironment environment() const {
        return {store,
                newYork(),
                clock,
                {main, background},
                [mutex = linesMutex, lines = printed](std::string_view line) {
                    std::lock_guard lock(*mutex);
                    lines->emplace_back(line);
                }};
    }

    std::vector<std::string> lines() const {
        std::lock_guard lock(*linesMutex);
        return *printed;
    }

    void put(std::string_view key, const std::string& json) const {
        store->set(key, platform::PropertyListValue::Data(json.begin(), json.end()));
    }

    // Runs the background work, then what it handed to the main queue.
    void settle() const {
        while (background->drain() + main->drain() > 0) {
        }
    }
};

}  // namespace qrv::test
