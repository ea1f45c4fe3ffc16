#pragma once
// A hatched fill: a solid ground with evenly spaced parallel stripes at an
// angle, filling whatever frame it is given. The ring draws its overage with
// it; anything that needs a hatched area can use it under a mask.
//
// The pattern is built as a row of upright stripes, 2 × the larger side of the
// frame in both directions and centred on the frame, then turned about the
// centre. Twice the larger side is longer than the frame's diagonal, so the
// corners stay covered at any angle.
#include "Platform/drawing/Color.hpp"
#include "Platform/drawing/View.hpp"

namespace qrv::widget {

struct StripesView {
    platform::Color backgroundColor = platform::Color::clear();
    platform::Color stripeColor = platform::Color::black();
    double stripeAngle = 45;   // degrees, clockwise; 0 gives upright stripes
    double stripeWidth = 4;    // points
    double stripeSpacing = 4;  // points between neighbouring stripes

    // The side of the square the pattern spans in a frame of `size`.
    static double patternLength(platform::Size size);
    // How many stripes the pattern holds in a frame of `size`: the span divided
    // by one stripe plus one gap, truncated. Width plus spacing must be
    // positive; anything else stops the program (a caller's mistake).
    static int stripeCount(platform::Size size, double stripeWidth, double stripeSpacing);

    platform::View body() const;
    operator platform::View() const { return body(); }  // NOLINT: a StripesView is used as a view
};

}  // namespace qrv::widget
