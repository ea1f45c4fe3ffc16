#pragma once
// The calories widget's content: one layout per widget family, each with the
// deep link of that family, and the log-in prompt instead of figures when the
// app has no signed-in user.
//
//   systemSmall, systemMedium  the progress ring with the remaining energy over
//                              the food-search (and barcode) buttons; where
//                              the widget is wide enough, the base goal, food
//                              and exercise rows beside them
//   accessoryCircular          an open gauge (opening at the bottom) around the
//                              remaining figure
//   accessoryRectangular       remaining energy in bold, then food and exercise
//   accessoryInline            "<remaining> <subtitle>" on one line
#include <string>

#include "Platform/drawing/View.hpp"
#include "Platform/timeline/WidgetFamily.hpp"
#include "Widget/Calories/AnimatedCircularProgressViewConfig.hpp"
#include "Widget/Calories/CaloriesConsumedWidgetViewModel.hpp"

namespace qrv::widget {

struct CaloriesConsumedWidgetView {
    CaloriesConsumedWidgetViewModel viewModel;
    platform::WidgetFamily sizeFamily = platform::WidgetFamily::systemSmall;

    // Where a tap on the widget leads, by family ("qrv://qrv/widgets/calories_small", ...).
    static std::string deepLink(platform::WidgetFamily family);
    static constexpr const char* kFoodSearchLink = "qrv://qrv/widgets/food_search";
    static constexpr const char* kBarcodeLink = "qrv://qrv/widgets/barcode";

    // The circular gauge: two arcs of 0.67 of a turn, turned so that the gap
    // sits at the bottom, inside a small inset.
    static constexpr double kGaugeArcLength = 0.67;
    static constexpr double kGaugeRotationRadians = 2.6179938779914944;  // 150°
    static constexpr double kGaugeLineWidth = 5;
    static constexpr double kGaugeInset = 2.5;
    static constexpr double kGaugeTrackOpacity = 0.7;
    // How much of a turn the gauge's white arc covers for a progress: its share
    // of the 0.67 arc, the whole arc from the goal on (and for a progress that
    // is not a number).
    static double gaugeArcFraction(double progress);

    // The ring's proportions to the height it is laid out in.
    static constexpr double kRingHeightRatio = 122.0 / 166.0;
    static constexpr double kTrackWidthRatio = 8.0 / 166.0;
    static constexpr double kButtonsHeightRatio = 0.15;

    // The home-screen ring's settings for a layout height.
    static AnimatedCircularProgressViewConfig ringConfiguration(double height);

    platform::View body() const;
    operator platform::View() const { return body(); }  // NOLINT: used as a view

  private:
    platform::View homeScreen() const;
    platform::View circular() const;
    platform::View rectangular() const;
    platform::View inlineText() const;
};

}  // namespace qrv::widget
