#pragma once
// The store shared by the main app and the extension, opened once per process.
// Every cache reader and writer uses this one object unless a test hands it another.
#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>

#include "Platform/store/UserDefaults.hpp"

namespace qrv::widget {

// Keys the extension reads and writes besides the installed flags (installedKey()).
namespace WidgetStoreKeys {
inline constexpr std::string_view caloriesData = "CaloriesData";
inline constexpr std::string_view macronutrientsData = "MacronutrientsData";
inline constexpr std::string_view waterEntryData = "WaterEntryData";
inline constexpr std::string_view waterInteractiveData = "WaterInteractiveData";
inline constexpr std::string_view widgetEvents = "widget_events";
// Set when a completion-style read outlives the reader that started it.
inline constexpr std::string_view unknownWidgetInstalled = "UnknownWidgetInstalled";
}  // namespace WidgetStoreKeys

class WidgetSettings {
public:
    static constexpr std::string_view widgetsSuiteName = "group.com.qrv.widgets";

    // The shared store: the suite in the app-group container, or the process's
    // standard defaults when the container cannot be opened. Created on first use,
    // thread-safely, and kept for the life of the process.
    static std::shared_ptr<platform::UserDefaults> defaults();

    // Chooses the app-group container (the host's --container) instead of the one
    // from the environment. Must come before the first defaults(); later calls throw
    // std::logic_error, since readers may already hold the store.
    static void useContainer(std::filesystem::path containerDir);

    // What defaults() opens, without keeping it: the suite in containerDir (or in
    // the environment's container), else the standard defaults. Never null.
    static std::shared_ptr<platform::UserDefaults> open(const std::optional<std::filesystem::path>& containerDir);
};

}  // namespace qrv::widget
