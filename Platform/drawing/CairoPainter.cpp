// Index:
//   [Handles]   RAII owners for Cairo, Pango and librsvg objects
//   [Text]      the shared Pango context and the measurer built on it
//   [Icons]     SVG icons by name, loaded once
//   [Player]    display-list ops onto a cairo_t
//   [Outputs]   raster, SVG (PNG files are written in PngCodec.cpp)
#include "Platform/drawing/CairoPainter.hpp"
#include "Platform/drawing/Overloaded.hpp"

#include <cairo-svg.h>
#include <cairo.h>
#include <librsvg/rsvg.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <map>
#include <set>
#include <tuple>

namespace qrv::platform {
namespace {

// ---------------------------------------------------------------------------
// [Handles]
// ---------------------------------------------------------------------------

struct GObjectDeleter {
    void operator()(void* p) const {
        if (p) g_object_unref(p);
    }
};
template <class T>
using GObjectPtr = std::unique_ptr<T, GObjectDeleter>;

struct CairoDeleter {
    void operator()(cairo_t* c) const { cairo_destroy(c); }
    void operator()(cairo_surface_t* s) const { cairo_surface_destroy(s); }
    void operator()(cairo_pattern_t* p) const { cairo_pattern_destroy(p); }
    void operator()(cairo_font_options_t* o) const { cairo_font_options_destroy(o); }
};
using CairoPtr = std::unique_ptr<cairo_t, CairoDeleter>;
using SurfacePtr = std::unique_ptr<cairo_surface_t, CairoDeleter>;
using PatternPtr = std::unique_ptr<cairo_pattern_t, CairoDeleter>;

struct FontDescriptionDeleter {
    void operator()(PangoFontDescription* d) const { pango_font_description_free(d); }
};
using FontDescriptionPtr = std::unique_ptr<PangoFontDescription, FontDescriptionDeleter>;

// ---------------------------------------------------------------------------
// [Text]
// ---------------------------------------------------------------------------

PangoWeight pangoWeight(FontWeight w) {
    switch (w) {
        case FontWeight::ultraLight: return PANGO_WEIGHT_ULTRALIGHT;
        case FontWeight::thin: return PANGO_WEIGHT_THIN;
        case FontWeight::light: return PANGO_WEIGHT_LIGHT;
        case FontWeight::regular: return PANGO_WEIGHT_NORMAL;
        case FontWeight::medium: return PANGO_WEIGHT_MEDIUM;
        case FontWeight::semibold: return PANGO_WEIGHT_SEMIBOLD;
        case FontWeight::bold: return PANGO_WEIGHT_BOLD;
        case FontWeight::heavy: return PANGO_WEIGHT_ULTRABOLD;
        case FontWeight::black: return PANGO_WEIGHT_HEAVY;
    }
    return PANGO_WEIGHT_NORMAL;
}

class TextEngine final : public TextMeasurer {
public:
    TextEngine() {
        fontMap_.reset(pango_cairo_font_map_new());
        context_.reset(pango_font_map_create_context(fontMap_.get()));
        // Points are units: a 17-point font is 17 units high at 1×.
        pango_cairo_context_set_resolution(context_.get(), 72);
        // Unrounded glyph positions and no hinting keep widths proportional to
        // the size, which shrink-to-fit and drawing at 3× both rely on.
        pango_context_set_round_glyph_positions(context_.get(), FALSE);
        std::unique_ptr<cairo_font_options_t, CairoDeleter> options(cairo_font_options_create());
        cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
        cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
        cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
        pango_cairo_context_set_font_options(context_.get(), options.get());
        layout_.reset(pango_layout_new(context_.get()));
    }

    TextMetrics measure(std::string_view text, const Font& font) const override {
        auto key = std::make_tuple(std::string(text), font.family, font.size, font.weight);
        if (auto it = cache_.find(key); it != cache_.end()) return it->second;
        PangoLayout* layout = prepare(text, font);
        PangoRectangle logical;
        pango_layout_get_extents(layout, nullptr, &logical);
        double baseline = static_cast<double>(pango_layout_get_baseline(layout)) / PANGO_SCALE;
        double height = static_cast<double>(logical.height) / PANGO_SCALE;
        TextMetrics m{static_cast<double>(logical.width) / PANGO_SCALE, baseline, height - baseline};
        if (cache_.size() > 4096) cache_.clear();
        cache_.emplace(std::move(key), m);
        return m;
    }

    // The shared layout set up for one line; valid until the next call. The
    // line's letters decide its direction (Pango's auto-dir); `direction` is
    // for a line without any. A line's width does not depend on it.
    PangoLayout* prepare(std::string_view text, const Font& font,
                         LayoutDirection direction = LayoutDirection::leftToRight) const {
        const PangoDirection base =
            direction == LayoutDirection::rightToLeft ? PANGO_DIRECTION_WEAK_RTL : PANGO_DIRECTION_WEAK_LTR;
        if (pango_context_get_base_dir(context_.get()) != base) {
            pango_context_set_base_dir(context_.get(), base);
            pango_layout_context_changed(layout_.get());
        }
        FontDescriptionPtr desc(pango_font_description_new());
        const std::string families = font.family + "," + Font::kFallbackFamilies;
        pango_font_description_set_family(desc.get(), families.c_str());
        pango_font_description_set_weight(desc.get(), pangoWeight(font.weight));
        pango_font_description_set_absolute_size(desc.get(), std::max(0.0, font.size) * PANGO_SCALE);
        pango_layout_set_font_description(layout_.get(), desc.get());
        pango_layout_set_single_paragraph_mode(layout_.get(), TRUE);
        pango_layout_set_text(layout_.get(), text.data(), static_cast<int>(text.size()));
        return layout_.get();
    }

private:
    GObjectPtr<PangoFontMap> fontMap_;
    GObjectPtr<PangoContext> context_;
    GObjectPtr<PangoLayout> layout_;
    mutable std::map<std::tuple<std::string, std::string, double, FontWeight>, TextMetrics> cache_;
};

// ---------------------------------------------------------------------------
// [Icons]
// ---------------------------------------------------------------------------

class IconLibrary final : public ImageSizer {
public:
    explicit IconLibrary(std::filesystem::path directory) : directory_(std::move(directory)) {}

    // The icon, or null when there is none (reported once per name).
    RsvgHandle* handle(std::string_view name) const {
        std::string key(name);
        if (auto it = handles_.find(key); it != handles_.end()) return it->second.get();
        std::filesystem::path file = directory_ / (key + ".svg");
        GError* error = nullptr;
        RsvgHandle* h = directory_.empty() ? nullptr : rsvg_handle_new_from_file(file.c_str(), &error);
        if (!h) {
            std::error_code ec;
            if (directory_.empty())
                std::fprintf(stderr, "drawing: no icon \"%s\": no icon directory given\n", key.c_str());
            else if (!std::filesystem::exists(file, ec))
                std::fprintf(stderr, "drawing: no icon \"%s\": %s does not exist\n", key.c_str(), file.c_str());
            else
                std::fprintf(stderr, "drawing: no icon \"%s\": %s\n", key.c_str(), error ? error->message : "unreadable");
            if (error) g_error_free(error);
        }
        return handles_.emplace(key, GObjectPtr<RsvgHandle>(h)).first->second.get();
    }

    std::optional<Size> naturalSize(std::string_view name) const override {
        RsvgHandle* h = handle(name);
        if (!h) return std::nullopt;
        gdouble w = 0, hgt = 0;
        if (!rsvg_handle_get_intrinsic_size_in_pixels(h, &w, &hgt)) {
            RsvgRectangle ink{}, logical{};
            if (!rsvg_handle_get_geometry_for_element(h, nullptr, &ink, &logical, nullptr)) return std::nullopt;
            w = logical.width, hgt = logical.height;
        }
        return Size{w, hgt};
    }

private:
    std::filesystem::path directory_;
    mutable std::map<std::string, GObjectPtr<RsvgHandle>> handles_;
};

// ---------------------------------------------------------------------------
// [Player]
// ---------------------------------------------------------------------------

void setSource(cairo_t* cr, const Color& c, ColorScheme scheme) {
    Rgba v = c.resolved(scheme);
    auto unit = [](double x) { return std::isnan(x) ? 0.0 : std::clamp(x, 0.0, 1.0); };
    cairo_set_source_rgba(cr, unit(v.red), unit(v.green), unit(v.blue), unit(v.alpha));
}

void appendPath(cairo_t* cr, const Path& p) {
    cairo_new_path(cr);
    bool afterMove = false;
    for (const auto& e : p.elements()) {
        std::visit(Overloaded{
                       [&](const PathMoveTo& m) { cairo_move_to(cr, m.point.x, m.point.y); },
                       [&](const PathLineTo& l) { cairo_line_to(cr, l.point.x, l.point.y); },
                       [&](const PathCurveTo& c) {
                           cairo_curve_to(cr, c.control1.x, c.control1.y, c.control2.x, c.control2.y, c.point.x,
                                          c.point.y);
                       },
                       [&](const PathArc& a) {
                           // The arc starts at the current point; right after a move,
                           // a fresh subpath avoids a zero-length segment before it.
                           if (afterMove) cairo_new_sub_path(cr);
                           if (a.sweep >= 0)
                               cairo_arc(cr, a.center.x, a.center.y, a.radius, a.startAngle, a.startAngle + a.sweep);
                           else
                               cairo_arc_negative(cr, a.center.x, a.center.y, a.radius, a.startAngle,
                                                  a.startAngle + a.sweep);
                       },
                       [&](const PathClose&) { cairo_close_path(cr); },
                   },
                   e);
        afterMove = std::holds_alternative<PathMoveTo>(e);
    }
}

void applyStroke(cairo_t* cr, const StrokeStyle& s) {
    cairo_set_line_width(cr, s.lineWidth);
    cairo_set_line_cap(cr, s.lineCap == LineCap::round    ? CAIRO_LINE_CAP_ROUND
                           : s.lineCap == LineCap::square ? CAIRO_LINE_CAP_SQUARE
                                                          : CAIRO_LINE_CAP_BUTT);
    cairo_set_line_join(cr, s.lineJoin == LineJoin::round   ? CAIRO_LINE_JOIN_ROUND
                            : s.lineJoin == LineJoin::bevel ? CAIRO_LINE_JOIN_BEVEL
                                                            : CAIRO_LINE_JOIN_MITER);
    cairo_set_miter_limit(cr, std::max(1.0, s.miterLimit));
    // A dash with a negative length or nothing "on" would put the context in
    // an error state; such a stroke is drawn solid.
    double total = 0;
    bool valid = true;
    for (double d : s.dash) total += d, valid = valid && d >= 0 && std::isfinite(d);
    if (valid && total > 0)
        cairo_set_dash(cr, s.dash.data(), static_cast<int>(s.dash.size()), s.dashPhase);
    else
        cairo_set_dash(cr, nullptr, 0, 0);
}

class Player {
public:
    Player(cairo_t* cr, ColorScheme scheme, const TextEngine& text, const IconLibrary& icons)
        : cr_(cr), scheme_(scheme), text_(text), icons_(icons) {}

    void play(const DisplayList& list) {
        for (const auto& o : list.ops) std::visit([&](const auto& op) { apply(op); }, o);
        // Unbalanced lists are a recording bug; close what is open so the
        // surface is still complete.
        while (!contents_.empty()) contents_.pop_back(), cairo_pattern_destroy(cairo_pop_group(cr_));
        while (groups_ > 0) --groups_, cairo_pattern_destroy(cairo_pop_group(cr_));
        while (saves_ > 0) --saves_, cairo_restore(cr_);
    }

private:
    void apply(const op::Save&) { cairo_save(cr_), ++saves_; }
    void apply(const op::Restore&) {
        if (saves_ > 0) cairo_restore(cr_), --saves_;
    }
    void apply(const op::Translate& t) { cairo_translate(cr_, t.dx, t.dy); }
    void apply(const op::Rotate& r) { cairo_rotate(cr_, r.radians); }
    void apply(const op::Scale& s) {
        if (s.sx != 0 && s.sy != 0) cairo_scale(cr_, s.sx, s.sy);
    }
    void apply(const op::ClipPath& c) {
        appendPath(cr_, c.path);
        cairo_set_fill_rule(cr_, c.rule == FillRule::evenOdd ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING);
        cairo_clip(cr_);
    }
    void apply(const op::PushGroup&) { cairo_push_group(cr_), ++groups_; }
    void apply(const op::PopGroup& g) {
        if (groups_ == 0) return;
        --groups_;
        cairo_pop_group_to_source(cr_);
        cairo_paint_with_alpha(cr_, g.opacity);
    }
    void apply(const op::PushMask&) {
        if (groups_ == 0) return;
        --groups_;
        contents_.emplace_back(cairo_pop_group(cr_));
        cairo_push_group(cr_);
    }
    void apply(const op::PopMask&) {
        if (contents_.empty()) return;
        PatternPtr mask(cairo_pop_group(cr_));
        PatternPtr content = std::move(contents_.back());
        contents_.pop_back();
        cairo_set_source(cr_, content.get());
        cairo_mask(cr_, mask.get());
    }
    void apply(const op::FillPath& f) {
        appendPath(cr_, f.path);
        setSource(cr_, f.color, scheme_);
        cairo_set_fill_rule(cr_, f.rule == FillRule::evenOdd ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING);
        cairo_fill(cr_);
    }
    void apply(const op::StrokePath& s) {
        if (!(s.style.lineWidth > 0)) return;
        appendPath(cr_, s.path);
        setSource(cr_, s.color, scheme_);
        applyStroke(cr_, s.style);
        cairo_stroke(cr_);
    }
    void apply(const op::DrawText& t) {
        if (t.text.empty() || !(t.font.size > 0)) return;
        PangoLayout* layout = text_.prepare(t.text, t.font, t.direction);
        double baseline = static_cast<double>(pango_layout_get_baseline(layout)) / PANGO_SCALE;
        setSource(cr_, t.color, scheme_);
        cairo_move_to(cr_, t.origin.x, t.baseline - baseline);
        pango_cairo_show_layout(cr_, layout);
        cairo_new_path(cr_);
    }
    // Group markers are read by the rendering mode; they draw nothing.
    void apply(const op::BeginWidgetGroup&) {}
    void apply(const op::EndWidgetGroup&) {}
    void apply(const op::DrawImage& i) {
        if (i.rect.isEmpty()) return;
        RsvgHandle* h = icons_.handle(i.name);
        if (!h) return;
        RsvgRectangle viewport{i.rect.minX(), i.rect.minY(), i.rect.width(), i.rect.height()};
        GError* error = nullptr;
        if (i.tint && i.luminance) {
            drawLuminance(h, i, &error);
        } else if (i.tint) {
            cairo_push_group(cr_);
            rsvg_handle_render_document(h, cr_, &viewport, &error);
            PatternPtr silhouette(cairo_pop_group(cr_));
            setSource(cr_, *i.tint, scheme_);
            cairo_mask(cr_, silhouette.get());
        } else {
            rsvg_handle_render_document(h, cr_, &viewport, &error);
        }
        if (error) {
            std::fprintf(stderr, "drawing: icon \"%s\" failed to draw: %s\n", i.name.c_str(), error->message);
            g_error_free(error);
        }
    }

    // The icon drawn into pixels of its own (at the device's resolution), each
    // pixel's luminance turned into alpha, then the tint painted through it.
    void drawLuminance(RsvgHandle* h, const op::DrawImage& i, GError** error) {
        double pw = i.rect.width(), ph = i.rect.height();
        cairo_user_to_device_distance(cr_, &pw, &ph);
        const int w = std::clamp(static_cast<int>(std::ceil(std::abs(pw))), 1, 4096);
        const int hgt = std::clamp(static_cast<int>(std::ceil(std::abs(ph))), 1, 4096);
        SurfacePtr pixels(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, w, hgt));
        {
            CairoPtr icon(cairo_create(pixels.get()));
            RsvgRectangle viewport{0, 0, static_cast<double>(w), static_cast<double>(hgt)};
            rsvg_handle_render_document(h, icon.get(), &viewport, error);
        }
        cairo_surface_flush(pixels.get());
        unsigned char* data = cairo_image_surface_get_data(pixels.get());
        const int stride = cairo_image_surface_get_stride(pixels.get());
        for (int y = 0; y < hgt; ++y) {
            auto* row = reinterpret_cast<std::uint32_t*>(data + static_cast<std::ptrdiff_t>(y) * stride);
            for (int x = 0; x < w; ++x) {
                const std::uint32_t p = row[x];  // premultiplied, so this is luminance times alpha
                const double luma =
                    0.2126 * ((p >> 16) & 0xff) + 0.7152 * ((p >> 8) & 0xff) + 0.0722 * (p & 0xff);
                row[x] = static_cast<std::uint32_t>(std::lround(std::min(luma, 255.0))) << 24;
            }
        }
        cairo_surface_mark_dirty(pixels.get());
        cairo_save(cr_);
        cairo_translate(cr_, i.rect.minX(), i.rect.minY());
        cairo_scale(cr_, i.rect.width() / w, i.rect.height() / hgt);
        setSource(cr_, *i.tint, scheme_);
        cairo_mask_surface(cr_, pixels.get(), 0, 0);
        cairo_restore(cr_);
    }

    cairo_t* cr_;
    ColorScheme scheme_;
    const TextEngine& text_;
    const IconLibrary& icons_;
    int saves_ = 0, groups_ = 0;
    std::vector<PatternPtr> contents_;  // masked groups waiting for their mask
};

// ---------------------------------------------------------------------------
// [Outputs]
// ---------------------------------------------------------------------------

constexpr int kMaxPixels = 16384;

RenderError cairoError(const char* what, cairo_status_t status) {
    return RenderError{std::string(what) + ": " + cairo_status_to_string(status)};
}

cairo_status_t svgWrite(void* closure, const unsigned char* data, unsigned int length) {
    static_cast<std::string*>(closure)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

// The backend names the surfaces it embeds in an SVG by a counter shared by
// the whole process, so the same drawing would come out different after
// other drawing (on any thread). Numbered in order of appearance instead, an
// SVG depends on its drawing alone.
std::string renumberSurfaceIds(const std::string& svg) {
    static constexpr std::string_view kPrefix = "surface";
    std::map<std::string, std::string, std::less<>> renamed;
    std::string out;
    out.reserve(svg.size());
    std::size_t at = 0;
    for (std::size_t found; (found = svg.find(kPrefix, at)) != std::string::npos;) {
        std::size_t end = found + kPrefix.size();
        while (end < svg.size() && svg[end] >= '0' && svg[end] <= '9') ++end;
        out.append(svg, at, end - at);
        if (end > found + kPrefix.size()) {
            out.resize(out.size() - (end - found - kPrefix.size()));
            const auto number = svg.substr(found + kPrefix.size(), end - found - kPrefix.size());
            const auto [entry, added] = renamed.emplace(number, std::to_string(renamed.size() + 1));
            out += entry->second;
        }
        at = end;
    }
    out.append(svg, at);
    return out;
}

std::optional<RenderError> checkScale(double scale) {
    if (!(scale >= Painter::kMinScale && scale <= Painter::kMaxScale))
        return RenderError{"scale must be between 1 and 3, not " + std::to_string(scale)};
    return std::nullopt;
}

}  // namespace

Rgba Raster::pixel(int x, int y) const {
    if (x < 0 || y < 0 || x >= width || y >= height) return {0, 0, 0, 0};
    const std::uint8_t* p = rgba.data() + (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                                           static_cast<std::size_t>(x)) * 4;
    return {p[0] / 255.0, p[1] / 255.0, p[2] / 255.0, p[3] / 255.0};
}

struct Painter::Impl {
    explicit Impl(std::filesystem::path dir) : icons(std::move(dir)) {}
    TextEngine text;
    IconLibrary icons;
};

Painter::Painter(std::filesystem::path iconDirectory) : impl_(std::make_unique<Impl>(std::move(iconDirectory))) {}
Painter::~Painter() = default;

const TextMeasurer& Painter::textMeasurer() const { return impl_->text; }
const ImageSizer& Painter::imageSizer() const { return impl_->icons; }

LayoutTree Painter::layout(const View& view, const RenderOptions& options) const {
    LayoutOptions o{options.size, options.environment(), options.contentMargins,
                    options.images ? options.images : &impl_->icons};
    return qrv::platform::layout(view, o, impl_->text);
}

DisplayList Painter::record(const View& view, const RenderOptions& options) const {
    RenderOptions o = options;
    if (!o.images) o.images = &impl_->icons;
    return render(view, o, impl_->text);
}

RenderResult<Raster> Painter::rasterize(const DisplayList& list, double scale, ColorScheme scheme) const {
    if (auto bad = checkScale(scale)) return *bad;
    double w = std::ceil(list.size.width * scale - 1e-9), h = std::ceil(list.size.height * scale - 1e-9);
    if (!(w >= 1 && h >= 1 && w <= kMaxPixels && h <= kMaxPixels))
        return RenderError{"image of " + std::to_string(w) + " x " + std::to_string(h) + " pixels is out of range"};
    const int width = static_cast<int>(w), height = static_cast<int>(h);
    SurfacePtr surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
    CairoPtr cr(cairo_create(surface.get()));
    cairo_scale(cr.get(), scale, scale);
    Player(cr.get(), scheme, impl_->text, impl_->icons).play(list);
    if (auto s = cairo_status(cr.get()); s != CAIRO_STATUS_SUCCESS) return cairoError("drawing failed", s);
    cairo_surface_flush(surface.get());
    if (auto s = cairo_surface_status(surface.get()); s != CAIRO_STATUS_SUCCESS) return cairoError("surface failed", s);

    Raster out{width, height, std::vector<std::uint8_t>(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4)};
    const unsigned char* data = cairo_image_surface_get_data(surface.get());
    const int stride = cairo_image_surface_get_stride(surface.get());
    for (int y = 0; y < height; ++y) {
        const auto* row = reinterpret_cast<const std::uint32_t*>(data + static_cast<std::ptrdiff_t>(y) * stride);
        std::uint8_t* dst = out.rgba.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width) * 4;
        for (int x = 0; x < width; ++x, dst += 4) {
            // Native-endian premultiplied ARGB to straight RGBA.
            std::uint32_t px = row[x];
            unsigned a = px >> 24, r = (px >> 16) & 0xFF, g = (px >> 8) & 0xFF, b = px & 0xFF;
            if (a != 0 && a != 255) {
                r = (r * 255 + a / 2) / a, g = (g * 255 + a / 2) / a, b = (b * 255 + a / 2) / a;
            }
            dst[0] = static_cast<std::uint8_t>(r), dst[1] = static_cast<std::uint8_t>(g);
            dst[2] = static_cast<std::uint8_t>(b), dst[3] = static_cast<std::uint8_t>(a);
        }
    }
    return out;
}

RenderResult<std::vector<std::uint8_t>> Painter::png(const DisplayList& list, double scale, ColorScheme scheme) const {
    auto raster = rasterize(list, scale, scheme);
    if (!raster) return RenderError{raster.error()};
    return encodePNG(raster.value());
}

RenderResult<std::string> Painter::svg(const DisplayList& list, ColorScheme scheme) const {
    if (!(list.size.width > 0 && list.size.height > 0 && list.size.width <= kMaxPixels && list.size.height <= kMaxPixels))
        return RenderError{"drawing size is out of range"};
    std::string out;
    {
        SurfacePtr surface(cairo_svg_surface_create_for_stream(svgWrite, &out, list.size.width, list.size.height));
        cairo_svg_surface_set_document_unit(surface.get(), CAIRO_SVG_UNIT_PT);
        CairoPtr cr(cairo_create(surface.get()));
        Player(cr.get(), scheme, impl_->text, impl_->icons).play(list);
        if (auto s = cairo_status(cr.get()); s != CAIRO_STATUS_SUCCESS) return cairoError("drawing failed", s);
        cr.reset();
        cairo_surface_finish(surface.get());
        if (auto s = cairo_surface_status(surface.get()); s != CAIRO_STATUS_SUCCESS)
            return cairoError("writing SVG failed", s);
    }
    return renumberSurfaceIds(out);
}

RenderResult<std::vector<std::uint8_t>> Painter::renderPNG(const View& view, const RenderOptions& options,
                                                           double scale) const {
    return png(record(view, options), scale, options.colorScheme);
}

RenderResult<std::string> Painter::renderSVG(const View& view, const RenderOptions& options) const {
    return svg(record(view, options), options.colorScheme);
}

RenderResult<std::vector<std::uint8_t>> renderPNG(const View& view, Size size, double scale, ColorScheme scheme,
                                                  WidgetFamily family, const std::filesystem::path& iconDirectory) {
    Painter painter(iconDirectory);
    RenderOptions options;
    options.size = size;
    options.colorScheme = scheme;
    options.widgetFamily = family;
    return painter.renderPNG(view, options, scale);
}

RenderResult<std::string> renderSVG(const View& view, Size size, ColorScheme scheme, WidgetFamily family,
                                    const std::filesystem::path& iconDirectory) {
    Painter painter(iconDirectory);
    RenderOptions options;
    options.size = size;
    options.colorScheme = scheme;
    options.widgetFamily = family;
    return painter.renderSVG(view, options);
}

}  // namespace qrv::platform

#if defined(__SANITIZE_ADDRESS__)
// Fontconfig, Pango and Cairo keep one-off caches for the life of the process,
// which LeakSanitizer would report from every program that paints. The same
// list as scripts/lsan.supp, built in so plain test runs need no options.
extern "C" const char* __lsan_default_suppressions() {  // NOLINT(bugprone-reserved-identifier)
    return "leak:libfontconfig.so\n"
           "leak:libpango\n"
           "leak:libcairo.so\n"
           "leak:libglib-2.0.so\n"
           "leak:libgobject-2.0.so\n";
}
#endif
