#include "Host/GalleryPage.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "Platform/time/ISO8601.hpp"

namespace qrv::host {

using platform::ColorScheme;
using platform::WidgetFamily;

std::string escapeHTML(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        switch (c) {
            case '&': out += "&amp;"; break;
            case '<': out += "&lt;"; break;
            case '>': out += "&gt;"; break;
            case '"': out += "&quot;"; break;
            case '\'': out += "&#39;"; break;
            default: out += c;
        }
    }
    return out;
}

namespace {

constexpr std::string_view kStyle = R"CSS(
:root { color-scheme: light dark; font-family: "Inter", system-ui, sans-serif; }
body { margin: 0; background: #f2f2f7; color: #1c1c1e; }
header { padding: 24px 32px 8px; }
header h1 { margin: 0 0 4px; font-size: 26px; }
header p { margin: 0; color: #636366; }
section.screen { margin: 24px 32px 40px; }
section.screen > h2 { font-size: 18px; margin: 0 0 10px; }
.wallpaper { border-radius: 36px; padding: 28px; display: flex; flex-wrap: wrap; gap: 28px; align-items: flex-start;
  box-shadow: 0 10px 30px rgba(0,0,0,.18); }
.home.light .wallpaper { background: radial-gradient(circle at 15% 20%, #ffd8b5 0, transparent 45%),
  radial-gradient(circle at 85% 30%, #b9d7ff 0, transparent 50%), linear-gradient(160deg, #f7c6d9, #a9c8ff 60%, #c8f0e0); }
.home.dark .wallpaper { background: radial-gradient(circle at 20% 15%, #3a2f6b 0, transparent 45%),
  radial-gradient(circle at 80% 70%, #0f4c5c 0, transparent 50%), linear-gradient(160deg, #151a33, #2b1840 60%, #0b2530); }
.lock .wallpaper { background: radial-gradient(circle at 50% 0%, #34406b 0, transparent 60%),
  linear-gradient(180deg, #0d1226, #1b1030 70%, #05060d); color: #fff; flex-direction: column; align-items: center; }
.lock .clock { font-size: 64px; font-weight: 600; letter-spacing: 1px; margin: 4px 0 0; color: rgba(255,255,255,.92); }
.widget { background: rgba(255,255,255,.55); border-radius: 22px; padding: 14px 16px 12px; max-width: 760px;
  backdrop-filter: blur(8px); }
.dark .widget { background: rgba(20,20,30,.55); color: #f2f2f7; }
.lock .widget { background: rgba(255,255,255,.08); color: #f2f2f7; align-self: stretch; max-width: none; }
.dark a, .lock a { color: #9ecbff; }
.widget h3 { margin: 0; font-size: 17px; }
.widget p.description { margin: 2px 0 10px; font-size: 13px; opacity: .8; }
.row { display: flex; flex-wrap: wrap; gap: 18px; align-items: flex-end; }
.lock .row { justify-content: center; }
figure { margin: 0; display: flex; flex-direction: column; align-items: center; gap: 6px; }
figure img { display: block; }
figure img.home { box-shadow: 0 4px 14px rgba(0,0,0,.22); }
figcaption { font-size: 11px; opacity: .75; text-align: center; }
.badge { display: inline-block; font-size: 10px; padding: 1px 6px; border-radius: 8px; background: #ff9f0a; color: #000;
  margin-left: 4px; }
h4 { margin: 14px 0 6px; font-size: 12px; text-transform: uppercase; letter-spacing: .06em; opacity: .7; }
ul.targets { margin: 8px 0 0; padding-left: 18px; font-size: 12px; }
ul.targets li { margin: 2px 0; }
code { font-family: ui-monospace, "DejaVu Sans Mono", monospace; font-size: 11.5px; }
details { margin-top: 6px; font-size: 12px; }
details ul { margin: 4px 0; padding-left: 18px; }
.home.tinted .wallpaper { background: linear-gradient(160deg, color-mix(in srgb, var(--tint) 35%, #000),
  color-mix(in srgb, var(--tint) 12%, #000) 70%); }
.home.tinted.light .wallpaper { background: linear-gradient(160deg, color-mix(in srgb, var(--tint) 30%, #fff),
  color-mix(in srgb, var(--tint) 55%, #fff) 70%); }
.swatch { display: inline-block; width: 14px; height: 14px; border-radius: 7px; background: var(--tint);
  vertical-align: -2px; margin: 0 4px; box-shadow: 0 0 0 1px rgba(0,0,0,.25); }
.standby .phone { background: #000; border-radius: 44px; padding: 24px 36px; display: flex; gap: 28px;
  justify-content: center; align-items: center; aspect-ratio: 852 / 393; box-sizing: border-box; max-width: 852px;
  box-shadow: 0 10px 30px rgba(0,0,0,.35); margin-bottom: 18px; border: 10px solid #1c1c1e; }
.standby .phone img { border-radius: 44px; }
.standby figcaption { color: #8e8e93; }
)CSS";

std::string number(double value) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%g", std::round(value * 10) / 10);
    return buffer;
}

std::string rectText(const platform::Rect& rect) {
    return "(" + number(rect.minX()) + ", " + number(rect.minY()) + ") " + number(rect.width()) + "×" +
           number(rect.height());
}

// The platform's corner radius grows with the widget: about 22 points on a
// 158-point small widget.
double cornerRadius(platform::Size size) { return std::round(std::min(size.width, size.height) * 0.139); }

class PageWriter {
  public:
    PageWriter(const Manifest& manifest, const platform::Calendar& calendar)
        : manifest_(manifest), calendar_(calendar) {}

    std::string write(std::string_view language) {
        out_ += "<!DOCTYPE html>\n<html lang=\"" + escapeHTML(language) + "\">\n<head>\n<meta charset=\"utf-8\">\n";
        out_ += "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n";
        out_ += "<title>Quorvane widgets: gallery</title>\n<style>";
        out_ += kStyle;
        out_ += "</style>\n</head>\n<body>\n<header>\n<h1>Quorvane widgets</h1>\n<p>";
        out_ += escapeHTML(manifest_.device == "pad" ? "11-inch tablet" : "6.1-inch phone");
        out_ += " · system version " + std::to_string(manifest_.systemVersion) + " · drawn for " +
                escapeHTML(platform::formatISO8601(manifest_.now, calendar_)) + "</p>\n</header>\n";
        // Each appearance on its own screens, in the order the platform's
        // places are usually met: home, tinted home, StandBy, lock screen.
        for (auto appearance : kAllAppearances) {
            if (appearance == Appearance::standBy || appearance == Appearance::standByNight) {
                standBy(appearance);
                continue;
            }
            for (auto scheme : {ColorScheme::light, ColorScheme::dark}) {
                if (hasImages(appearance, scheme, false)) screen(appearance, scheme, false);
                if (hasImages(appearance, scheme, true)) screen(appearance, scheme, true);
            }
        }
        out_ += "</body>\n</html>\n";
        return std::move(out_);
    }

  private:
    // The lock screen appearance is all lock screen, even the pad's small widget.
    static bool onLockScreen(const ManifestImage& image) {
        return image.appearance == Appearance::lockScreen || platform::isAccessory(image.family);
    }

    bool hasImages(Appearance appearance, ColorScheme scheme, bool lockScreen) const {
        for (const auto& image : manifest_.images)
            if (image.appearance == appearance && image.scheme == scheme && onLockScreen(image) == lockScreen)
                return true;
        return false;
    }

    std::vector<const ManifestImage*> images(Appearance appearance, const std::string& kind,
                                             ColorScheme scheme, bool lockScreen, EntryMoment moment) const {
        std::vector<const ManifestImage*> found;
        for (const auto& image : manifest_.images)
            if (image.appearance == appearance && image.kind == kind && image.scheme == scheme &&
                image.moment == moment && onLockScreen(image) == lockScreen)
                found.push_back(&image);
        return found;
    }

    // StandBy: the phone on its side, black, two small widgets side by side
    // filling its height; a second screen for any further pair.
    void standBy(Appearance appearance) {
        std::vector<const ManifestImage*> shown;
        for (const auto& image : manifest_.images)
            if (image.appearance == appearance && image.moment == EntryMoment::now) shown.push_back(&image);
        if (shown.empty()) return;
        const bool night = appearance == Appearance::standByNight;
        out_ += "<section class=\"screen standby" + std::string(night ? " night" : "") + "\">\n";
        out_ += "<h2>StandBy · " + std::string(night ? "at night (vibrant, red)" : "by day") +
                " · background removed</h2>\n";
        for (std::size_t i = 0; i < shown.size(); i += 2) {
            out_ += "<div class=\"phone\">\n";
            for (std::size_t k = i; k < std::min(i + 2, shown.size()); ++k) {
                const auto& image = *shown[k];
                out_ += "<figure data-kind=\"" + escapeHTML(image.kind) + "\"><img src=\"" +
                        escapeHTML(image.png) + "\" width=\"" + number(image.size.width) + "\" height=\"" +
                        number(image.size.height) + "\" alt=\"" + escapeHTML(altText(image)) +
                        "\"><figcaption>" + escapeHTML(widgetName(image.kind)) + " · <a href=\"" +
                        escapeHTML(image.svg) + "\">SVG</a></figcaption></figure>\n";
            }
            out_ += "</div>\n";
        }
        out_ += "</section>\n";
    }

    std::string widgetName(const std::string& kind) const {
        for (const auto& widget : manifest_.widgets)
            if (widget.kind == kind) return widget.displayName;
        return kind;
    }

    static std::string altText(const ManifestImage& image) {
        std::string alt;
        for (const auto& text : image.texts) alt += (alt.empty() ? "" : " ") + text.shown;
        return alt;
    }

    // The tint the tinted screen's images were drawn with.
    std::string tintOf(ColorScheme scheme) const {
        for (const auto& image : manifest_.images)
            if (image.appearance == Appearance::tinted && image.scheme == scheme && image.tint)
                return *image.tint;
        return {};
    }

    void screen(Appearance appearance, ColorScheme scheme, bool lockScreen) {
        const std::string schemeText(schemeName(scheme));
        const bool tinted = appearance == Appearance::tinted;
        const std::string tint = tinted ? tintOf(scheme) : std::string();
        out_ += "<section class=\"screen " + std::string(lockScreen ? "lock " : "home ") +
                (tinted ? "tinted " : "") + schemeText + "\"" +
                (tint.empty() ? "" : " style=\"--tint:" + escapeHTML(tint) + "\"") + ">\n";
        out_ += "<h2>" +
                std::string(lockScreen ? "Lock screen"
                            : tinted   ? "Tinted home screen"
                                       : "Home screen") +
                " · " + schemeText;
        if (tinted) out_ += " · tint<span class=\"swatch\"></span><code>" + escapeHTML(tint) + "</code>";
        if (lockScreen) out_ += " · vibrant";
        out_ += "</h2>\n";
        out_ += "<div class=\"wallpaper\">\n";
        if (lockScreen) out_ += "<div class=\"clock\">9:41</div>\n";
        for (const auto& widget : manifest_.widgets) {
            const auto now = images(appearance, widget.kind, scheme, lockScreen, EntryMoment::now);
            const auto later = images(appearance, widget.kind, scheme, lockScreen, EntryMoment::nextMidnight);
            if (now.empty() && later.empty()) continue;
            out_ += "<article class=\"widget\" data-kind=\"" + escapeHTML(widget.kind) + "\">\n";
            out_ += "<h3>" + escapeHTML(widget.displayName) + "</h3>\n";
            out_ += "<p class=\"description\">" + escapeHTML(widget.description) + "</p>\n";
            row(now, lockScreen);
            if (!later.empty()) {
                out_ += "<h4>At the next midnight</h4>\n";
                row(later, lockScreen);
            }
            targets(now);
            texts(now);
            out_ += "</article>\n";
        }
        out_ += "</div>\n</section>\n";
    }

    void row(const std::vector<const ManifestImage*>& images, bool lockScreen) {
        out_ += "<div class=\"row\">\n";
        for (const auto* image : images) {
            const std::string alt = altText(*image);
            out_ += "<figure><img class=\"" + std::string(lockScreen ? "lock" : "home") + "\" src=\"" +
                    escapeHTML(image->png) + "\" width=\"" + number(image->size.width) + "\" height=\"" +
                    number(image->size.height) + "\"";
            if (!lockScreen) out_ += " style=\"border-radius:" + number(cornerRadius(image->size)) + "px\"";
            out_ += " alt=\"" + escapeHTML(alt) + "\">";
            out_ += "<figcaption>" + escapeHTML(platform::name(image->family)) + " · " +
                    escapeHTML(platform::formatISO8601(image->entryDate, calendar_));
            if (image->placeholder) out_ += "<span class=\"badge\">placeholder</span>";
            out_ += " · <a href=\"" + escapeHTML(image->svg) + "\">SVG</a></figcaption></figure>\n";
        }
        out_ += "</div>\n";
    }

    void targets(const std::vector<const ManifestImage*>& images) {
        if (images.empty()) return;
        out_ += "<h4>Taps</h4>\n<ul class=\"targets\">\n";
        for (const auto* image : images) {
            out_ += "<li><b>" + escapeHTML(platform::name(image->family)) + "</b>: ";
            std::string parts;
            for (const auto& link : image->links)
                parts += (parts.empty() ? "" : "; ") + std::string("link <code>") + escapeHTML(link.url) +
                         "</code> at " + rectText(link.rect);
            for (const auto& button : image->buttons) {
                std::string parameters;
                for (const auto& parameter : button.intent.parameters)
                    parameters += (parameters.empty() ? "" : ", ") + escapeHTML(parameter);
                parts += (parts.empty() ? "" : "; ") + std::string("button runs <code>") +
                         escapeHTML(button.intent.intent) + "(" + parameters + ")</code> at " +
                         rectText(button.rect);
            }
            const bool others = !parts.empty();
            if (image->widgetURL)
                parts += (others ? "; anywhere else " : "anywhere ") + std::string("opens <code>") +
                         escapeHTML(*image->widgetURL) + "</code>";
            else
                parts += others ? "; anywhere else launches the app" : "launches the app";
            out_ += parts + "</li>\n";
        }
        out_ += "</ul>\n";
    }

    void texts(const std::vector<const ManifestImage*>& images) {
        if (images.empty()) return;
        out_ += "<details><summary>Texts drawn</summary>\n";
        for (const auto* image : images) {
            out_ += "<b>" + escapeHTML(platform::name(image->family)) + "</b><ul>\n";
            for (const auto& text : image->texts) {
                out_ += "<li>" + escapeHTML(text.shown);
                if (text.id) out_ += " <code>" + escapeHTML(*text.id) + "</code>";
                out_ += "</li>\n";
            }
            out_ += "</ul>\n";
        }
        out_ += "</details>\n";
    }

    const Manifest& manifest_;
    const platform::Calendar& calendar_;
    std::string out_;
};

}  // namespace

std::string galleryPage(const Manifest& manifest, const platform::Calendar& calendar, std::string_view language) {
    return PageWriter(manifest, calendar).write(language);
}

}  // namespace qrv::host
