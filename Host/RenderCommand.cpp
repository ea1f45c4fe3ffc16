// qrv-widgets render --out DIR: draws every widget the bundle offers, in every
// family it supports, from the timelines its providers answer, into DIR as PNG
// and SVG with manifest.json and an index.html gallery. Progress goes to
// standard error, one line per image; the last line on standard output is the
// path of index.html.
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "Host/Command.hpp"
#include "Host/DeviceProfile.hpp"
#include "Host/Options.hpp"
#include "Host/RenderGallery.hpp"
#include "Host/RenderWidget.hpp"
#include "Platform/drawing/WidgetRenderingMode.hpp"
#include "Platform/locale/Locale.hpp"
#include "Widget/Widgets/QRVWidgets.hpp"

namespace qrv::host {
namespace {

struct RenderOptions {
    std::string out;
    std::vector<std::string> widgets;
    std::vector<std::string> families;
    std::string scheme = "both";
    std::string device = "phone";
    int os = 17;
    double scale = 2;
    std::string now;
    std::string container;
    std::string locale;
    std::vector<std::string> appearances;
    std::string tint;
    bool osGiven = false;
    double wait = kDefaultWaitSeconds;
};

std::vector<platform::ColorScheme> schemes(const std::string& scheme) {
    if (scheme == "light") return {platform::ColorScheme::light};
    if (scheme == "dark") return {platform::ColorScheme::dark};
    return {platform::ColorScheme::light, platform::ColorScheme::dark};
}

int run(const RenderOptions& options) {
    useContainer(options.container);
    std::optional<platform::ScopedLocaleOverride> locale;
    if (!options.locale.empty()) locale.emplace(platform::Locale(options.locale));
    auto environment = makeEnvironment(options.now);
    // Standard output carries the gallery's path alone; what the widgets'
    // cache reader prints goes with the progress.
    environment.printLine = [](std::string_view line) { std::cerr << line << '\n'; };

    GalleryOptions gallery;
    gallery.out = options.out;
    if (!options.appearances.empty()) {
        // Each appearance once, in the order given.
        gallery.appearances.clear();
        for (const auto& name : options.appearances) {
            const auto appearance = *appearanceNamed(name);
            if (std::find(gallery.appearances.begin(), gallery.appearances.end(), appearance) ==
                gallery.appearances.end())
                gallery.appearances.push_back(appearance);
        }
    }
    if (!options.tint.empty()) gallery.tint = *platform::parseHexColor(options.tint);
    // The tinted home screen came with system 18: asked for without a
    // version, it is drawn there.
    int os = options.os;
    if (!options.osGiven && std::find(gallery.appearances.begin(), gallery.appearances.end(),
                                      Appearance::tinted) != gallery.appearances.end())
        os = 18;
    gallery.device = *DeviceProfile::named(options.device, os);
    gallery.schemes = schemes(options.scheme);
    gallery.scale = options.scale;
    gallery.wait = waitDuration(options.wait);
    gallery.language = platform::Locale::current().languageCode();
    for (const auto& family : options.families) gallery.families.push_back(parsedFamily(family));

    const auto widgets = widget::QRVWidgets{}.body(os);
    for (const auto& name : options.widgets) {
        bool offered = false;
        for (const auto& widget : widgets) offered = offered || namesWidget(widget, name);
        if (!offered) {
            std::cerr << "render: the widget " << name << " is not offered on system version " << os << '\n';
            return kExitUsage;
        }
        gallery.widgets.push_back(name);
    }

    try {
        const auto result = renderGallery(widgets, gallery, environment, std::cerr);
        std::cout << std::filesystem::absolute(result.index).lexically_normal().string() << '\n' << std::flush;
        return kExitOk;
    } catch (const NothingToDraw& error) {
        std::cerr << "render: " << error.what() << '\n';
        return kExitUsage;
    }
}

const CommandRegistration renderCommand{"render", [](CLI::App& app) {
    auto options = std::make_shared<RenderOptions>();
    auto* command = app.add_subcommand(
        "render",
        "Draw every widget in every family it supports, from its provider's timeline (now and at the next "
        "midnight), to PNG and SVG with manifest.json and an index.html gallery");
    command->add_option("--out", options->out, "Directory to write the gallery into (created when missing)")
        ->type_name("DIR")
        ->required();
    const std::vector<std::string> widgetNames{"water", "calories", "macronutrients"};
    command
        ->add_option("--widget", options->widgets,
                     "Only this widget (repeatable): " + allowedList(widgetNames) + ", or its kind")
        ->type_name("WIDGET")
        ->check(CLI::Validator(
            [widgetNames](std::string& name) -> std::string {
                for (const auto& widget : widget::QRVWidgets{}.body(widget::kInteractiveWidgetsSystemVersion))
                    if (namesWidget(widget, name)) return {};
                return "unknown widget " + name + "; allowed: " + allowedList(widgetNames);
            },
            "WIDGET"));
    std::vector<std::string_view> familyNames;
    for (auto family : platform::kAllWidgetFamilies) familyNames.push_back(platform::name(family));
    command->add_option("--family", options->families, "Only this family (repeatable): " + allowedList(familyNames))
        ->type_name("FAMILY")
        ->check(CLI::Validator(
            [familyNames](std::string& text) -> std::string {
                if (platform::widgetFamily(text)) return {};
                return "unknown family " + text + "; allowed: " + allowedList(familyNames);
            },
            "FAMILY"));
    command->add_option("--scheme", options->scheme, "Colour scheme: light, dark or both (default: both)")
        ->type_name("SCHEME")
        ->check(CLI::IsMember({"light", "dark", "both"}));
    command->add_option("--device", options->device, "Device: phone (6.1-inch) or pad (11-inch) (default: phone)")
        ->type_name("DEVICE")
        ->check(CLI::IsMember({"phone", "pad"}));
    command->add_option("--os", options->os, "System version: 16, 17 or 18 (default: 17; 18 with --appearance tinted)")
        ->type_name("VERSION")
        ->check(CLI::IsMember({16, 17, 18}))
        ->each([options](const std::string&) { options->osGiven = true; });
    std::vector<std::string> appearanceNames;
    for (auto a : kAllAppearances) appearanceNames.emplace_back(appearanceName(a));
    command
        ->add_option("--appearance", options->appearances,
                     "Where the widgets are seen (repeatable): default (the home screen, and the lock-screen "
                     "families), tinted (the tinted home screen), standby, standby-night or lock-screen "
                     "(default: default)")
        ->type_name("APPEARANCE")
        ->check(CLI::IsMember(appearanceNames));
    command->add_option("--tint", options->tint, "The tinted home screen's colour, #RRGGBB (default: #f2c24d, a warm gold)")
        ->type_name("COLOR")
        ->check(CLI::Validator(
            [](std::string& text) -> std::string {
                if (platform::parseHexColor(text)) return {};
                return "not a colour (#RRGGBB): " + text;
            },
            "COLOR"));
    command->add_option("--scale", options->scale, "PNG pixels per point: 1, 2 or 3 (default: 2)")
        ->type_name("N")
        ->check(CLI::IsMember({1, 2, 3}));
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
    addNowOption(*command, options->now);
    addContainerOption(*command, options->container);
    addWaitOption(*command, options->wait);
    setCommandAction(*command, "render", [options] { return run(*options); });
}};

}  // namespace
}  // namespace qrv::host
