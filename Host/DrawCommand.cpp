// qrv-widgets draw ring: paints the progress ring alone, in the calories
// widget's colours, to a PNG or SVG, so it can be looked at in every regime
// (first lap, overage, two laps and more) without a store or a timeline.
#include "Host/Command.hpp"
#include "Platform/drawing/CairoPainter.hpp"
#include "QRVUICatalog/Colors/QRVColor.hpp"
#include "QRVUICatalog/Fonts/QRVFont.hpp"
#include "Widget/Calories/AnimatedCircularProgressView.hpp"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <string>

namespace qrv::host {
namespace {

using namespace qrv::platform;
using catalog::QRVColor;
using catalog::QRVFont;

// The calories widget lays its ring out against a 166-point-high geometry with
// an 8-point track; the track keeps that proportion at any size.
constexpr double kReferenceHeight = 166;
constexpr double kReferenceTrackWidth = 8;
constexpr double kDefaultSize = 166;
constexpr double kMaxSize = 2048;

enum class ImageFormat { png, svg };

struct RingOptions {
    std::string progress;
    std::string reverse = "0";
    std::string title;
    std::string subtitle;
    std::string scheme = "light";
    double size = kDefaultSize;
    double scale = 3;
    std::string out;
};

// A number as the widget's records may carry it: NaN (a goal of 0) and
// infinities included, so every regime can be drawn.
std::optional<double> parseNumber(const std::string& text) {
    if (text.empty()) return std::nullopt;
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    if (end != text.c_str() + text.size()) return std::nullopt;
    return value;
}

CLI::Validator numberValidator() {
    return CLI::Validator(
        [](std::string& text) -> std::string {
            if (parseNumber(text)) return {};
            return "not a number: " + text;
        },
        "NUMBER");
}

std::optional<ImageFormat> formatOf(const std::string& path) {
    std::string extension = std::filesystem::path(path).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (extension == ".png") return ImageFormat::png;
    if (extension == ".svg") return ImageFormat::svg;
    return std::nullopt;
}

// The calories widget's ring settings for a ring `size` points across.
widget::AnimatedCircularProgressViewConfig caloriesRing(double size) {
    return widget::AnimatedCircularProgressViewConfig{
        .trackBackgroundColor = QRVColor::neutralsBackground(),
        .trackForegroundColor = QRVColor::brandSecondary(),
        .trackOverageForegroundColor = QRVColor::brandPrimaryTxt(),
        .trackOverageBackgroundColor = QRVColor::brandSecondaryBG(),
        .trackWidth = size * kReferenceTrackWidth / kReferenceHeight,
        .textAccessibilityIdPrefix = "EnergyStatsView",
        .titleFont = catalog::font(QRVFont::title24Bold, true),
        .titleColor = QRVColor::neutralsPrimary(),
        .subtitleFont = catalog::font(QRVFont::caption12Medium, false),
        .subtitleColor = QRVColor::neutralsSecondary(),
    };
}

bool writeFile(const std::string& path, const void* bytes, std::size_t count) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    if (file) file.write(static_cast<const char*>(bytes), static_cast<std::streamsize>(count));
    if (file) file.close();
    if (!file) {
        std::cerr << "draw ring: cannot write " << path << '\n';
        return false;
    }
    return true;
}

int drawRing(const RingOptions& options) {
    const auto format = formatOf(options.out);
    if (!format) {
        std::cerr << "draw ring: --out must name a .png or .svg file: " << options.out << '\n';
        return kExitUsage;
    }
    const double progress = *parseNumber(options.progress);
    const double reverse = *parseNumber(options.reverse);
    const ColorScheme scheme = options.scheme == "dark" ? ColorScheme::dark : ColorScheme::light;

    // The stroke is centred on the circle that fills the ring's frame, so half
    // of it lies outside: inset the ring by that half, and as much again so
    // the ring does not touch the image's edge.
    const auto config = caloriesRing(options.size);
    const View picture =
        widget::AnimatedCircularProgressView{config, options.title, options.subtitle, progress, reverse}
            .body()
            .padding(config.trackWidth)
            .background(QRVColor::neutralsMidground2());

    RenderOptions render;
    render.size = {options.size, options.size};
    render.colorScheme = scheme;
    const Painter painter;
    if (*format == ImageFormat::svg) {
        const auto svg = painter.renderSVG(picture, render);
        if (!svg) {
            std::cerr << "draw ring: " << svg.error() << '\n';
            return kExitFailure;
        }
        return writeFile(options.out, svg.value().data(), svg.value().size()) ? kExitOk : kExitFailure;
    }
    const auto png = painter.renderPNG(picture, render, options.scale);
    if (!png) {
        std::cerr << "draw ring: " << png.error() << '\n';
        return kExitFailure;
    }
    return writeFile(options.out, png.value().data(), png.value().size()) ? kExitOk : kExitFailure;
}

void addRing(CLI::App& draw) {
    auto options = std::make_shared<RingOptions>();
    auto* ring = draw.add_subcommand(
        "ring",
        "Draw the progress ring in the calories widget's colours: up to 1 one lap, between 1 and 2 the "
        "first lap plus hatched overage, from 2 the whole ring hatched");
    ring->add_option("--progress", options->progress, "Fraction of a turn; 1 is the goal (nan is accepted)")
        ->type_name("P")
        ->required()
        ->check(numberValidator());
    ring->add_option("--reverse", options->reverse,
                     "Fraction of a turn drawn counter-clockwise for exercise (default: 0)")
        ->type_name("R")
        ->check(numberValidator());
    ring->add_option("--title", options->title, "Text in the middle, e.g. the energy left")->type_name("T");
    ring->add_option("--subtitle", options->subtitle, "Text under the title")->type_name("S");
    ring->add_option("--scheme", options->scheme, "Colour scheme: light or dark (default: light)")
        ->type_name("SCHEME")
        ->check(CLI::IsMember({"light", "dark"}));
    ring->add_option("--size", options->size, "Side of the image in points (default: 166)")
        ->type_name("N")
        ->check(CLI::Range(1.0, kMaxSize));
    ring->add_option("--scale", options->scale, "Pixels per point for PNG, 1 to 3 (default: 3)")
        ->type_name("X")
        ->check(CLI::Range(Painter::kMinScale, Painter::kMaxScale));
    ring->add_option("--out", options->out, "The image to write: FILE.png or FILE.svg")
        ->type_name("FILE")
        ->required();
    setCommandAction(*ring, "draw ring", [options] { return drawRing(*options); });
}

const CommandRegistration drawCommand{"draw", [](CLI::App& app) {
                                          auto* draw = app.add_subcommand(
                                              "draw", "Draw one of the widgets' shared views to an image");
                                          draw->require_subcommand(1);
                                          addRing(*draw);
                                      }};

}  // namespace
}  // namespace qrv::host
