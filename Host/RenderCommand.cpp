// qrv-widgets render --out DIR: draws every widget the bundle offers, in every
// family it supports, from the timelines its providers answer, into DIR as PNG
// and SVG with manifest.json and an index.html gallery. Repeated --device,
// --os, --locale, --scheme and --appearance draw their product (the render
// matrix) into one gallery. Progress goes to standard error, one line per image (on a terminal,
// one updating line); the last line on standard output is the path of
// index.html.
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <functional>
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

// Whether a value is allowed on an axis: the error, or empty. A fixed set
// describes itself as "{a,b}", as help and completion show sets.
struct AxisCheck {
    std::function<std::string(const std::string&)> test;
    std::string description;
};

// A cell of the render matrix as the command line names it.
struct MatrixCell {
    std::string device = "phone";
    int os = 17;
    std::string locale;
    std::vector<platform::ColorScheme> schemes;
    std::filesystem::path folder;
};

// One axis of the render matrix: its option, the values it allows, how a
// value sets a cell, and whether its values get sub-folders of their own
// (when more than one is chosen). Adding an axis is adding an entry here and
// the cell field it sets.
struct MatrixAxis {
    std::string option;
    std::string typeName;
    std::string help;
    std::string defaultValue;
    AxisCheck check;
    std::function<void(MatrixCell&, const std::string&)> apply;
    std::optional<std::string> folderPrefix;  // none: no sub-folders
};

AxisCheck oneOf(std::vector<std::string> allowed) {
    std::string members;
    for (const auto& name : allowed) members += (members.empty() ? "" : ",") + name;
    return {[allowed](const std::string& value) -> std::string {
                if (std::find(allowed.begin(), allowed.end(), value) != allowed.end()) return {};
                std::string list;
                for (const auto& name : allowed) list += (list.empty() ? "" : ", ") + name;
                return value + " is not one of " + list;
            },
            "{" + members + "}"};
}

const std::vector<MatrixAxis>& matrixAxes() {
    static const std::vector<MatrixAxis> axes{
        {"--device", "DEVICE", "Device: phone (6.1-inch) or pad (11-inch), repeatable (default: phone)", "phone",
         oneOf({"phone", "pad"}), [](MatrixCell& cell, const std::string& value) { cell.device = value; },
         ""},
        {"--os", "VERSION", "System version: 16, 17 or 18, repeatable (default: 17; 18 with --appearance tinted)", "17",
         oneOf({"16", "17", "18"}),
         [](MatrixCell& cell, const std::string& value) { cell.os = std::stoi(value); }, "os"},
        {"--locale", "LOCALE",
         "Language of the texts and number formats, e.g. de_DE, repeatable (default: the environment's)", "",
         {[](const std::string& text) -> std::string {
              if (!text.empty() && text.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                                          "0123456789_-.@") == std::string::npos)
                  return {};
              return "not a locale name: " + text;
          },
          ""},
         [](MatrixCell& cell, const std::string& value) { cell.locale = value; }, ""},
        {"--scheme", "SCHEME", "Colour scheme: light, dark or both, repeatable (default: both)", "both",
         oneOf({"light", "dark", "both"}),
         [](MatrixCell& cell, const std::string& value) {
             if (value != "dark") cell.schemes.push_back(platform::ColorScheme::light);
             if (value != "light") cell.schemes.push_back(platform::ColorScheme::dark);
         },
         std::nullopt},
    };
    return axes;
}

struct RenderOptions {
    std::string out;
    std::vector<std::string> widgets;
    std::vector<std::string> families;
    std::vector<std::vector<std::string>> axisValues = std::vector<std::vector<std::string>>(matrixAxes().size());
    double scale = 2;
    std::string now;
    std::string container;
    std::vector<std::string> appearances;
    std::string tint;
    double wait = kDefaultWaitSeconds;
    unsigned jobs = 0;
};

// The product of the chosen values, axis by axis in order; a value repeated
// on the command line counts once.
std::vector<MatrixCell> matrixCells(const RenderOptions& options) {
    std::vector<MatrixCell> cells{MatrixCell{}};
    for (std::size_t a = 0; a < matrixAxes().size(); ++a) {
        const auto& axis = matrixAxes()[a];
        std::vector<std::string> values;
        for (const auto& value : options.axisValues[a])
            if (std::find(values.begin(), values.end(), value) == values.end()) values.push_back(value);
        if (values.empty()) values.push_back(axis.defaultValue);
        // The tinted home screen came with system 18: asked for without a
        // version, it is drawn there.
        if (options.axisValues[a].empty() && axis.option == "--os" &&
            std::find(options.appearances.begin(), options.appearances.end(), "tinted") != options.appearances.end())
            values = {"18"};
        std::vector<MatrixCell> product;
        for (const auto& cell : cells)
            for (const auto& value : values) {
                auto next = cell;
                if (!value.empty()) axis.apply(next, value);
                if (axis.folderPrefix && values.size() > 1) next.folder /= *axis.folderPrefix + value;
                product.push_back(std::move(next));
            }
        cells = std::move(product);
    }
    return cells;
}

int run(const RenderOptions& options) {
    useContainer(options.container);
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
    gallery.scale = options.scale;
    gallery.wait = waitDuration(options.wait);
    gallery.language = platform::Locale::current().languageCode();
    gallery.workers = options.jobs;
    gallery.progressLine = ::isatty(STDERR_FILENO) == 1;
    for (const auto& family : options.families) gallery.families.push_back(parsedFamily(family));
    gallery.widgets = options.widgets;

    std::vector<GalleryCell> cells;
    for (const auto& matrixCell : matrixCells(options)) {
        GalleryCell cell;
        cell.device = *DeviceProfile::named(matrixCell.device, matrixCell.os);
        cell.locale = matrixCell.locale;
        cell.schemes = matrixCell.schemes;
        cell.folder = matrixCell.folder;
        cell.widgets = widget::QRVWidgets{}.body(matrixCell.os);
        for (const auto& name : options.widgets)
            if (std::none_of(cell.widgets.begin(), cell.widgets.end(),
                             [&](const auto& widget) { return namesWidget(widget, name); })) {
                std::cerr << "render: the widget " << name << " is not offered on system version " << matrixCell.os
                          << '\n';
                return kExitUsage;
            }
        cells.push_back(std::move(cell));
    }

    try {
        const auto result = renderMatrix(cells, gallery, environment, std::cerr);
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
    for (std::size_t a = 0; a < matrixAxes().size(); ++a) {
        const auto& axis = matrixAxes()[a];
        command->add_option(axis.option, options->axisValues[a], axis.help)
            ->type_name(axis.typeName)
            ->check(CLI::Validator([test = axis.check.test](std::string& value) { return test(value); },
                                   axis.check.description));
    }
    std::vector<std::string> appearanceNames;
    for (auto a : kAllAppearances) appearanceNames.emplace_back(appearanceName(a));
    command
        ->add_option("--appearance", options->appearances,
                     "Where the widgets are seen (repeatable): default (the home screen, and the lock-screen "
                     "families), tinted (the tinted home screen, system 18), standby, standby-night or lock-screen "
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
    command->add_option("--jobs", options->jobs, "Threads that paint and encode the images (default: one per core)")
        ->type_name("N")
        ->check(CLI::Range(1u, 256u));
    addNowOption(*command, options->now);
    addContainerOption(*command, options->container);
    addWaitOption(*command, options->wait);
    setCommandAction(*command, "render", [options] { return run(*options); });
}};

}  // namespace
}  // namespace qrv::host
