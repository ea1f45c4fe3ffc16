#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>
#include <string>

#include "Platform/coding/JSONDecoder.hpp"
#include "Platform/store/PropertyList.hpp"
#include "Widget/Cache/InteractiveWaterData.hpp"
#include "Widget/Cache/InteractiveWidgetDataCacheReader.hpp"
#include "Widget/Cache/InteractiveWidgetDataCacheWriter.hpp"
#include "tests/Platform/store/StoreTestSupport.hpp"

using namespace qrv::widget;
using qrv::platform::bytesOf;
using qrv::platform::Date;
using qrv::platform::PropertyListValue;
using qrv::platform::UserDefaults;

namespace {

constexpr std::string_view kKey = "WaterInteractiveData";

PropertyListValue::Data dataOf(std::string_view json) { return {json.begin(), json.end()}; }
std::string textOf(const PropertyListValue::Data& data) { return {data.begin(), data.end()}; }

TEST(InteractiveWaterDataCodingTest, DecodesOnlyCompleteRecords) {
    struct Case {
        const char* json;
        bool decodes;
    };
    const Case cases[] = {
        {R"([])", true},
        {R"([{"date":754000000,"waterValue":250,"waterUnit":"ml"}])", true},
        {R"([{"waterUnit":"cups","extra":null,"waterValue":2.5,"date":-1.5}])", true},
        {R"([{"date":754000000,"waterValue":250}])", false},                    // key missing
        {R"([{"date":754000000,"waterValue":250,"waterUnit":"ML"}])", false},   // unit is case-sensitive
        {R"([{"date":754000000,"waterValue":1e39,"waterUnit":"ml"}])", false},  // beyond a float
        {R"({"date":754000000,"waterValue":250,"waterUnit":"ml"})", false},     // not a list
    };
    for (const auto& c : cases)
        EXPECT_EQ(decodeInteractiveWaterDataList(bytesOf(c.json)).has_value(), c.decodes) << c.json;
}

TEST(InteractiveWaterDataCodingTest, EncodesCompactlyAndRoundTrips) {
    const InteractiveWaterDataList records{{Date{754000000.5}, 250, WaterWidgetUnit::ml},
                                           {Date{-978307200}, 0.1f, WaterWidgetUnit::cups},
                                           {Date{1e-5}, 8, WaterWidgetUnit::oz}};
    const auto bytes = encodeInteractiveWaterDataList(records);
    EXPECT_EQ(textOf(bytes), R"([{"date":754000000.5,"waterValue":250,"waterUnit":"ml"},)"
                             R"({"date":-978307200,"waterValue":0.1,"waterUnit":"cups"},)"
                             R"({"date":1e-05,"waterValue":8,"waterUnit":"oz"}])");
    EXPECT_EQ(decodeInteractiveWaterDataList(bytes), records);
    EXPECT_THROW(encodeInteractiveWaterDataList(
                     {{Date{0}, std::numeric_limits<float>::quiet_NaN(), WaterWidgetUnit::oz}}),
                 InteractiveDataEncodingError);
}

// Some other kind of record, to see what the writer does with it.
struct OtherData final : InteractiveWidgetData {};

// The shared instances' strategies on a scratch store, so the key is the one the app reads.
class InteractiveCacheTest : public ::testing::Test {
  protected:
    InteractiveWidgetDataCacheReader reader() const {
        return InteractiveWidgetDataCacheReader(InteractiveWidgetDataCacheReader::shared().strategies(),
                                                store_);
    }
    InteractiveWidgetDataCacheWriter writer() const {
        return InteractiveWidgetDataCacheWriter(InteractiveWidgetDataCacheWriter::shared().strategies(),
                                                store_);
    }

    qrv::test::ScratchDirectory dir_;
    std::shared_ptr<UserDefaults> store_ = UserDefaults::atPath(dir_.path() / "store.plist");
};

TEST_F(InteractiveCacheTest, WritesAppendInOrderAndReadBackEveryDay) {
    // Nothing stored, nothing that decodes, or no strategy: no list.
    for (const auto& value : {PropertyListValue("[]"), PropertyListValue(std::int64_t{3}),
                              PropertyListValue(dataOf("not json"))}) {
        store_->set(kKey, value);
        EXPECT_FALSE(reader().readWater());
    }
    store_->removeObject(kKey);
    EXPECT_FALSE(reader().readWater());
    auto w = writer();
    const InteractiveWaterDataList taps{{Date{754000000}, 250, WaterWidgetUnit::ml},
                                        {Date{754000000 - 86400}, 2, WaterWidgetUnit::cups},  // yesterday
                                        {Date{754000001}, 8, WaterWidgetUnit::oz},
                                        {Date{754000002}, 250, WaterWidgetUnit::ml}};
    for (std::size_t i = 0; i < taps.size(); ++i) {
        EXPECT_EQ(w.write(taps[i], InteractiveWidgetDataType::water), InteractiveWriteResult::stored);
        EXPECT_EQ(reader().readWater(), InteractiveWaterDataList(taps.begin(), taps.begin() + i + 1));
    }
    EXPECT_FALSE(
        InteractiveWidgetDataCacheReader({}, store_).read(InteractiveWidgetDataType::water).has_value());
}

TEST_F(InteractiveCacheTest, UnreadableListStartsOverAndIsKeptBesideTheStore) {
    const std::string damaged = R"([{"date":1,"waterValue":250,"waterUnit":"ml"},)"
                                R"({"date":2,"waterValue":9,"waterUnit":"litres"},)"
                                R"({"date":3,"waterValue":8,"waterUnit":"oz"}])";
    const PropertyListValue stored[] = {PropertyListValue(dataOf(damaged)),
                                        PropertyListValue(dataOf("\x01garbage")),
                                        PropertyListValue("a string")};
    const InteractiveWaterData tap{Date{10}, 250, WaterWidgetUnit::ml};
    for (const auto& value : stored) {
        for (const auto& file : std::filesystem::directory_iterator(dir_.path()))
            if (file.path().filename() != "store.plist") std::filesystem::remove(file.path());
        store_->set(kKey, value);
        ::testing::internal::CaptureStdout();
        ::testing::internal::CaptureStderr();
        EXPECT_EQ(writer().write(tap, InteractiveWidgetDataType::water), InteractiveWriteResult::stored);
        const std::string out = ::testing::internal::GetCapturedStdout();
        const std::string err = ::testing::internal::GetCapturedStderr();
        // The tap alone: none of the old records counted, so none come back.
        EXPECT_EQ(reader().readWater(), InteractiveWaterDataList{tap});
        EXPECT_EQ(store_->dictionaryRepresentation().size(), 1u) << "no other key of the store is written";
        // The old bytes are kept in one file beside the store, and one line on
        // standard error names it; standard output stays the reader's.
        std::vector<std::filesystem::path> kept;
        for (const auto& file : std::filesystem::directory_iterator(dir_.path()))
            if (file.path().filename().string().starts_with("store.plist.WaterInteractiveData-unreadable-"))
                kept.push_back(file.path());
        ASSERT_EQ(kept.size(), 1u);
        EXPECT_EQ(qrv::test::readBytes(kept[0]),
                  value.dataValue() ? *value.dataValue() : qrv::platform::PropertyList::encode(value));
        EXPECT_EQ(out, "");
        EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1) << err;
        EXPECT_NE(err.find(kept[0].string()), std::string::npos) << err;
    }
}

TEST_F(InteractiveCacheTest, OtherKindsRemoveTheListAndBadRecordsLeaveItAlone) {
    auto w = writer();
    const InteractiveWaterData tap{Date{10}, 250, WaterWidgetUnit::ml};
    ASSERT_EQ(w.write(tap, InteractiveWidgetDataType::water), InteractiveWriteResult::stored);

    const InteractiveWaterData notANumber{Date{11}, std::numeric_limits<float>::infinity(),
                                          WaterWidgetUnit::ml};
    EXPECT_EQ(w.write(notANumber, InteractiveWidgetDataType::water), InteractiveWriteResult::failed);
    EXPECT_EQ(reader().readWater(), InteractiveWaterDataList{tap});

    InteractiveWidgetDataCacheWriter noStrategies({}, store_);
    EXPECT_EQ(noStrategies.write(tap, InteractiveWidgetDataType::water), InteractiveWriteResult::noStrategy);
    EXPECT_EQ(reader().readWater(), InteractiveWaterDataList{tap});

    EXPECT_EQ(w.write(OtherData{}, InteractiveWidgetDataType::water), InteractiveWriteResult::removed);
    EXPECT_FALSE(store_->object(kKey));
}

}  // namespace
