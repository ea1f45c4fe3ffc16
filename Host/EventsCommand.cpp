// qrv-widgets events: the widget fetch events recorded in the shared store, as
// a JSON array of the events that decode, oldest first.
#include <iostream>
#include <memory>
#include <string>

#include "Host/Command.hpp"
#include "Host/Options.hpp"
#include "Widget/Cache/WidgetSettings.hpp"
#include "Widget/Providers/WidgetFetchEvent.hpp"

namespace qrv::host {
namespace {

struct EventsOptions {
    std::string container;
    std::string out;
};

int run(const EventsOptions& options) {
    useContainer(options.container);
    const auto store = widget::WidgetSettings::defaults();
    const auto key = widget::WidgetStoreKeys::widgetEvents;
    std::string json = "[";
    const auto stored = store->object(key);
    if (stored && !stored->arrayValue()) {
        std::cerr << key << " holds " << stored->typeName() << ", not a list of events\n";
    } else if (stored) {
        const auto& elements = *stored->arrayValue();
        bool first = true;
        for (std::size_t index = 0; index < elements.size(); ++index) {
            const auto* blob = elements[index].dataValue();
            if (!blob) {
                std::cerr << key << "[" << index << "] is " << elements[index].typeName() << ", not data\n";
                continue;
            }
            const auto event = widget::WidgetFetchEvent::decode(*blob);
            if (!event) {
                std::cerr << key << "[" << index << "] does not decode: " << event.error().describe() << '\n';
                continue;
            }
            const auto encoded = event.value().encode();
            if (!first) json += ',';
            json.append(encoded.begin(), encoded.end());
            first = false;
        }
    }
    json += ']';
    return writeOutput(options.out, json) ? kExitOk : kExitFailure;
}

const CommandRegistration eventsCommand{
    "events", [](CLI::App& app) {
        auto options = std::make_shared<EventsOptions>();
        auto* command = app.add_subcommand("events",
                                           "Print the recorded widget fetch events (widget_events) as a "
                                           "JSON array; elements that do not decode "
                                           "are named on standard error and left out");
        addContainerOption(*command, options->container);
        addOutOption(*command, options->out);
        setCommandAction(*command, "events", [options] { return run(*options); });
    }};

}  // namespace
}  // namespace qrv::host
