// qrv-widgets serve: a live home screen and lock screen in the browser. The
// widgets follow their timelines, the host watches the store for records the
// app writes, the water button logs water, and the host's clock can be moved
// (to watch midnight pass) and set back to real time.
#include <atomic>
#include <chrono>
#include <csignal>
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "Host/Command.hpp"
#include "Host/DeviceProfile.hpp"
#include "Host/HostEngine.hpp"
#include "Host/HostEngineStoreWatcher.hpp"
#include "Host/Options.hpp"
#include "Host/RenderWidget.hpp"
#include "Host/WebServer.hpp"
#include "Platform/dispatch/MainQueue.hpp"
#include "Platform/locale/Locale.hpp"
#include "Widget/Cache/WidgetSettings.hpp"
#include "Widget/Widgets/QRVWidgets.hpp"

namespace qrv::host {
namespace {

struct ServeOptions {
    int port = 8700;
    std::string bind = "127.0.0.1";
    std::string container;
    std::string device = "phone";
    int os = 17;
    std::string scheme = "system";
    std::string locale;
};

// How often the host looks at the clock: entries switch within this much of
// their date.
constexpr auto kTickInterval = std::chrono::milliseconds(250);

std::atomic<bool> stopRequested{false};
void requestStop(int) { stopRequested = true; }

int run(const ServeOptions& options) {
    useContainer(options.container);
    std::optional<platform::ScopedLocaleOverride> locale;
    if (!options.locale.empty()) locale.emplace(platform::Locale(options.locale));

    auto environment = widget::WidgetDataCacheReaderEnvironment::defaults();
    auto clock = std::make_shared<HostClock>(environment.clock);
    environment.clock = clock;
    const auto store = widget::WidgetSettings::defaults();

    const platform::Painter painter(widgetIconDirectory());
    HostEngineOptions engineOptions;
    engineOptions.device = *DeviceProfile::named(options.device, options.os);
    HostEngine engine(widget::QRVWidgets{}.body(options.os), environment, clock, painter, engineOptions);

    StoreWatcher watcher(store->filePath(), [&engine] { engine.storeChanged(); });

    WebServerOptions serverOptions;
    serverOptions.bind = options.bind;
    serverOptions.port = options.port;
    serverOptions.state.scheme = options.scheme;
    serverOptions.state.language = platform::Locale::current().languageTag();
    WebServer server(engine, serverOptions);
    try {
        server.start();
    } catch (const WebServerError& error) {
        std::cerr << "serve: " << error.what() << '\n';
        return kExitFailure;
    }

    std::cout << "Serving the widgets on " << server.url() << '\n';
    if (isLoopback(options.bind))
        std::cout << "Listening on loopback only (" << options.bind
                  << "); --bind 0.0.0.0 shows the page to other machines\n";
    else
        std::cout << "Listening on " << options.bind << ": anyone who can reach this machine can use the page\n";
    std::cout << "Store: " << store->filePath().string() << "\nPress Ctrl-C to stop.\n" << std::flush;

    std::signal(SIGINT, requestStop);
    std::signal(SIGTERM, requestStop);
    engine.start();
    const auto main = platform::mainQueue();
    while (!stopRequested) {
        main->runUntil([] { return stopRequested.load(); }, kTickInterval);
        engine.tick();
    }
    server.stop();
    std::cout << "Stopped.\n" << std::flush;
    return kExitOk;
}

const CommandRegistration serveCommand{"serve", [](CLI::App& app) {
    auto options = std::make_shared<ServeOptions>();
    auto* command = app.add_subcommand(
        "serve",
        "Serve a live home screen and lock screen in the browser: widgets follow their timelines and the "
        "store, the water button logs water, and the host's clock can be moved");
    command->add_option("--port", options->port, "Port to listen on; 0 picks a free one (default: 8700)")
        ->type_name("PORT")
        ->check(CLI::Range(0, 65535));
    command
        ->add_option("--bind", options->bind,
                     "Address to listen on (default: 127.0.0.1, this machine only; 0.0.0.0 for every network)")
        ->type_name("ADDRESS")
        ->check(CLI::ValidIPV4 | CLI::IsMember({"localhost", "::1", "::"}));
    addContainerOption(*command, options->container);
    command->add_option("--device", options->device, "Device: phone (6.1-inch) or pad (11-inch) (default: phone)")
        ->type_name("DEVICE")
        ->check(CLI::IsMember({"phone", "pad"}));
    command->add_option("--os", options->os, "System version: 16, 17 or 18 (default: 17)")
        ->type_name("VERSION")
        ->check(CLI::IsMember({16, 17, 18}));
    command
        ->add_option("--scheme", options->scheme,
                     "Colour scheme the page starts with: light, dark or system (the browser's) (default: system)")
        ->type_name("SCHEME")
        ->check(CLI::IsMember({"light", "dark", "system"}));
    command->add_option("--locale", options->locale,
                        "Language of the texts and number formats, e.g. de_DE (default: the environment's)")
        ->type_name("LOCALE")
        ->check(CLI::Validator(
            [](std::string& text) -> std::string {
                if (!text.empty() && text.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                                            "0123456789_-.@") == std::string::npos)
                    return {};
                return "not a locale name: " + text;
            },
            "LOCALE"));
    setCommandAction(*command, "serve", [options] { return run(*options); });
}};

}  // namespace
}  // namespace qrv::host
