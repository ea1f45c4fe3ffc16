#include <gtest/gtest.h>

#include <string>

#include "Platform/coding/JSONDecoder.hpp"
#include "Widget/Providers/WidgetBackgroundFetchAnalytics.hpp"
#include "tests/Widget/Cache/ReaderTestSupport.hpp"

namespace qrv::widget {
namespace {

using Value = platform::PropertyListValue;

TEST(WidgetBackgroundFetchAnalyticsTest, EventsAreAppendedAsBlobsAndMalformedListsReplaced) {
    const Value blob = Value::Data{'{', '}'};
    struct Case {
        const char* name;
        std::optional<Value> stored;
        std::size_t keptBefore;  // elements of the old value still there
    };
    const Case cases[] = {
        {"nothing", std::nullopt, 0},
        {"a text element", Value(Value::Array{blob, Value("oops")}), 0},
        {"not a list", Value("widget_calories"), 0},
        {"an empty list", Value(Value::Array{}), 0},
        {"blobs, even undecodable ones", Value(Value::Array{blob, blob}), 2},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        test::ReaderWorld world;
        if (c.stored) world.store->set("widget_events", *c.stored);
        const WidgetBackgroundFetchAnalytics analytics(world.store, world.clock);
        for (int i = 0; i < 10; ++i) {
            world.clock->set(platform::Date{double(i)});
            analytics.recordFetch(i % 2 ? "widget_macros" : "widget_calories", "medium");
        }
        const auto stored = world.store->object("widget_events");
        const auto& list = *stored->arrayValue();
        ASSERT_EQ(list.size(), c.keptBefore + 10);
        // Each event is one compact JSON blob, as the app reads them.
        const auto& first = *list[c.keptBefore].dataValue();
        EXPECT_EQ(std::string(first.begin(), first.end()),
                  R"({"widgetName":"widget_calories","widgetSize":"medium","date":0})");
        for (int i = 0; i < 10; ++i) {
            const auto event = WidgetFetchEvent::decode(*list[c.keptBefore + i].dataValue()).value();
            EXPECT_EQ(event.date, platform::Date{double(i)});
            EXPECT_EQ(event.widgetName, i % 2 ? "widget_macros" : "widget_calories");
        }
    }
}

TEST(WidgetFetchEventTest, DecodingNeedsAllThreeKeysInAnyOrder) {
    for (const char* json : {R"({"widgetName":"widget_calories","widgetSize":"small"})",
                             R"({"widgetName":"widget_calories","widgetSize":null,"date":0})", R"([])"})
        EXPECT_FALSE(WidgetFetchEvent::decode(platform::bytesOf(json))) << json;
    EXPECT_EQ(WidgetFetchEvent::decode(
                  platform::bytesOf(R"({"date":-1.5,"widgetSize":"medium","x":[],"widgetName":"w"})"))
                  .value(),
              (WidgetFetchEvent{"w", "medium", platform::Date{-1.5}}));
}

}  // namespace
}  // namespace qrv::widget
