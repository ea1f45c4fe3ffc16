#pragma once
// Whether two renders of a widget look different to a person, pixel by pixel.
//
// The method is the one the common image-comparison tools use: each pixel is
// blended over white, the two colours are compared in the YIQ space (a
// weighted distance of brightness and the two chroma axes, which tracks how
// different colours look far better than a distance in RGB), and a pixel
// counts as changed when that distance exceeds `threshold` of the largest
// possible one. A changed pixel is then not counted when it is anti-aliasing
// in either image: it lies on an edge between two flat areas (among its eight
// neighbours there are both a darker and a brighter one, and that darkest or
// brightest neighbour sits inside a flat area in both images). Text and
// curves shifted by a rounding step therefore do not count; a changed colour,
// a moved shape or a new glyph does.
#include <cstddef>

#include "Platform/drawing/CairoPainter.hpp"

namespace qrv::host {

struct ImageDiff {
    std::size_t changedPixels = 0;
    std::size_t antialiasedPixels = 0;  // differing, but only as anti-aliasing
    // In pixels of the larger image; empty when nothing changed.
    int left = 0, top = 0, width = 0, height = 0;
    // Baseline faded to grey, changed pixels red, anti-aliasing yellow; the
    // size of the larger image.
    platform::Raster overlay;
};

inline constexpr double kDefaultDiffThreshold = 0.1;

// `threshold` is from 0 (any difference counts) to 1. Images of different
// sizes are compared over the larger one; pixels outside either count as
// changed.
ImageDiff compareImages(const platform::Raster& baseline, const platform::Raster& candidate,
                        double threshold = kDefaultDiffThreshold);

}  // namespace qrv::host
