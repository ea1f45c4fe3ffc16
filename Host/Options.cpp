#include "Host/Options.hpp"

#include <cmath>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <memory>
#include <vector>

#include "Platform/coding/JSONWriter.hpp"
#include "Platform/time/ISO8601.hpp"
#include "Widget/Cache/WidgetSettings.hpp"

namespace qrv::host {

std::string jsonString(std::string_view text) {
    std::string out;
    platform::JSONWriter::appendQuoted(out, text);
    return out;
}

void addContainerOption(CLI::App& command, std::string& container) {
    command
        .add_option("--container", container,
                    "App-group container directory holding Library/Preferences/group.com.qrv.widgets.plist "
                    "(default: $QRV_APP_GROUP_CONTAINER, else the user's data directory)")
        ->type_name("DIR")
        ->check(CLI::ExistingDirectory.description(""));
}

void useContainer(const std::string& container) {
    if (container.empty()) return;
    widget::WidgetSettings::useContainer(container);
    const auto store = widget::WidgetSettings::defaults();
    const auto expected = platform::suitePreferencesPath(container, widget::WidgetSettings::widgetsSuiteName);
    if (store->filePath() != expected)
        std::cerr << "the container " << container << " cannot be used; the store is "
                  << store->filePath().string() << " instead\n";
}

void addNowOption(CLI::App& command, std::string& now) {
    command
        .add_option("--now", now,
                    "The moment the run takes as now, ISO 8601 (2024-03-09T15:00, 2024-03-09T15:00:00-05:00, "
                    "2024-03-09T20:00Z); local time when no offset is given. Default: the system clock")
        ->type_name("TIME")
        ->check(CLI::Validator(
            [](std::string& text) -> std::string {
                std::string error;
                if (platform::tryParseISO8601(text, platform::Calendar::current(), &error)) return {};
                return "not an ISO 8601 time (" + error + "): " + text;
            },
            ""));
}

std::optional<platform::Date> parsedNow(const std::string& now) {
    if (now.empty()) return std::nullopt;
    return platform::parseISO8601(now, platform::Calendar::current());
}

widget::WidgetDataCacheReaderEnvironment makeEnvironment(const std::string& now) {
    auto environment = widget::WidgetDataCacheReaderEnvironment::defaults();
    if (const auto date = parsedNow(now)) environment.clock = std::make_shared<platform::FixedClock>(*date);
    return environment;
}

void addFamilyOption(CLI::App& command, std::string& family) {
    std::vector<std::string_view> names;
    for (auto each : platform::kAllWidgetFamilies) names.push_back(platform::name(each));
    const auto allowed = allowedList(names);
    command.add_option("--family", family, "Widget family: " + allowed + " (default: systemSmall)")
        ->type_name("FAMILY")
        ->check(CLI::Validator(
            [allowed](std::string& text) -> std::string {
                if (platform::widgetFamily(text)) return {};
                return "unknown family " + text + "; allowed: " + allowed;
            },
            ""));
}

platform::WidgetFamily parsedFamily(const std::string& family) {
    if (family.empty()) return platform::WidgetFamily::systemSmall;
    return platform::widgetFamily(family).value_or(platform::WidgetFamily::systemSmall);
}

void addWaitOption(CLI::App& command, double& seconds) {
    command
        .add_option("--wait", seconds,
                    "Seconds to wait for the provider's answer; a provider that finds nothing current never "
                    "answers (default: 2)")
        ->type_name("SECONDS")
        ->check(CLI::Range(0.0, 3600.0));
}

std::chrono::milliseconds waitDuration(double seconds) {
    return std::chrono::milliseconds(static_cast<long long>(std::llround(seconds * 1000.0)));
}

void addOutOption(CLI::App& command, std::string& out) {
    command.add_option("--out", out, "Write the answer to FILE instead of standard output")
        ->type_name("FILE");
}

bool writeOutput(const std::string& out, std::string_view text) {
    if (out.empty()) {
        std::cout << text << '\n' << std::flush;
        return true;
    }
    std::ofstream file(out, std::ios::binary | std::ios::trunc);
    if (file) file << text << '\n';
    if (file) file.close();
    if (!file) {
        std::cerr << "cannot write " << out << '\n';
        return false;
    }
    return true;
}

}  // namespace qrv::host
