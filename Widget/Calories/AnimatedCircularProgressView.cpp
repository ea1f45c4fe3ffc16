#include "Widget/Calories/AnimatedCircularProgressView.hpp"

#include "QRVUICatalog/Colors/QRVColor.hpp"
#include "Widget/Shared/StripesView.hpp"

#include <cmath>
#include <vector>

namespace qrv::widget {

using namespace qrv::platform;

namespace {

// An arc of the circle that fills the view, between two fractions of a turn
// measured clockwise from twelve o'clock. The circle's outline starts at three
// o'clock, so it is trimmed first and then turned back a quarter.
Shape arc(double from, double to) { return Circle().trim(from, to).rotation(Angle::degrees(-90)); }

// Whether an arc from `from` to `to` shows anything (false for NaN too).
bool visible(double from, double to) { return to > from; }

class RingPainter {
public:
    explicit RingPainter(const AnimatedCircularProgressViewConfig& config) : config_(config) {}

    StrokeStyle stroke(LineCap cap) const {
        return StrokeStyle{.lineWidth = config_.trackWidth, .lineCap = cap, .lineJoin = LineJoin::miter, .miterLimit = 10};
    }

    View fullCircle(const Color& color) const { return Circle().stroke(color, stroke(LineCap::butt)); }

    // An arc from twelve o'clock to `end` that starts flat and ends round: drawn
    // flat over its whole length, then again round-capped over its second half,
    // so that only the far end gets the round cap.
    View roundedEnd(const Color& color, double end) const {
        if (!visible(0, end)) return EmptyView();
        return ZStack({arc(0, end).stroke(color, stroke(LineCap::butt)),
                       arc(end / 2, end).stroke(color, stroke(LineCap::round))});
    }

    // A dark edge just past a rounded end: the arc itself in the shadow colour
    // plus a short round-capped piece beyond it, drawn beneath the arc.
    View endShadow(double end) const {
        if (!visible(0, end)) return EmptyView();
        const Color& shadow = catalog::QRVColor::neutralsMidground2();
        return ZStack({arc(0, end).stroke(shadow, stroke(LineCap::butt)),
                       arc(end, end + AnimatedCircularProgressView::kEndShadowLength)
                           .stroke(shadow, stroke(LineCap::round))});
    }

    // Exercise runs counter-clockwise from twelve o'clock: the arc is mirrored
    // top to bottom (three o'clock stays put, clockwise becomes
    // counter-clockwise) before the quarter turn back to twelve.
    View exerciseArc(double fraction) const {
        if (!visible(0, fraction)) return EmptyView();
        return Circle()
            .trim(0, fraction)
            .scale(1, -1)
            .rotation(Angle::degrees(-90))
            .stroke(catalog::QRVColor::exercise(), stroke(LineCap::butt));
    }

    StripesView stripes() const {
        return StripesView{.backgroundColor = config_.trackOverageBackgroundColor,
                           .stripeColor = config_.trackOverageForegroundColor,
                           .stripeAngle = AnimatedCircularProgressView::kStripeAngle,
                           .stripeWidth = AnimatedCircularProgressView::kStripeWidth,
                           .stripeSpacing = AnimatedCircularProgressView::kStripeSpacing};
    }

    // The hatching shown only where the stroked arc would be: the mask is made
    // of opaque strokes, so it becomes a clip to the strokes' outline.
    View stripedRoundedEnd(double end) const {
        if (!visible(0, end)) return EmptyView();
        return stripes().body().mask(roundedEnd(Color::black(), end));
    }

    View stripedFullCircle() const { return stripes().body().mask(fullCircle(Color::black())); }

private:
    const AnimatedCircularProgressViewConfig& config_;
};

}  // namespace

View AnimatedCircularProgressView::body() const {
    const RingPainter ring(config);
    const double p = progress;
    // The accent group (the tint on a tinted home screen) is the amount the
    // ring shows: the progress and exercise arcs and the hatched overage. The
    // empty track stays in the default group, so the tinted arc reads against
    // it the way the coloured arc reads against the grey track in full colour.
    std::vector<View> layers;
    if (std::isnan(p) || p <= 1) {
        layers.push_back(ring.fullCircle(config.trackBackgroundColor));
        layers.push_back(ring.exerciseArc(reverseProgress).widgetAccentable());
        // The two arcs meet: a dark edge keeps the progress arc's end readable
        // against the exercise arc.
        if (p + reverseProgress >= 1) layers.push_back(ring.endShadow(p).widgetAccentable());
        layers.push_back(ring.roundedEnd(config.trackForegroundColor, p).widgetAccentable());
    } else if (p < 2) {
        const double overage = p - 1;
        layers.push_back(ring.fullCircle(config.trackForegroundColor).widgetAccentable());
        layers.push_back(ring.endShadow(overage).widgetAccentable());
        layers.push_back(ring.stripedRoundedEnd(overage).widgetAccentable());
    } else {
        layers.push_back(ring.stripedFullCircle().widgetAccentable());
    }

    View labels = VStack({Text(title)
                              .font(config.titleFont)
                              .foregroundColor(config.titleColor)
                              .accessibilityIdentifier(config.titleAccessibilityId()),
                          Text(subtitle)
                              .font(config.subtitleFont)
                              .foregroundColor(config.subtitleColor)
                              .accessibilityIdentifier(config.subtitleAccessibilityId())},
                         HorizontalAlignment::center)
                      // One line each: a figure split over two lines reads as two
                      // numbers, so long ones shrink instead.
                      .lineLimit(1)
                      .minimumScaleFactor(kTextMinimumScaleFactor)
                      .padding();
    return ZStack({ZStack(std::move(layers)), labels});
}

}  // namespace qrv::widget
