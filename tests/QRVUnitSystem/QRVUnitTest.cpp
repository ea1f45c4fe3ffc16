#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

#include "QRVUnitSystem/QRVUnit.hpp"
#include "QRVUnitSystem/UnitSystemLoader.hpp"

using namespace qrv::units;

namespace {

class UnitSystemTest : public ::testing::Test {
  protected:
    // Every test starts from the library found next to the test program.
    void SetUp() override { reloadUnitSystem(std::string(QRV_BIN_DIR)); }
    void TearDown() override { reloadUnitSystem(); }
};

std::string format(int type, double value, int places, bool abbreviated = true) {
    auto unitValue = QRVUnitValue::initWithUnitType(type, value);
    if (!unitValue) return "<no value>";
    return unitValue->stringRepresentationToDecimalPlaces(places, abbreviated).value_or("<no text>");
}

TEST_F(UnitSystemTest, FormatsRoundingHalfAwayFromZero) {
    struct Case {
        int type;
        double value;
        int places;
        bool abbreviated;
        const char* text;
    };
    const Case cases[] = {
        {kQRVUnitTypeMillilitre, 250, 0, true, "250 ml"},
        {kQRVUnitTypeMillilitre, -249.5, 0, true, "-250 ml"},
        {kQRVUnitTypeMillilitre, 2.5, 0, true, "3 ml"},   // not to even
        {kQRVUnitTypeMillilitre, -0.4, 0, true, "0 ml"},  // no "-0"
        {kQRVUnitTypeUSCup, 1, 0, true, "1 cup"},
        {kQRVUnitTypeUSCup, 1, 1, true, "1.0 cups"},
        {kQRVUnitTypeUSCup, 0.25, 1, true, "0.3 cups"},
        {kQRVUnitTypeUSFluidOunce, 8.45, 1, true, "8.5 fl oz"},   // 8.4499999999999993 in binary
        {kQRVUnitTypeUSFluidOunce, 8.45f, 1, true, "8.4 fl oz"},  // a float widened is 8.44999980926...
        {kQRVUnitTypeGram, 1e-7, 0, true, "0 g"},
        {kQRVUnitTypeGram, 0.000951, 3, true, "0.001 g"},
        {kQRVUnitTypeUSFluidOunce, 9.96, 1, true, "10.0 fl oz"},
        {kQRVUnitTypeUSFluidOunce, 999.96, 1, false, "1000.0 fluid ounces"},
        {kQRVUnitTypeUSFluidOunce, 1, 0, false, "1 fluid ounce"},
        {kQRVUnitTypeMillilitre, 1e21, 0, true, "1000000000000000000000 ml"},
        {kQRVUnitTypeMillilitre, 0.05, 1, true, "0.1 ml"},
        {kQRVUnitTypeMillilitre, 0.15, 1, true, "0.2 ml"},
        {kQRVUnitTypeMillilitre, 123.456, 20, true, "123.45600000000000000000 ml"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(format(c.type, c.value, c.places, c.abbreviated), c.text) << c.value << " / " << c.places;
}

TEST_F(UnitSystemTest, RefusesWhatItCannotRepresent) {
    EXPECT_FALSE(QRVUnitValue::initWithUnitType(13, 1));
    EXPECT_FALSE(QRVUnitValue::initWithUnitType(18, 1));
    EXPECT_FALSE(
        QRVUnitValue::initWithUnitType(kQRVUnitTypeMillilitre, std::numeric_limits<double>::infinity()));
    EXPECT_FALSE(
        QRVUnitValue::initWithUnitType(kQRVUnitTypeMillilitre, std::numeric_limits<double>::quiet_NaN()));
    const auto ml = QRVUnitValue::initWithUnitType(kQRVUnitTypeMillilitre, 1);
    ASSERT_TRUE(ml);
    EXPECT_FALSE(ml->stringRepresentationToDecimalPlaces(-1, true));
    EXPECT_FALSE(ml->stringRepresentationToDecimalPlaces(21, true));
    EXPECT_FALSE(ml->convertToUnitValueWithUnitType(kQRVUnitTypeGram));
    EXPECT_FALSE(QRVUnitValue::initWithUnitType(kQRVUnitTypeGram, 1)
                     ->convertToUnitValueWithUnitType(kQRVUnitTypeUSCup));
    EXPECT_FALSE(ml->convertToUnitValueWithUnitType(99));
    // Overflowing a conversion is refused rather than answered with infinity.
    EXPECT_FALSE(QRVUnitValue::initWithUnitType(kQRVUnitTypeUSCup, 1e308)
                     ->convertToUnitValueWithUnitType(kQRVUnitTypeMillilitre));
}

TEST_F(UnitSystemTest, ConvertsVolumesWithUsCustomaryFactors) {
    struct Case {
        int from;
        double value;
        int to;
        double expected;
    };
    const Case cases[] = {
        {kQRVUnitTypeUSCup, 2, kQRVUnitTypeUSFluidOunce, 16},
        {kQRVUnitTypeUSFluidOunce, 8, kQRVUnitTypeUSCup, 1},
        {kQRVUnitTypeUSFluidOunce, 1, kQRVUnitTypeMillilitre, 29.5735295625},
        {kQRVUnitTypeUSCup, 1, kQRVUnitTypeMillilitre, 236.5882365},
        {kQRVUnitTypeMillilitre, 250, kQRVUnitTypeUSFluidOunce, 250 / 29.5735295625},
        {kQRVUnitTypeMillilitre, 250, kQRVUnitTypeMillilitre, 250},
    };
    for (const auto& c : cases) {
        auto converted =
            QRVUnitValue::initWithUnitType(c.from, c.value)->convertToUnitValueWithUnitType(c.to);
        ASSERT_TRUE(converted) << c.from << "->" << c.to;
        EXPECT_DOUBLE_EQ(converted->value(), c.expected) << c.from << "->" << c.to;
        EXPECT_EQ(converted->unitType(), c.to);
    }
    // Whole-unit relations stay exact, not merely close.
    EXPECT_EQ(QRVUnitValue::initWithUnitType(kQRVUnitTypeUSCup, 3)
                  ->convertToUnitValueWithUnitType(kQRVUnitTypeUSFluidOunce)
                  ->value(),
              24.0);
}

TEST_F(UnitSystemTest, UnitsAndRoundedText) {
    struct Case {
        int type;
        int places;
        double value;
        const char* rounded;
    };
    const Case cases[] = {
        {kQRVUnitTypeUSCup, 1, 2, "2.0"},           {kQRVUnitTypeMillilitre, 0, 249.5, "250"},
        {kQRVUnitTypeUSFluidOunce, 1, 8.45, "8.5"}, {kQRVUnitTypeGram, 0, 15.4, "15"},
        {kQRVUnitTypeGram, 0, 15.5, "16"},          {kQRVUnitTypeGram, 0, -15.5, "-16"},
    };
    for (const auto& c : cases) {
        auto value = QRVUnitValue::initWithUnitType(c.type, c.value);
        ASSERT_TRUE(value);
        auto unit = value->unit();
        ASSERT_TRUE(unit);
        EXPECT_EQ(unit->defaultDecimalPlaces(), c.places) << c.type;
        EXPECT_EQ(value->roundedValueAsString(), c.rounded) << c.type << " " << c.value;
    }
    EXPECT_EQ(QRVUnit::unitWithType(kQRVUnitTypeUSFluidOunce)->name(true, true), "fl oz");
    EXPECT_EQ(QRVUnit::unitWithType(kQRVUnitTypeMillilitre)->name(false, false), "milliliter");
}

TEST_F(UnitSystemTest, AnswersNothingWithoutTheLibrary) {
    ASSERT_TRUE(isUnitSystemAvailable());
    const auto made = QRVUnitValue::initWithUnitType(kQRVUnitTypeUSCup, 2);
    ASSERT_TRUE(made);

    reloadUnitSystem("/nonexistent");
    EXPECT_FALSE(isUnitSystemAvailable());
    EXPECT_NE(unitSystemStatus().find("/nonexistent"), std::string::npos);
    EXPECT_FALSE(QRVUnitValue::initWithUnitType(kQRVUnitTypeUSCup, 2));
    EXPECT_FALSE(QRVUnit::unitWithType(kQRVUnitTypeGram));
    // A value made while the library was there answers nothing once it is gone.
    EXPECT_FALSE(made->unit());
    EXPECT_FALSE(made->stringRepresentationToDecimalPlaces(1, true));
    EXPECT_FALSE(made->roundedValueAsString());
    EXPECT_FALSE(made->convertToUnitValueWithUnitType(kQRVUnitTypeUSFluidOunce));

    unloadUnitSystem();
    EXPECT_FALSE(isUnitSystemAvailable());
    reloadUnitSystem(std::string(QRV_BIN_DIR) + "/libQRVUnitSystem.so");
    EXPECT_TRUE(isUnitSystemAvailable());
    EXPECT_EQ(made->stringRepresentationToDecimalPlaces(1, true), "2.0 cups");
}

TEST_F(UnitSystemTest, EnvironmentNamesTheOnlyPlaceToLook) {
    const std::string bin = QRV_BIN_DIR;
    ::setenv(kUnitSystemPathVariable, bin.c_str(), 1);
    EXPECT_EQ(unitSystemSearchPaths(), std::vector<std::string>{bin + "/libQRVUnitSystem.so"});
    reloadUnitSystem();
    EXPECT_TRUE(isUnitSystemAvailable());
    ::setenv(kUnitSystemPathVariable, "/nonexistent", 1);
    reloadUnitSystem();
    EXPECT_FALSE(isUnitSystemAvailable());
    ::unsetenv(kUnitSystemPathVariable);
    const auto paths = unitSystemSearchPaths();
    ASSERT_EQ(paths.size(), 2u);
    EXPECT_EQ(paths[0], bin + "/libQRVUnitSystem.so");  // next to the program first
}

TEST_F(UnitSystemTest, RefusesAFileThatIsNotTheUnitSystem) {
    reloadUnitSystem(std::string(QRV_TEST_DATA) + "/QRVUnitSystem/QRVUnitTest.cpp");
    EXPECT_FALSE(isUnitSystemAvailable());
    // The C library loads but lacks the interface.
    reloadUnitSystem("libc.so.6");
    EXPECT_FALSE(isUnitSystemAvailable());
}

TEST_F(UnitSystemTest, ExportsOnlyTheCInterface) {
    void* handle = dlopen((std::string(QRV_BIN_DIR) + "/libQRVUnitSystem.so").c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(handle, nullptr);
    EXPECT_NE(dlsym(handle, "QRVUnitValueFormat"), nullptr);
    EXPECT_EQ(dlsym(handle, "_ZN3qrv5units7library8findUnitEi"), nullptr);
    dlclose(handle);
}

}  // namespace
