#pragma once
// Options several qrv-widgets commands share: which app-group container, what
// time it is, which widget family, where the answer goes.
#include <CLI/CLI.hpp>
#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "Platform/time/Date.hpp"
#include "Platform/timeline/WidgetFamily.hpp"
#include "Widget/Cache/WidgetDataCacheReaderEnvironment.hpp"

namespace qrv::host {

// --container DIR: an existing directory.
void addContainerOption(CLI::App& command, std::string& container);
// Points the shared store at `container` (nothing to do when empty). Must run
// before anything opens the store. Says on standard error when the container's
// store cannot be opened and the standard defaults stand in for it.
void useContainer(const std::string& container);

// --now TIME: ISO 8601, local time when no offset is given; checked while parsing.
void addNowOption(CLI::App& command, std::string& now);
// The moment --now names; nothing when it was not given.
std::optional<platform::Date> parsedNow(const std::string& now);
// The phone's environment for the run, its clock stopped at --now when given.
widget::WidgetDataCacheReaderEnvironment makeEnvironment(const std::string& now);

// --family FAMILY: one of the family names; systemSmall unless given.
void addFamilyOption(CLI::App& command, std::string& family);
platform::WidgetFamily parsedFamily(const std::string& family);

// --wait SECONDS: how long to wait for a provider that may never answer.
inline constexpr double kDefaultWaitSeconds = 2.0;
void addWaitOption(CLI::App& command, double& seconds);
std::chrono::milliseconds waitDuration(double seconds);

// --out FILE: where the answer goes; standard output when empty.
void addOutOption(CLI::App& command, std::string& out);
// Writes `text` and a newline to `out` (or standard output). On failure says why
// on standard error and answers false.
bool writeOutput(const std::string& out, std::string_view text);

// `text` as a JSON string, quoted and escaped as the platform's encoder does.
std::string jsonString(std::string_view text);

// "a, b or c", for messages that list the allowed values.
template <class Range>
std::string allowedList(const Range& values) {
    std::string text;
    std::size_t index = 0, count = std::size(values);
    for (const auto& value : values) {
        if (index > 0) text += index + 1 == count ? " or " : ", ";
        text += std::string_view(value);
        ++index;
    }
    return text;
}

}  // namespace qrv::host
