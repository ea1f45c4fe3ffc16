#pragma once
// The progress ring of the calories and macronutrient widgets: a track, the
// progress arc (clockwise from twelve o'clock), the exercise arc (the other
// way), hatched overage once the goal is passed, and a title over a subtitle
// in the middle. A pure value: it draws what its fields say, with no state
// and no animation of its own.
//
// How much is drawn depends on the progress p (1 = one full turn):
//   p <= 1 or NaN  track, exercise arc, progress arc with a rounded end (and a
//                  dark edge under it when progress and exercise meet);
//   1 < p < 2      the first lap in the foreground colour, then the overage
//                  p - 1 hatched with a rounded end and a dark edge;
//   p >= 2         the whole ring hatched.
#include "Platform/drawing/View.hpp"
#include "Widget/Calories/AnimatedCircularProgressViewConfig.hpp"

#include <string>

namespace qrv::widget {

struct AnimatedCircularProgressView {
    AnimatedCircularProgressViewConfig config;
    std::string title;
    std::string subtitle;
    double progress = 0;         // fraction of a turn; 1 = the goal
    double reverseProgress = 0;  // fraction of a turn drawn counter-clockwise (exercise)

    // How far past its rounded end the dark edge reaches, as a fraction of a turn.
    static constexpr double kEndShadowLength = 0.015;
    // The hatching of the overage.
    static constexpr double kStripeAngle = 35;
    static constexpr double kStripeWidth = 4;
    static constexpr double kStripeSpacing = 2;
    // Long figures shrink down to half their size before they would truncate.
    static constexpr double kTextMinimumScaleFactor = 0.5;

    platform::View body() const;
    operator platform::View() const { return body(); }  // NOLINT: the ring is used as a view
};

}  // namespace qrv::widget
