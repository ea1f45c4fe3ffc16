#include "Platform/store/PropertyList.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "tests/Platform/store/StoreTestSupport.hpp"

namespace qrv::platform {
namespace {

using Value = PropertyListValue;

struct RoundTripCase {
    const char* name;
    Value value;
    // XML dates are written to the whole second, years 1 to 9999.
    bool exactInXml = true;
};

std::vector<RoundTripCase> roundTripCases() {
    return {
        {"empty data", Value(Value::Data{})},
        {"data with NUL and high bytes", Value(Value::Data{0x00, 0xff, 0x7b, 0x00})},
        {"true", Value(true)},
        {"false", Value(false)},
        {"zero", Value(0)},
        {"negative integer", Value(-42)},
        {"int64 min", Value(std::numeric_limits<std::int64_t>::min())},
        {"int64 max", Value(std::numeric_limits<std::int64_t>::max())},
        {"real", Value(0.1)},
        {"real not a float", Value(1.0 / 3.0)},
        {"negative real", Value(-2.5e-300)},
        {"empty string", Value("")},
        {"non-ASCII string", Value("Caf\u00e9 \u2713 \U0001F964")},
        {"date with a fraction", Value(Date{753000000.25}), false},
        {"date finer than a microsecond", Value(Date{753000000.0000001}), false},
        {"date a microsecond past a second", Value(Date{5.000123}), false},
        {"whole-second date", Value(Date{753000000})},
        {"date before 2001", Value(Date{-86400.5}), false},
        {"date in the last second before 2001", Value(Date{-0.5}), false},
        {"whole-second date before 2001", Value(Date{-86400})},
        {"date after 2038", Value(Date{63113904000.0})},
        {"date before 1933 (year 0)", Value(Date{-63114076800.0}), false},
        {"date beyond any calendar", Value(Date{1e300}), false},
        {"empty array", Value(Value::Array{})},
        {"empty dictionary", Value(Value::Dictionary{})},
        {"nested",
         Value(Value::Dictionary{
             {"a", Value(Value::Array{Value(1), Value("two"), Value(Value::Data{3}), Value(Date{4})})},
             {"b", Value(Value::Dictionary{{"c", Value(false)}, {"", Value(0.5)}})},
         })},
    };
}

TEST(StorePropertyList, RoundTripsEveryKindInBothFormats) {
    for (const auto& format : {PropertyList::Format::binary, PropertyList::Format::xml}) {
        for (const auto& row : roundTripCases()) {
            SCOPED_TRACE(std::string(row.name) + (format == PropertyList::Format::binary ? " (binary)" : " (xml)"));
            if (format == PropertyList::Format::xml && !row.exactInXml) {
                continue;
            }
            // Wrap in a dictionary as the store does, and also encode the value alone.
            const Value wrapped(Value::Dictionary{{"key", row.value}});
            EXPECT_EQ(PropertyList::decode(PropertyList::encode(wrapped, format)), wrapped);
            EXPECT_EQ(PropertyList::decode(PropertyList::encode(row.value, format)), row.value);
        }
    }
}

// A binary plist of {key: value} with the 'X' in key or value turned into NUL
// (in UTF-16 strings both bytes of the code unit).
std::string withNulInBinaryString(const std::string& key, const Value& value) {
    const auto bytes = PropertyList::encode(Value(Value::Dictionary{{key, value}}));
    std::string text(bytes.begin(), bytes.end());
    if (auto ascii = text.find('X'); ascii != std::string::npos && text[ascii - 1] != 0) {
        text[ascii] = '\0';
    } else if (auto wide = text.find(std::string("\0X", 2)); wide != std::string::npos) {
        text[wide + 1] = '\0';
    }
    return text;
}

TEST(StorePropertyList, RejectsWhatIsNotAPropertyList) {
    const std::vector<std::string> inputs = {
        std::string(),
        "hello",
        "bplist00",
        std::string("bplist00\xd1\x01\x02", 11),
        "<?xml version=\"1.0\"?><plist><dict><key>a</key>",
        "{\"a\":1}",
        // Strings holding NUL, which libplist cannot hand back.
        "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>a&#0;b</key><true/></dict></plist>",
        "<?xml version=\"1.0\"?><plist version=\"1.0\"><string>a&#x000;b</string></plist>",
        std::string("<?xml version=\"1.0\"?><plist version=\"1.0\"><string>a") + '\0' + "b</string></plist>",
        withNulInBinaryString("keyXkey", Value(1)),
        withNulInBinaryString("k", Value("valueXvalue")),
        withNulInBinaryString("k", Value("caf\u00e9X\u2713")),
    };
    for (const auto& input : inputs) {
        SCOPED_TRACE(input);
        const std::vector<std::uint8_t> bytes(input.begin(), input.end());
        EXPECT_THROW(PropertyList::decode(bytes), PropertyListError);
    }
}

TEST(StorePropertyList, RefusesValuesItCannotRepresent) {
    const std::vector<Value> values = {
        Value(std::string("a\0b", 3)),
        Value(Value::Dictionary{{std::string("k\0", 2), Value(1)}}),
        Value("caf\xE9"),
        Value(Value::Dictionary{{"\x80", Value(1)}}),
        Value(Value::Array{Value("\xED\xA0\x80")}),  // a UTF-16 surrogate spelled in UTF-8
    };
    for (const auto& value : values) {
        EXPECT_THROW(PropertyList::encode(value), PropertyListError) << value.typeName();
        EXPECT_THROW(PropertyList::encode(value, PropertyList::Format::xml), PropertyListError);
    }
    for (const double seconds : {1e12, -63114076800.0, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_THROW(PropertyList::encode(Value(Date{seconds}), PropertyList::Format::xml), PropertyListError);
    }
}

// Files written elsewhere may hold text that is not UTF-8 (an ASCII-marked
// binary string with high bytes, raw Latin-1 in XML). Reading keeps the rest of
// the text and the file; writing it back is then stable.
TEST(StorePropertyList, ReadsMalformedTextAsReplacementCharacters) {
    const std::string xml = "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>k\xE9y</key>"
                            "<string>caf\xE9 \xF0\x9F\xA5\xA4</string></dict></plist>";
    // "bplist00", {a: "aXb"} with X = 0xE9 in an ASCII string, offsets, trailer.
    std::string binary("bplist00\xD1\x01\x02\x51\x61\x53\x61\xE9\x62\x08\x0B\x0D", 20);
    binary += std::string(6, '\0') + "\x01\x01" + std::string(7, '\0') + "\x03" + std::string(15, '\0') +
              "\x11";
    ASSERT_EQ(binary.size(), 52u);
    const std::vector<std::pair<std::string, Value>> cases = {
        {xml, Value(Value::Dictionary{{"k\uFFFDy", Value("caf\uFFFD \U0001F964")}})},
        {binary, Value(Value::Dictionary{{"a", Value("a\uFFFDb")}})},
    };
    for (const auto& [input, expected] : cases) {
        const auto read = PropertyList::decode(std::vector<std::uint8_t>(input.begin(), input.end()));
        EXPECT_EQ(read, expected);
        EXPECT_EQ(PropertyList::decode(PropertyList::encode(read)), expected);
    }
}

}  // namespace
}  // namespace qrv::platform
