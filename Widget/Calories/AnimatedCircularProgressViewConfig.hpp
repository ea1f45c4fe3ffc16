#pragma once
// How a progress ring looks: the colours of its track and arcs, the stroke
// width, and the fonts and colours of the texts in its middle. A plain value;
// the calories and macronutrient widgets fill it from the palette and the
// type scale, and the ring view draws with it.
#include <string>

#include "Platform/drawing/Color.hpp"
#include "Platform/drawing/Font.hpp"

namespace qrv::widget {

struct AnimatedCircularProgressViewConfig {
    // The full track under the arcs.
    platform::Color trackBackgroundColor;
    // The progress arc, and the whole first lap once progress passes 1.
    platform::Color trackForegroundColor;
    // Stripe colour of the overage arc.
    platform::Color trackOverageForegroundColor;
    // Ground colour of the overage arc.
    platform::Color trackOverageBackgroundColor;
    // Stroke width of every arc, in points.
    double trackWidth = 0;
    // Prefix of the accessibility identifiers of the title and subtitle
    // ("<prefix>_progressViewTitle", "<prefix>_progressViewSubtitle").
    std::string textAccessibilityIdPrefix;
    platform::Font titleFont;
    platform::Color titleColor;
    platform::Font subtitleFont;
    platform::Color subtitleColor;

    std::string titleAccessibilityId() const { return textAccessibilityIdPrefix + "_progressView" + "Title"; }
    std::string subtitleAccessibilityId() const {
        return textAccessibilityIdPrefix + "_progressView" + "Subtitle";
    }

    friend bool operator==(const AnimatedCircularProgressViewConfig&,
                           const AnimatedCircularProgressViewConfig&) = default;
};

}  // namespace qrv::widget
