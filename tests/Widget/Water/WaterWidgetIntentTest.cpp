#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "Widget/Water/FloatParsing.hpp"
#include "Widget/Water/WaterWidgetIntent.hpp"

using namespace qrv::widget;
using qrv::platform::Date;
using qrv::platform::IntentRegistry;
using qrv::platform::IntentRequest;
using qrv::platform::ManualClock;

namespace {

TEST(FloatParsingTest, ReadsLikeThePlatformsDecimalParser) {
    struct Case {
        const char* text;
        std::optional<float> value;
    };
    const float inf = std::numeric_limits<float>::infinity();
    const Case cases[] = {
        {"250", 250.0f},       {"+5", 5.0f},
        {"1e3", 1000.0f},      {".5", 0.5f},
        {"5.", 5.0f},          {"0x1p3", 8.0f},
        {"0x1c.6", 28.375f},   {"inf", inf},
        {"-INF", -inf},        {"Infinity", inf},
        {"1e39", inf},         {"1e-50", 0.0f},
        {"0.1", 0.1f},         {"", std::nullopt},
        {" 5", std::nullopt},  {"5 ", std::nullopt},
        {".", std::nullopt},   {"1e", std::nullopt},
        {"1,5", std::nullopt}, {"\xD9\xA1", std::nullopt},  // Arabic-Indic digit one
        {"abc", std::nullopt},
    };
    for (const auto& c : cases) EXPECT_EQ(parseFloat(c.text), c.value) << '"' << c.text << '"';
    const auto nan = parseFloat("nan(0x10)");
    ASSERT_TRUE(nan);
    EXPECT_TRUE(std::isnan(*nan));
    EXPECT_FALSE(parseFloat(std::string_view("5\0", 2)));
}

// Keeps what it is handed instead of storing it.
struct RecordingWriter final : InteractiveWidgetDataCacheWriterProtocol {
    std::vector<InteractiveWaterData> records;
    InteractiveWriteResult write(const InteractiveWidgetData& record,
                                 InteractiveWidgetDataType type) override {
        EXPECT_EQ(type, InteractiveWidgetDataType::water);
        records.push_back(dynamic_cast<const InteractiveWaterData&>(record));
        return InteractiveWriteResult::stored;
    }
};

TEST(WaterWidgetIntentTest, EachRunHandsOneLenientlyReadRecordToTheWriter) {
    struct Case {
        const char* unit;
        const char* value;
        float amount;
        WaterWidgetUnit expectedUnit;
    };
    const Case cases[] = {
        {"ml", "250", 250.0f, WaterWidgetUnit::ml}, {"cups", "2", 2.0f, WaterWidgetUnit::cups},
        {"oz", "8", 8.0f, WaterWidgetUnit::oz},     {"ml", "a lot", 0.0f, WaterWidgetUnit::ml},
        {"ml", " 250", 0.0f, WaterWidgetUnit::ml},  {"ML", "250", 250.0f, WaterWidgetUnit::oz},
        {"", "1.5", 1.5f, WaterWidgetUnit::oz},     {"litres", "-3", -3.0f, WaterWidgetUnit::oz},
    };
    const Date now{754'000'000.5};
    ManualClock clock(now);
    for (const auto& c : cases) {
        RecordingWriter writer;
        WaterWidgetIntent intent(c.unit, c.value);
        intent.withClock(clock).withWriter(writer).perform();
        ASSERT_EQ(writer.records.size(), 1u) << c.unit << " " << c.value;
        EXPECT_EQ(writer.records[0], InteractiveWaterData(now, c.amount, c.expectedUnit))
            << c.unit << " " << c.value;
    }
}

// A tap hands the button's invocation to the registry, which rebuilds the intent from it.
TEST(WaterWidgetIntentTest, InvocationRebuildsTheSameIntent) {
    const auto invocation = WaterWidgetIntent("cups", "2").invocation();
    EXPECT_EQ(invocation.intentName, "WaterWidgetIntent");
    ASSERT_EQ(invocation.parameters.size(), 2u);
    EXPECT_EQ(invocation.parameters[0].name, "waterValue");
    EXPECT_EQ(invocation.parameters[1].name, "waterUnit");
    EXPECT_EQ(IntentRegistry::make(invocation)->invocation(), invocation);
    // Without parameters: the plain intent, nothing in ounces.
    EXPECT_EQ(IntentRegistry::make(IntentRequest{"WaterWidgetIntent", {}})->invocation(),
              WaterWidgetIntent("oz", "0").invocation());
    EXPECT_EQ(WaterWidgetIntent().invocation(), WaterWidgetIntent("oz", "0").invocation());
    EXPECT_FALSE(IntentRegistry::perform(IntentRequest{"NoSuchIntent", {}}));
}

}  // namespace
