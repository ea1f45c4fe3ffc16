#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <variant>

#include "Platform/coding/JSONDecoder.hpp"

using namespace qrv::platform;

namespace {

template <class T, class Read>
DecodingResult<T> readField(const std::string& token, Read read) {
    std::string doc = R"({"other": 1, "v": )" + token + "}";
    return decodeJSON<T>(bytesOf(doc), [&](const JSONValue& root) { return read(root.keyedContainer()["v"]); });
}

DecodingResult<float> asFloat(const std::string& t) {
    return readField<float>(t, [](const JSONValue& v) { return v.decodeFloat(); });
}
DecodingResult<double> asDouble(const std::string& t) {
    return readField<double>(t, [](const JSONValue& v) { return v.decodeDouble(); });
}
DecodingResult<std::int64_t> asInt(const std::string& t) {
    return readField<std::int64_t>(t, [](const JSONValue& v) { return v.decodeInt(); });
}

constexpr auto kCorrupt = DecodingErrorKind::dataCorrupted;
constexpr auto kMismatch = DecodingErrorKind::typeMismatch;
constexpr auto kNotFound = DecodingErrorKind::valueNotFound;

// An expected outcome: a value, or the error kind.
template <class T>
using Outcome = std::variant<T, DecodingErrorKind>;

template <class T>
void expectOutcome(const DecodingResult<T>& result, const Outcome<T>& expected, const std::string& token) {
    if (std::holds_alternative<DecodingErrorKind>(expected)) {
        ASSERT_FALSE(result) << token << " decoded to " << result.value();
        EXPECT_EQ(result.error().kind, std::get<DecodingErrorKind>(expected)) << token << ": " << result.error().describe();
    } else {
        ASSERT_TRUE(result) << token << ": " << result.error().describe();
        T want = std::get<T>(expected);
        EXPECT_EQ(result.value(), want) << token;
        EXPECT_EQ(std::signbit(static_cast<double>(result.value())), std::signbit(static_cast<double>(want))) << token;
    }
}

}  // namespace

TEST(JSONNumbers, EachTokenAsFloatDoubleAndInt) {
    struct Row {
        std::string token;
        Outcome<float> asFloat;
        Outcome<double> asDouble;
        Outcome<std::int64_t> asInt;
    };
    const float fltMax = std::numeric_limits<float>::max();
    const Row rows[] = {
        {"24", 24.0f, 24.0, 24},
        {"0.1", 0.1f, 0.1, kCorrupt},
        {"16777217", 16777216.0f, 16777217.0, 16777217},
        {"1e39", kCorrupt, 1e39, kCorrupt},
        {"1e-46", kCorrupt, 1e-46, kCorrupt},
        {"1e-40", 1e-40f, 1e-40, kCorrupt},  // subnormal float: accepted
        {"1e-400", kCorrupt, kCorrupt, kCorrupt},  // simdjson says 0; the digits say underflow
        {"0e5", 0.0f, 0.0, 0},
        {"-0", -0.0f, -0.0, 0},
        {"3.4028235e38", fltMax, 3.4028235e38, kCorrupt},
        {"3.4028235677973366e38", fltMax, 3.4028235677973366e38, kCorrupt},  // just below the midpoint to infinity
        {"340282356779733661637539395458142568448", kCorrupt, 3.4028235677973366e38, kCorrupt},  // the midpoint
        // The double nearest these texts is the float midpoint 2^24+1; only the text decides.
        {"16777217.000000000000000001", 16777218.0f, 16777217.0, 16777217},
        {"16777216.999999999999999999", 16777216.0f, 16777217.0, 16777217},
        {"1.0", 1.0f, 1.0, 1},
        {"1e2", 100.0f, 100.0, 100},
        {"1.5", 1.5f, 1.5, kCorrupt},
        {"1e-1", 0.1f, 0.1, kCorrupt},
        {"1.0000000000000001", 1.0f, 1.0, 1},
        {"9223372036854775807", 9223372036854775807.0f, 9223372036854775807.0, std::numeric_limits<std::int64_t>::max()},
        {"-9223372036854775808", -9223372036854775808.0f, -9223372036854775808.0, std::numeric_limits<std::int64_t>::min()},
        {"9223372036854775808", 9223372036854775808.0f, 9223372036854775808.0, kCorrupt},
        {"9007199254740993.5", 9007199254740994.0f, 9007199254740994.0, 9007199254740993},
        {"100000000000000000000000", 1e23f, 1e23, kCorrupt},  // beyond 64 bits
        {"\"1\"", kMismatch, kMismatch, kMismatch},
        {"true", kMismatch, kMismatch, kMismatch},
        {"[1]", kMismatch, kMismatch, kMismatch},
        {"null", kNotFound, kNotFound, kNotFound},
    };
    for (const auto& row : rows) {
        expectOutcome(asFloat(row.token), row.asFloat, row.token + " as Float");
        expectOutcome(asDouble(row.token), row.asDouble, row.token + " as Double");
        expectOutcome(asInt(row.token), row.asInt, row.token + " as Int");
    }
}

TEST(JSONNumbers, UnrepresentableNumbersReportAtTheTopLevelWithTheirPathInTheDetail) {
    auto result = asFloat("1e39");
    ASSERT_FALSE(result);
    EXPECT_TRUE(result.error().codingPath.empty());
    EXPECT_EQ(result.error().debugDescription, "The given data was not valid JSON.");
    EXPECT_NE(result.error().underlyingError.find("at v "), std::string::npos) << result.error().underlyingError;
    EXPECT_NE(result.error().underlyingError.find("Float"), std::string::npos);
}

TEST(JSONShape, ErrorsCarryTheirKindAndPath) {
    struct Row {
        const char* doc;
        DecodingErrorKind kind;
        const char* path;
    };
    // The reader below wants {"a": {"b": [<bool>, <string>]}}.
    const Row rows[] = {
        {R"({"a": {"b": [null, "x"]}})", kMismatch, "a.b[0]"},  // null for Bool is a type mismatch
        {R"({"a": {"b": [true, null]}})", kNotFound, "a.b[1]"},
        {R"({"a": {"b": [1, "x"]}})", kMismatch, "a.b[0]"},
        {R"({"a": {"b": [true]}})", kNotFound, "a.b[1]"},
        {R"({"a": {"c": []}})", DecodingErrorKind::keyNotFound, "a"},
        {R"({"a": null})", kNotFound, "a"},
        {R"({"a": []})", kMismatch, "a"},
        {R"({"a": {"b": {}}})", kMismatch, "a.b"},
        {R"([])", kMismatch, "(top level)"},
        {R"({"a": {"b": [true, "x"]})", kCorrupt, "(top level)"},  // unbalanced
        {R"({"a": {"b": [tru, "x"]}})", kCorrupt, "(top level)"},
        {R"({"z": 1e400, "a": {"b": [true, "x"]}})", kCorrupt, "(top level)"},
        {"", kCorrupt, "(top level)"},
    };
    for (const auto& row : rows) {
        auto result = decodeJSON<std::string>(bytesOf(row.doc), [](const JSONValue& root) {
            auto b = root.keyedContainer()["a"].keyedContainer()["b"].unkeyedContainer();
            bool flag = b.next().decodeBool();
            return std::string(flag ? "yes " : "no ") + b.next().decodeString();
        });
        ASSERT_FALSE(result) << row.doc;
        EXPECT_EQ(result.error().kind, row.kind) << row.doc << ": " << result.error().describe();
        EXPECT_EQ(result.error().pathText(), row.path) << row.doc;
    }
}

TEST(JSONShape, FirstOccurrenceOfAKeyWinsAndUnknownKeysAreIgnored) {
    const std::string doc = R"({"extra": {"deep": [null]}, "a": "first", "a": "second", "n": 1, "n": "text"})";
    auto result = decodeJSON<std::string>(bytesOf(doc), [](const JSONValue& root) {
        auto object = root.keyedContainer();
        return object.decodeString("a") + " " + std::to_string(object.decodeInt("n"));
    });
    ASSERT_TRUE(result) << result.error().describe();
    EXPECT_EQ(result.value(), "first 1");
}

TEST(JSONShape, EscapedKeysAndDatesFromAnyNumber) {
    // The key is spelled with an escape; its number needs the text (-0) to be read.
    const std::string doc = R"({"d\u0061te": -0, "w": 754000000.5, "i": 754000000})";
    auto result = decodeJSON<std::vector<Date>>(bytesOf(doc), [](const JSONValue& root) {
        auto o = root.keyedContainer();
        return std::vector<Date>{o.decodeDate("date"), o.decodeDate("w"), o.decodeDate("i")};
    });
    ASSERT_TRUE(result) << result.error().describe();
    EXPECT_TRUE(std::signbit(result.value()[0].timeIntervalSinceReferenceDate));
    EXPECT_EQ(result.value()[1], Date{754000000.5});
    EXPECT_EQ(result.value()[2], Date{754000000});
    auto text = decodeJSON<Date>(bytesOf(R"({"d": "2001-01-01"})"),
                                 [](const JSONValue& root) { return root.keyedContainer().decodeDate("d"); });
    ASSERT_FALSE(text);
    EXPECT_EQ(text.error().kind, kMismatch);
}
