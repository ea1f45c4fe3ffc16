#pragma once
// Stores, records and queues for the benchmarks: a store file in a scratch
// directory on disk (as the phone keeps its preferences on flash, fsync and
// all), the demo day's records, and executors that run when drained so a
// provider's whole request is timed on one thread.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "Platform/dispatch/ManualExecutor.hpp"
#include "Platform/store/UserDefaults.hpp"
#include "Platform/time/Calendar.hpp"
#include "Platform/time/Clock.hpp"
#include "Platform/time/TimeZone.hpp"
#include "Widget/Cache/InteractiveWaterData.hpp"
#include "Widget/Cache/WidgetDataCacheReaderEnvironment.hpp"
#include "Widget/Providers/WidgetFetchEvent.hpp"

namespace qrv::bench {

namespace fs = std::filesystem;

// 2024-03-09 20:00:00 UTC: the moment every record and clock here is set to.
inline constexpr double kNow = 731707200.0;

inline std::string readText(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

inline std::string fixture(const std::string& name) {
    return readText(fs::path(QRV_SOURCE_DIR) / "tests/fixtures/records" / name);
}

inline platform::PropertyListValue::Data bytesOf(const std::string& text) { return {text.begin(), text.end()}; }

// The demo day's records, dated kNow.
inline std::string caloriesRecord() {
    return R"({"date":731707200,"isLoggedIn":true,"shouldShowBarcodeButton":true,"energyUnitTitle":"cals",)"
           R"("condensedEnergyUnitTitle":"cal","goalTitle":"Base Goal","goal":"2,000",)"
           R"("goalAdjustedForExercise":"2,320","consumedTitle":"Food","consumed":"1,250",)"
           R"("exerciseTitle":"Exercise","exercise":"320","remaining":"1,070","subtitle":"Remaining",)"
           R"("progress":0.625,"reverseProgress":0.16,"exerciseProgress":0.16})";
}
inline std::string macronutrientsRecord() {
    return R"({"date":731707200,"isLoggedIn":true,"values":[0,{"title":"Carbs","maxValue":250,"value":142,"type":0},)"
           R"(1,{"title":"Fat","maxValue":67,"value":74.5,"type":1},)"
           R"(2,{"title":"Protein","maxValue":100,"value":88,"type":2}]})";
}
inline std::string waterRecord() {
    return R"({"date":731707200,"isLoggedIn":true,"waterValue":1250,"waterUnit":"ml"})";
}

// `count` taps of the day, oldest first, a minute apart, in turn ml, oz and cups.
inline widget::InteractiveWaterDataList taps(std::size_t count) {
    widget::InteractiveWaterDataList list;
    list.reserve(count);
    const widget::WaterWidgetUnit units[] = {widget::WaterWidgetUnit::ml, widget::WaterWidgetUnit::oz,
                                             widget::WaterWidgetUnit::cups};
    for (std::size_t i = 0; i < count; ++i)
        list.emplace_back(platform::Date{kNow - 60.0 * static_cast<double>(count - i)},
                          static_cast<float>(50 + i % 200), units[i % 3]);
    return list;
}

// `count` fetch events as the store keeps them: an array of JSON blobs.
inline platform::PropertyListValue events(std::size_t count) {
    platform::PropertyListValue::Array list;
    list.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        list.emplace_back(widget::WidgetFetchEvent{i % 2 ? "widget_calories" : "widget_macros",
                                                   i % 3 ? "small" : "medium",
                                                   platform::Date{kNow - 900.0 * static_cast<double>(count - i)}}
                              .encode());
    return platform::PropertyListValue(std::move(list));
}

// A directory of its own under the system's temporary directory, removed at the end.
class ScratchStore {
  public:
    ScratchStore() {
        std::string pattern = (fs::temp_directory_path() / "qrv-bench-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) {
            std::perror("mkdtemp");
            std::abort();
        }
        dir_ = pattern;
        store_ = platform::UserDefaults::atPath(dir_ / "Library/Preferences/group.com.qrv.widgets.plist");
    }
    ~ScratchStore() {
        std::error_code error;
        fs::remove_all(dir_, error);
    }
    ScratchStore(const ScratchStore&) = delete;
    ScratchStore& operator=(const ScratchStore&) = delete;

    const std::shared_ptr<platform::UserDefaults>& store() const { return store_; }
    const fs::path& container() const { return dir_; }

    // The demo day: the three records the main app leaves.
    void fillDemoDay() const {
        store_->set("CaloriesData", bytesOf(caloriesRecord()));
        store_->set("MacronutrientsData", bytesOf(macronutrientsRecord()));
        store_->set("WaterEntryData", bytesOf(waterRecord()));
    }

  private:
    fs::path dir_;
    std::shared_ptr<platform::UserDefaults> store_;
};

// An environment on `store` whose queues run only when drained, clock at kNow, in UTC.
struct DrainedEnvironment {
    std::shared_ptr<platform::ManualExecutor> main = std::make_shared<platform::ManualExecutor>();
    std::shared_ptr<platform::ManualExecutor> background = std::make_shared<platform::ManualExecutor>();
    widget::WidgetDataCacheReaderEnvironment environment = widget::WidgetDataCacheReaderEnvironment::defaults();

    explicit DrainedEnvironment(std::shared_ptr<platform::UserDefaults> store) {
        environment.store = std::move(store);
        environment.calendar = platform::Calendar(*platform::TimeZone::named("UTC"));
        environment.clock = std::make_shared<platform::FixedClock>(platform::Date{kNow + 30});
        environment.queues = platform::DispatchQueues{main, background};
        environment.printLine = [](std::string_view) {};
    }
    void drain() const {
        while (background->drain() + main->drain() > 0) {
        }
    }
};

}  // namespace qrv::bench
