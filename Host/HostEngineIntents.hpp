#pragma once
// Running the widgets' intents for the live host. Kept apart from the drawing
// code: a drawn button and the intent registry each have their own idea of an
// invocation, and the host speaks of intents only by name and named texts.
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Platform/time/Clock.hpp"

namespace qrv::host {

// An intent to run: its name and its parameters' texts by name.
struct IntentRequest {
    std::string intentName;
    std::vector<std::pair<std::string, std::string>> parameters;

    std::optional<std::string> parameter(std::string_view name) const {
        for (const auto& [key, value] : parameters)
            if (key == name) return value;
        return std::nullopt;
    }
};

// The parameter names an intent declares, in order; nothing for an intent the
// registry does not know.
std::optional<std::vector<std::string>> intentParameterNames(const std::string& intentName);

// Makes the intent through the registry and performs it; the water intent logs
// at `clock`'s now. False when no intent has that name.
bool performIntent(const IntentRequest& request, const platform::Clock& clock);

// The water widget's intent, whose texts the host checks before running it.
std::string_view waterIntentName();

}  // namespace qrv::host
