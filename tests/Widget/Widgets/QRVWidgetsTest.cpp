// The bundle and the three widget definitions: what is offered on which
// system version, in which order, with which margins and texts, the deep link
// the macronutrients definition puts on its whole widget, and that a
// definition draws only its own entries. Each widget's families are drawn,
// one image each, by the pixel golden test.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Platform/locale/Locale.hpp"
#include "Widget/Cache/CaloriesConsumedDataEntry.hpp"
#include "Widget/Cache/MacronutrientsDataEntry.hpp"
#include "Widget/Widgets/QRVWidgets.hpp"
#include "tests/Widget/Shared/WidgetGoldenSupport.hpp"

using namespace qrv::widget;
using namespace qrv::platform;
using qrv::widget::testing::recorded;

namespace {

std::vector<std::string> kinds(const std::vector<WidgetConfiguration>& widgets) {
    std::vector<std::string> out;
    for (const auto& widget : widgets) out.push_back(widget.kind());
    return out;
}

const WidgetConfiguration* find(const std::vector<WidgetConfiguration>& widgets, std::string_view kind) {
    for (const auto& widget : widgets)
        if (widget.kind() == kind) return &widget;
    return nullptr;
}

}  // namespace

TEST(QRVWidgetsTest, WidgetsOfferedOnEachSystemVersion) {
    const std::vector<std::string> all{"com.qrv.widget.Water", "com.qrv.widget.CaloriesConsumed",
                                       "com.qrv.widget.Macronutrients"};
    EXPECT_EQ(kinds(QRVWidgets{}.body(16)),
              (std::vector<std::string>{"com.qrv.widget.CaloriesConsumed", "com.qrv.widget.Macronutrients"}));
    EXPECT_EQ(kinds(QRVWidgets{}.body(17)), all);
    EXPECT_EQ(kinds(QRVWidgets{}.body(18)), all);

    // Margins are the platform's before 17 and the views' own from 17 on.
    for (const auto& widget : QRVWidgets{}.body(16)) EXPECT_FALSE(widget.contentMarginsAreDisabled()) << widget.kind();
    for (const auto& widget : QRVWidgets{}.body(17)) EXPECT_TRUE(widget.contentMarginsAreDisabled()) << widget.kind();
}

TEST(QRVWidgetsTest, GalleryTextsComeFromTheStringTable) {
    const auto widgets = QRVWidgets{}.body(17);
    const auto* calories = find(widgets, "com.qrv.widget.CaloriesConsumed");
    ASSERT_NE(calories, nullptr);
    {
        ScopedLocaleOverride english(Locale("en_GB"));
        EXPECT_EQ(calories->displayName(), "Calories");
        EXPECT_EQ(find(widgets, "com.qrv.widget.Water")->displayName(), "Water");
        EXPECT_NE(calories->description(), calories->descriptionKey());
    }
    ScopedLocaleOverride german(Locale("de_DE"));
    EXPECT_EQ(find(widgets, "com.qrv.widget.Macronutrients")->displayName(), "Makronährstoffe");
}

TEST(QRVWidgetsTest, MacronutrientsWidgetOpensItsScreenWhereverTapped) {
    const auto entry = WidgetEntry(MacronutrientsDataEntry::makeSample(Date{700000000}));
    const auto widgets = QRVWidgets{}.body(17);
    const auto* macros = find(widgets, "com.qrv.widget.Macronutrients");
    ASSERT_NE(macros, nullptr);
    for (auto family : {WidgetFamily::systemSmall, WidgetFamily::systemMedium, WidgetFamily::accessoryInline,
                        WidgetFamily::accessoryRectangular, WidgetFamily::accessoryCircular}) {
        const auto list = recorded(macros->content(entry, family, ColorScheme::light).body(),
                                   TimelineProviderContext::typicalDisplaySize(family), family);
        EXPECT_EQ(list.widgetURL, "qrv://qrv/widgets/macronutrients") << name(family);
    }
}

TEST(QRVWidgetsTest, AnEntryOfAnotherWidgetDrawsNothing) {
    const auto widgets = QRVWidgets{}.body(17);
    const auto calories = WidgetEntry(CaloriesConsumedDataEntry::makeSample(Date{700000000}));
    const auto* water = find(widgets, "com.qrv.widget.Water");
    ASSERT_NE(water, nullptr);
    const auto nothing =
        recorded(water->content(calories, WidgetFamily::systemSmall, ColorScheme::light).body(), {158, 158});
    EXPECT_TRUE(nothing.ops.empty());
}
