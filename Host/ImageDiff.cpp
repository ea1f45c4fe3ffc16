#include "Host/ImageDiff.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace qrv::host {

namespace {

using platform::Raster;

// The largest possible YIQ distance (black against white), squared.
constexpr double kMaxDelta = 35215;

struct Pixel {
    double r = 255, g = 255, b = 255;  // blended over white
    bool present = false;
};

Pixel pixelAt(const Raster& image, int x, int y) {
    if (x < 0 || y < 0 || x >= image.width || y >= image.height) return {};
    const std::uint8_t* p =
        image.rgba.data() + (static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width) +
                             static_cast<std::size_t>(x)) * 4;
    const double alpha = p[3] / 255.0;
    return {255 + (p[0] - 255) * alpha, 255 + (p[1] - 255) * alpha, 255 + (p[2] - 255) * alpha, true};
}

double brightness(const Pixel& p) { return p.r * 0.29889531 + p.g * 0.58662247 + p.b * 0.11448223; }

// Squared YIQ distance, negative when `b` is brighter than `a`.
double colorDelta(const Pixel& a, const Pixel& b) {
    const double y = brightness(a) - brightness(b);
    const double i = (a.r * 0.59597799 - a.g * 0.27417610 - a.b * 0.32180189) -
                     (b.r * 0.59597799 - b.g * 0.27417610 - b.b * 0.32180189);
    const double q = (a.r * 0.21147017 - a.g * 0.52261711 + a.b * 0.31114694) -
                     (b.r * 0.21147017 - b.g * 0.52261711 + b.b * 0.31114694);
    const double delta = 0.5053 * y * y + 0.299 * i * i + 0.1957 * q * q;
    return y > 0 ? -delta : delta;
}

bool samePixel(const Raster& image, int x1, int y1, int x2, int y2) {
    const auto* p = image.rgba.data();
    const auto at = [&](int x, int y) {
        return (static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width) + static_cast<std::size_t>(x)) *
               4;
    };
    return std::equal(p + at(x1, y1), p + at(x1, y1) + 4, p + at(x2, y2));
}

// Whether the pixel has at least three neighbours of exactly its colour: it
// lies inside a flat area.
bool insideFlatArea(const Raster& image, int x, int y) {
    if (x < 0 || y < 0 || x >= image.width || y >= image.height) return false;
    int same = (x == 0 || y == 0 || x == image.width - 1 || y == image.height - 1) ? 1 : 0;
    for (int ny = std::max(y - 1, 0); ny <= std::min(y + 1, image.height - 1); ++ny)
        for (int nx = std::max(x - 1, 0); nx <= std::min(x + 1, image.width - 1); ++nx) {
            if ((nx == x && ny == y) || !samePixel(image, x, y, nx, ny)) continue;
            if (++same > 2) return true;
        }
    return false;
}

bool antialiased(const Raster& image, int x, int y, const Raster& other) {
    const Pixel centre = pixelAt(image, x, y);
    int equal = (x == 0 || y == 0 || x == image.width - 1 || y == image.height - 1) ? 1 : 0;
    double darkest = 0, brightest = 0;
    int darkX = 0, darkY = 0, brightX = 0, brightY = 0;
    for (int ny = std::max(y - 1, 0); ny <= std::min(y + 1, image.height - 1); ++ny)
        for (int nx = std::max(x - 1, 0); nx <= std::min(x + 1, image.width - 1); ++nx) {
            if (nx == x && ny == y) continue;
            const double delta = brightness(centre) - brightness(pixelAt(image, nx, ny));
            if (delta == 0) {
                if (++equal > 2) return false;  // part of a flat area, not its edge
            } else if (delta < darkest) {
                darkest = delta, darkX = nx, darkY = ny;
            } else if (delta > brightest) {
                brightest = delta, brightX = nx, brightY = ny;
            }
        }
    if (darkest == 0 || brightest == 0) return false;  // not between a darker and a brighter side
    return (insideFlatArea(image, darkX, darkY) && insideFlatArea(other, darkX, darkY)) ||
           (insideFlatArea(image, brightX, brightY) && insideFlatArea(other, brightX, brightY));
}

void paint(Raster& overlay, int x, int y, std::array<std::uint8_t, 4> rgba) {
    std::copy(rgba.begin(), rgba.end(),
              overlay.rgba.begin() + static_cast<std::ptrdiff_t>(
                                         (static_cast<std::size_t>(y) * static_cast<std::size_t>(overlay.width) +
                                          static_cast<std::size_t>(x)) * 4));
}

}  // namespace

ImageDiff compareImages(const Raster& baseline, const Raster& candidate, double threshold) {
    ImageDiff diff;
    const int width = std::max(baseline.width, candidate.width);
    const int height = std::max(baseline.height, candidate.height);
    diff.overlay = {width, height,
                    std::vector<std::uint8_t>(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4)};
    const double maxDelta = kMaxDelta * threshold * threshold;
    const bool sameSize = baseline.width == candidate.width && baseline.height == candidate.height;
    int right = -1, bottom = -1;
    diff.left = width, diff.top = height;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const Pixel a = pixelAt(baseline, x, y), b = pixelAt(candidate, x, y);
            bool changed = !a.present || !b.present;
            if (!changed && std::abs(colorDelta(a, b)) > maxDelta) {
                if (sameSize && (antialiased(baseline, x, y, candidate) || antialiased(candidate, x, y, baseline))) {
                    ++diff.antialiasedPixels;
                    paint(diff.overlay, x, y, {255, 210, 0, 255});
                    continue;
                }
                changed = true;
            }
            if (changed) {
                ++diff.changedPixels;
                paint(diff.overlay, x, y, {230, 0, 40, 255});
                diff.left = std::min(diff.left, x), diff.top = std::min(diff.top, y);
                right = std::max(right, x), bottom = std::max(bottom, y);
            } else {
                const auto grey = static_cast<std::uint8_t>(255 - (255 - brightness(a)) * 0.2);
                paint(diff.overlay, x, y, {grey, grey, grey, 255});
            }
        }
    if (diff.changedPixels == 0) {
        diff.left = diff.top = 0;
    } else {
        diff.width = right - diff.left + 1;
        diff.height = bottom - diff.top + 1;
    }
    return diff;
}

}  // namespace qrv::host
