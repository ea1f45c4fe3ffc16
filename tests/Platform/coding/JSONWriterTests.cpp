#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "Platform/coding/FloatDescription.hpp"
#include "Platform/coding/JSONWriter.hpp"

using namespace qrv::platform;

TEST(FloatDescription, ShortestDigitsInThePlatformsLayout) {
    struct FloatRow {
        float value;
        const char* text;
    };
    const FloatRow floats[] = {
        {250.0f, "250.0"},         {0.1f, "0.1"},          {1e10f, "1e+10"},       {1e8f, "1e+08"},
        {16777216.0f, "16777216.0"}, {16777218.0f, "1.6777218e+07"}, {0.0001f, "0.0001"}, {0.00009f, "9e-05"},
        {1.5e-5f, "1.5e-05"},     {123456.7f, "123456.7"}, {0.0f, "0.0"},          {-0.0f, "-0.0"},
        {-24.5f, "-24.5"},        {1e-40f, "1e-40"},      {3.4028235e38f, "3.4028235e+38"},
        {std::numeric_limits<float>::infinity(), "inf"}, {std::nanf(""), "nan"},
    };
    for (const auto& row : floats) EXPECT_EQ(floatDescription(row.value), row.text) << row.text;

    struct DoubleRow {
        double value;
        const char* text;
    };
    const DoubleRow doubles[] = {
        {1e16, "1e+16"},
        {9007199254740992.0, "9007199254740992.0"},
        {9223372036854775807.0, "9.223372036854776e+18"},
        {1e-5, "1e-05"},
        {0.33, "0.33"},
        {754000000.5, "754000000.5"},
        {-978307200.0, "-978307200.0"},
        {1e-300, "1e-300"},
    };
    for (const auto& row : doubles) EXPECT_EQ(doubleDescription(row.value), row.text) << row.text;
}

TEST(JSONWriter, WritesCompactlyAsThePlatformEncoderDoes) {
    JSONWriter w;
    w.beginObject()
        .key("s").string("a/b \"q\" \\ \b\f\n\r\t\x01\x1f\x7f é")
        .key("f").number(24.0f)
        .key("g").number(0.1f)
        .key("h").number(1e10f)
        .key("d").number(1e16)
        .key("e").number(1e-5)
        .key("z").number(-0.0)
        .key("t").date(Date{754000000})
        .key("i").integer(-3)
        .key("a").beginArray().boolean(true).boolean(false).null().beginObject().endObject().endArray()
        .key("x/y").beginArray().endArray()
        .endObject();
    EXPECT_EQ(w.text(),
              R"({"s":"a\/b \"q\" \\ \b\f\n\r\t\u0001\u001f)"
              "\x7f"
              R"( é","f":24,"g":0.1,"h":1e+10,"d":1e+16,"e":1e-05,"z":-0,"t":754000000,"i":-3,)"
              R"("a":[true,false,null,{}],"x\/y":[]})");
}

TEST(JSONWriter, RefusesWhatJSONCannotCarry) {
    JSONWriter w;
    w.beginArray();
    EXPECT_THROW(w.number(std::numeric_limits<double>::quiet_NaN()), EncodingError);
    EXPECT_THROW(w.number(std::numeric_limits<float>::infinity()), EncodingError);
    JSONWriter keyless;
    keyless.beginObject();
    EXPECT_THROW(keyless.integer(1), std::logic_error);
}
