#pragma once
// The painter: plays display lists onto Cairo surfaces and writes PNG (at 1×
// to 3×) or SVG. It owns the Pango context that both measures text for layout
// (textMeasurer()) and draws it, so measured and painted text agree: 72 dpi
// (a 17-point font is 17 units high), no hinting, glyph positions unrounded,
// so text scales exactly with the output scale.
//
// Icons are SVG files `<iconDirectory>/<name>.svg`, drawn with librsvg and
// fitted into the image rectangle; a tinted icon is used as a mask filled
// with the tint. A missing icon draws nothing and is reported once on stderr.
//
// A Painter is not thread-safe; use one per thread. Failures (an invalid
// scale, an oversized surface, a Cairo or libpng error) come back as
// RenderResult errors; nothing is thrown.
//
// This file and its .cpp are the only code that includes Cairo, Pango,
// librsvg or libpng.
#include "Platform/drawing/DisplayList.hpp"
#include "Platform/drawing/Layout.hpp"
#include "Platform/drawing/Recorder.hpp"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace qrv::platform {

struct RenderError {
    std::string message;
};

template <class T>
class [[nodiscard]] RenderResult {
public:
    RenderResult(T value) : v_(std::move(value)) {}            // NOLINT: implicit on purpose
    RenderResult(RenderError error) : v_(std::move(error)) {}  // NOLINT
    bool ok() const { return std::holds_alternative<T>(v_); }
    explicit operator bool() const { return ok(); }
    const T& value() const& { return std::get<T>(v_); }
    T&& value() && { return std::get<T>(std::move(v_)); }
    const std::string& error() const { return std::get<RenderError>(v_).message; }

private:
    std::variant<T, RenderError> v_;
};

// Pixels, row-major, 4 bytes each: red, green, blue, alpha (not premultiplied).
struct Raster {
    int width = 0, height = 0;
    std::vector<std::uint8_t> rgba{};

    Rgba pixel(int x, int y) const;
    friend bool operator==(const Raster&, const Raster&) = default;
};

class Painter {
public:
    static constexpr double kMinScale = 1, kMaxScale = 3;

    explicit Painter(std::filesystem::path iconDirectory = {});
    ~Painter();
    Painter(const Painter&) = delete;
    Painter& operator=(const Painter&) = delete;

    // The Pango measurer to lay out with, and the icons' natural sizes.
    const TextMeasurer& textMeasurer() const;
    const ImageSizer& imageSizer() const;

    // Layout and recording with this painter's measurer and icons.
    LayoutTree layout(const View& view, const RenderOptions& options) const;
    DisplayList record(const View& view, const RenderOptions& options) const;

    // `scale` is pixels per point, from 1 to 3.
    RenderResult<Raster> rasterize(const DisplayList& list, double scale, ColorScheme scheme) const;
    RenderResult<std::vector<std::uint8_t>> png(const DisplayList& list, double scale, ColorScheme scheme) const;
    RenderResult<std::string> svg(const DisplayList& list, ColorScheme scheme) const;

    RenderResult<std::vector<std::uint8_t>> renderPNG(const View& view, const RenderOptions& options,
                                                      double scale) const;
    RenderResult<std::string> renderSVG(const View& view, const RenderOptions& options) const;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

// How the PNG writer compresses. Rows are never filtered: widget art is flat,
// so unfiltered rows compress about 40:1 and every row filter costs more time
// than it saves. The default is the cheapest candidate measured in bench/
// (EncodePNGSettings): ISA-L's deflate at level 1 is several times quicker
// than zlib's fastest levels and its files are no bigger; zlib stays for the
// comparison and for anyone who wants the smallest files (level 9).
struct PngSettings {
    enum class Deflate { isal, zlib };
    Deflate deflate = Deflate::isal;
    int level = 1;  // ISA-L: 0 to 3; zlib: 0 to 9
};

RenderResult<std::vector<std::uint8_t>> encodePNG(const Raster& raster, const PngSettings& settings = {});
RenderResult<Raster> decodePNG(const std::vector<std::uint8_t>& data);

// Layout, recording and painting in one call, with a painter of its own.
RenderResult<std::vector<std::uint8_t>> renderPNG(const View& view, Size size, double scale, ColorScheme scheme,
                                                  WidgetFamily family = WidgetFamily::systemSmall,
                                                  const std::filesystem::path& iconDirectory = {});
RenderResult<std::string> renderSVG(const View& view, Size size, ColorScheme scheme,
                                    WidgetFamily family = WidgetFamily::systemSmall,
                                    const std::filesystem::path& iconDirectory = {});

}  // namespace qrv::platform
