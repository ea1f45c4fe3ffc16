#pragma once
// A store in a scratch file, New York's calendar, a clock stopped at
// 2024-03-09 15:00 local, manual queues and the printed lines collected: every
// reader and provider test runs in this world unless it says otherwise.
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "Platform/coding/JSONDecoder.hpp"
#include "Platform/coding/JSONWriter.hpp"
#include "Platform/dispatch/ManualExecutor.hpp"
#include "Platform/time/Calendar.hpp"
#include "Platform/time/Clock.hpp"
#include "Widget/Cache/WidgetDataCacheReaderEnvironment.hpp"

namespace qrv::test {

class ScratchFolder {
  public:
    ScratchFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "qrv-reader-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) std::abort();
        path_ = pattern;
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

inline const platform::Calendar& newYork() {
    static const platform::Calendar calendar(*platform::TimeZone::named("America/New_York"));
    return calendar;
}

// A wall-clock time in New York.
inline platform::Date local(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return *newYork().date({year, month, day, hour, minute, second});
}

// The record documents as the main app writes them.
inline std::string caloriesJSON(platform::Date date, std::string goal = "2,000",
                                std::string remaining = "350") {
    platform::JSONWriter json;
    json.beginObject().key("date").date(date).key("isLoggedIn").boolean(true);
    json.key("shouldShowBarcodeButton").boolean(true).key("energyUnitTitle").string("cals");
    json.key("condensedEnergyUnitTitle").string("cal").key("goalTitle").string("Base Goal");
    json.key("goal").string(goal).key("goalAdjustedForExercise").string("2,250");
    json.key("consumedTitle").string("Food").key("consumed").string("1,900");
    json.key("exerciseTitle").string("Exercise").key("exercise").string("250");
    json.key("remaining").string(remaining).key("subtitle").string("Remaining");
    json.key("progress")
        .number(0.84)
        .key("reverseProgress")
        .number(0.16)
        .key("exerciseProgress")
        .number(0.11);
    return std::move(json.endObject()).take();
}

inline std::string macronutrientsJSON(platform::Date date) {
    platform::JSONWriter json;
    json.beginObject().key("date").date(date).key("isLoggedIn").boolean(true).key("values").beginArray();
    const struct {
        int type;
        const char* title;
        double goal, grams;
    } values[] = {{0, "Carbs", 165, 50}, {2, "Protein", 85, 65.5}};  // no fat: absent keys stay absent
    for (const auto& value : values) {
        json.integer(value.type)
            .beginObject()
            .key("title")
            .string(value.title)
            .key("maxValue")
            .number(value.goal);
        json.key("value").number(value.grams).key("type").integer(value.type).endObject();
    }
    return std::move(json.endArray().endObject()).take();
}

inline std::string waterJSON(platform::Date date, float value = 1200, const char* unit = "ml") {
    platform::JSONWriter json;
    json.beginObject().key("date").date(date).key("isLoggedIn").boolean(true);
    json.key("waterValue").number(value).key("waterUnit").string(unit);
    return std::move(json.endObject()).take();
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
