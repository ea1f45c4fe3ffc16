#include "Host/HostEngineIntents.hpp"

#include "Platform/intents/AppIntent.hpp"
#include "Widget/Water/WaterWidgetIntent.hpp"

namespace qrv::host {

std::optional<std::vector<std::string>> intentParameterNames(const std::string& intentName) {
    // An intent made without parameters still declares them, with their defaults.
    const auto intent = platform::IntentRegistry::make(platform::IntentRequest{intentName, {}});
    if (!intent) return std::nullopt;
    std::vector<std::string> names;
    for (const auto& parameter : intent->parameters()) names.push_back(parameter.name);
    return names;
}

bool performIntent(const IntentRequest& request, const platform::Clock& clock) {
    platform::IntentRequest invocation{request.intentName, {}};
    for (const auto& [name, value] : request.parameters) invocation.parameters.push_back({name, value});
    auto intent = platform::IntentRegistry::make(invocation);
    if (!intent) return false;
    // Water logged from the host is dated by the host's clock, so a moved clock
    // logs into the day the widgets show.
    if (auto* water = dynamic_cast<widget::WaterWidgetIntent*>(intent.get())) water->withClock(clock);
    intent->perform();
    return true;
}

std::string_view waterIntentName() { return widget::WaterWidgetIntent::name; }

}  // namespace qrv::host
