// qrv-widgets placeholder | snapshot | timeline --widget NAME: builds the widget's
// provider as the widget does, asks it as the widget host would, and writes the
// answer as JSON.
#include <array>
#include <functional>
#include <iostream>
#include <string>
#include <type_traits>
#include <vector>

#include "Host/Command.hpp"
#include "Host/Options.hpp"
#include "Host/ProviderRequest.hpp"
#include "Platform/coding/JSONWriter.hpp"
#include "Widget/Providers/CaloriesWidgetProvider.hpp"
#include "Widget/Providers/MacronutrientsWidgetProvider.hpp"
#include "Widget/Providers/WaterWidgetProvider.hpp"

namespace qrv::host {
namespace {

enum class Request { placeholder, snapshot, timeline };

struct RequestSettings {
    platform::TimelineProviderContext context;
    std::chrono::milliseconds wait{};
};

// The answer's JSON, or nothing when the provider did not answer in time.
using AskProvider =
    std::function<std::optional<std::string>(Request, const RequestSettings&, std::string_view widget)>;
using MakeAsker = std::function<AskProvider(const widget::WidgetDataCacheReaderEnvironment&)>;

template <class Entry>
std::string entryJSON(const Entry& entry) {
    const auto encoded = entry.encode();
    return std::string(encoded.begin(), encoded.end());
}

std::string header(std::string_view widget, const platform::TimelineProviderContext& context) {
    return "{\"widget\":" + jsonString(widget) + ",\"family\":" + jsonString(platform::name(context.family));
}

template <class Entry>
std::string timelineJSON(std::string_view widget, const platform::TimelineProviderContext& context,
                         const platform::Timeline<Entry>& timeline) {
    std::string json =
        header(widget, context) + ",\"policy\":" + jsonString(platform::name(timeline.policy.kind()));
    if (const auto reload = timeline.policy.date()) {
        platform::JSONWriter date;
        date.date(*reload);
        json += ",\"reloadDate\":" + date.text();
    }
    json += ",\"entries\":[";
    for (std::size_t i = 0; i < timeline.entries.size(); ++i) {
        if (i > 0) json += ',';
        json += entryJSON(timeline.entries[i]);
    }
    return json + "]}";
}

// How the host asks any provider; `make` builds it as its widget definition does.
template <class Provider>
MakeAsker asker(std::function<Provider(const widget::WidgetDataCacheReaderEnvironment&)> make) {
    return [make](const widget::WidgetDataCacheReaderEnvironment& environment) -> AskProvider {
        auto provider = std::make_shared<Provider>(make(environment));
        return [provider, background = environment.queues.background](
                   Request request, const RequestSettings& settings,
                   std::string_view widget) -> std::optional<std::string> {
            const auto& context = settings.context;
            switch (request) {
                case Request::placeholder:
                    return header(widget, context) +
                           ",\"entry\":" + entryJSON(provider->placeholder(context)) + "}";
                case Request::snapshot:
                    if (auto entry = askSnapshot(*provider, context, settings.wait, background.get()))
                        return header(widget, context) + ",\"entry\":" + entryJSON(*entry) + "}";
                    return std::nullopt;
                case Request::timeline:
                    if (auto timeline = askTimeline(*provider, context, settings.wait, background.get()))
                        return timelineJSON(widget, context, *timeline);
                    return std::nullopt;
            }
            return std::nullopt;
        };
    };
}

struct HostedWidget {
    std::string_view name;  // as given to --widget
    MakeAsker makeAsker;
};

// The widgets the host can ask, one row each. A new widget needs only its row here.
const std::vector<HostedWidget>& hostedWidgets() {
    static const std::vector<HostedWidget> widgets{
        {"calories", asker<widget::CaloriesWidgetProvider>([](const auto& environment) {
             return widget::CaloriesWidgetProvider::make(environment);
         })},
        {"macronutrients", asker<widget::MacronutrientsWidgetProvider>([](const auto& environment) {
             return widget::MacronutrientsWidgetProvider::make(environment);
         })},
        {"water", asker<widget::WaterWidgetProvider>([](const auto& environment) {
             return widget::WaterWidgetProvider::make(environment);
         })},
    };
    return widgets;
}

std::vector<std::string_view> widgetNames() {
    std::vector<std::string_view> names;
    for (const auto& hosted : hostedWidgets()) names.push_back(hosted.name);
    return names;
}

struct ProviderOptions {
    std::string widget;
    std::string family;
    std::string now;
    std::string container;
    std::string out;
    double wait = kDefaultWaitSeconds;
};

constexpr std::string_view requestName(Request request) {
    constexpr std::array<std::string_view, 3> names{"placeholder", "snapshot", "timeline"};
    return names[static_cast<std::size_t>(request)];
}

int run(Request request, const ProviderOptions& options) {
    useContainer(options.container);
    const auto environment = makeEnvironment(options.now);
    const HostedWidget* hosted = nullptr;
    for (const auto& each : hostedWidgets())
        if (each.name == options.widget) hosted = &each;
    if (!hosted) {  // the option's check has already refused it; kept for safety
        std::cerr << "--widget: unknown widget " << options.widget
                  << "; allowed: " << allowedList(widgetNames()) << '\n';
        return kExitUsage;
    }
    const auto ask = hosted->makeAsker(environment);
    const RequestSettings settings{platform::TimelineProviderContext::forFamily(parsedFamily(options.family)),
                                   waitDuration(options.wait)};
    const auto answer = ask(request, settings, hosted->name);
    if (!answer) {
        std::cerr << "no entry came from the " << hosted->name << " provider's " << requestName(request)
                  << " (it finished without answering, or took longer than " << options.wait << " s)\n";
        return kExitNoEntry;
    }
    return writeOutput(options.out, *answer) ? kExitOk : kExitFailure;
}

void setup(CLI::App& app, Request request, std::string description) {
    auto options = std::make_shared<ProviderOptions>();
    auto* command = app.add_subcommand(std::string(requestName(request)), std::move(description));
    const auto allowed = allowedList(widgetNames());
    command->add_option("--widget", options->widget, "The widget to ask: " + allowed)
        ->required()
        ->type_name("WIDGET")
        ->check(CLI::Validator(
            [allowed](std::string& name) -> std::string {
                for (const auto& hosted : hostedWidgets())
                    if (hosted.name == name) return {};
                return "unknown widget " + name + "; allowed: " + allowed;
            },
            ""));
    addFamilyOption(*command, options->family);
    addNowOption(*command, options->now);
    addContainerOption(*command, options->container);
    addOutOption(*command, options->out);
    if (request != Request::placeholder) addWaitOption(*command, options->wait);
    setCommandAction(*command, std::string(requestName(request)), [request, options] { return run(request, *options); });
}

const CommandRegistration placeholderCommand{
    "placeholder", [](CLI::App& app) {
        setup(app, Request::placeholder,
              "Print the widget's placeholder entry (no store access) as {widget, family, entry}");
    }};
const CommandRegistration snapshotCommand{
    "snapshot", [](CLI::App& app) {
        setup(app, Request::snapshot,
              "Ask the widget's provider for a snapshot and print it as {widget, family, entry}; exit 3 when "
              "none comes");
    }};
const CommandRegistration timelineCommand{"timeline", [](CLI::App& app) {
                                              setup(app, Request::timeline,
                                                    "Ask the widget's provider for a timeline and print it "
                                                    "as {widget, family, policy, entries}; exit 3 "
                                                    "when none comes");
                                          }};

}  // namespace
}  // namespace qrv::host
