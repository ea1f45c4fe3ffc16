#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <optional>
#include <string>

#include "Platform/locale/Locale.hpp"
#include "Platform/locale/NumberFormatter.hpp"
#include "Platform/locale/StringFormat.hpp"
#include "Platform/locale/TextScanning.hpp"

namespace qrv::platform {
namespace {

// Sets the locale variables for one test (nullptr: unset) and restores them after.
class LocaleEnvironment {
  public:
    LocaleEnvironment(const char* lcAll, const char* lcMessages, const char* lang) {
        const char* values[] = {lcAll, lcMessages, lang};
        for (std::size_t i = 0; i < 3; ++i) {
            if (const char* old = std::getenv(kNames[i])) saved_[i] = old;
            set(kNames[i], values[i]);
        }
    }
    ~LocaleEnvironment() {
        for (std::size_t i = 0; i < 3; ++i) set(kNames[i], saved_[i] ? saved_[i]->c_str() : nullptr);
    }

  private:
    static constexpr const char* kNames[] = {"LC_ALL", "LC_MESSAGES", "LANG"};
    static void set(const char* name, const char* value) { value ? ::setenv(name, value, 1) : ::unsetenv(name); }
    std::optional<std::string> saved_[3];
};

TEST(Locale, ComesFromTheFirstNonEmptyVariableUnlessOverridden) {
    struct Case {
        const char* lcAll;
        const char* lcMessages;
        const char* lang;
        const char* identifier;
        const char* language;
    };
    const Case cases[] = {
        {nullptr, nullptr, "de_DE.UTF-8", "de_DE", "de"},
        {"", "es_ES.UTF-8", "de_DE.UTF-8", "es_ES", "es"},
        {"fr_FR@euro", "es_ES", "de_DE", "fr_FR", "fr"},
        {nullptr, nullptr, nullptr, "en", "en"},
        {"", "", "", "en", "en"},
        {nullptr, nullptr, "C", "en_US_POSIX", "en"},
        {nullptr, nullptr, "POSIX", "en_US_POSIX", "en"},
        {nullptr, nullptr, "pt-BR", "pt_BR", "pt"},
    };
    for (const auto& c : cases) {
        LocaleEnvironment env(c.lcAll, c.lcMessages, c.lang);
        EXPECT_EQ(Locale::current().identifier(), c.identifier) << (c.lang ? c.lang : "(unset)");
        EXPECT_EQ(Locale::current().languageCode(), c.language);
    }
    LocaleEnvironment env(nullptr, nullptr, "de_DE.UTF-8");
    {
        ScopedLocaleOverride pinned(Locale("es"));
        EXPECT_EQ(Locale::current().identifier(), "es");
    }
    EXPECT_EQ(Locale::current().identifier(), "de_DE");
}

TEST(NumberFormatting, IntegersCarryTheLocalesGrouping) {
    struct Case {
        const char* locale;
        std::int64_t value;
        const char* text;
    };
    const Case cases[] = {
        {"en_US", 1234, "1,234"},
        {"en_US", 1234567, "1,234,567"},
        {"en_US", -1234, "-1,234"},
        {"en_US", 999, "999"},
        {"de_DE", 1234, "1.234"},
        {"de", 1234567, "1.234.567"},
        {"es_ES", 12345, "12.345"},
        {"fr_FR", 1234, "1\u202F234"},
        {"en_US_POSIX", 1234567, "1234567"},
        {"en", std::numeric_limits<std::int64_t>::min(), "-9,223,372,036,854,775,808"},
    };
    for (const auto& c : cases) EXPECT_EQ(formatInteger(c.value, Locale(c.locale)), c.text) << c.locale;
    EXPECT_EQ(formatUnsignedInteger(18446744073709551615ull, Locale("en")), "18,446,744,073,709,551,615");
}

TEST(NumberFormatting, AsciiFiguresTakeTheDigitsOfALocaleThatWritesOthers) {
    struct Case {
        const char* locale;
        const char* text;
        const char* shown;
    } cases[] = {
        {"ar", "/250g", "/٢٥٠g"},         {"ar_EG", "1,250.5 ml", "١٬٢٥٠٫٥ ml"},
        {"ar", "v1. 2,", "v١. ٢,"},       // separators only between digits
        {"ar_MA", "2.5 cups", "2.5 cups"},  // Western digits: as written
        {"de_DE", "2.5 cups", "2.5 cups"}, {"he_IL", "1250 ml", "1250 ml"},
    };
    for (const auto& c : cases) EXPECT_EQ(localizedDigits(c.text, Locale(c.locale)), c.shown) << c.locale;
}

TEST(Locale, ArabicHebrewAndOtherRightToLeftScriptsAreRightToLeft) {
    for (const char* rtl : {"ar", "ar_MA", "he_IL", "fa", "ur"}) EXPECT_TRUE(Locale(rtl).isRightToLeft()) << rtl;
    for (const char* ltr : {"en", "en_US_POSIX", "de_DE", "tr"}) EXPECT_FALSE(Locale(ltr).isRightToLeft()) << ltr;
}

TEST(NumberFormatting, DefaultFormatterRoundsHalfToEvenWithoutGrouping) {
    struct Case {
        double value;
        const char* text;
    };
    const Case cases[] = {
        {95.4, "95"},          {95.5, "96"},     {96.5, "96"},      {2.5, "2"}, {1234.0, "1234"},
        {-95.5, "-96"},        {-0.4, "-0"},     {-0.5, "-0"},      {0.0, "0"}, {1e6, "1000000"},
        {std::nan(""), "NaN"}, {HUGE_VAL, "+∞"}, {-HUGE_VAL, "-∞"},
    };
    const NumberFormatter english(Locale("en_US"));
    for (const auto& c : cases) EXPECT_EQ(english.string(c.value), c.text) << c.value;
    EXPECT_EQ(NumberFormatter(Locale("de_DE")).string(12345.5), "12346");
}

TEST(StringFormat, LocalizesIntegerConversionsOnly) {
    struct Case {
        const char* locale;
        const char* format;
        std::vector<FormatArgument> arguments;
        const char* text;
    };
    const Case cases[] = {
        {"en_US", "%d g left", {1234}, "1,234 g left"},
        {"de_DE", "Noch %d g übrig", {1234}, "Noch 1.234 g übrig"},
        {"en_US", "%lld", {1234567}, "1,234,567"},
        {"en_US", "%ld|%qd|%zd|%i", {1000, 2000, 3000, 4000}, "1,000|2,000|3,000|4,000"},
        {"en_US", "%d", {5'000'000'000LL}, "705,032,704"},  // %d reads a 32-bit int
        {"en_US", "%u", {-1}, "4,294,967,295"},
        {"en_US", "%x %X %o", {255, 255, 8}, "ff FF 10"},
        {"en_US", "%@%@", {"150", "g"}, "150g"},
        {"en_US", "%2$@ %1$@", {"world", "hello"}, "hello world"},
        {"en_US", "100%% of %d", {2000}, "100% of 2,000"},
        {"de_DE", "%.1f l", {1.25}, "1,2 l"},
        {"en_US", "%+d", {5}, "+5"},
        {"en_US", "%5d|%-5d|", {42, 42}, "   42|42   |"},
        {"en_US", "dashb.macros.gram.left", {15}, "dashb.macros.gram.left"},  // no placeholder: unchanged
        {"en_US", "%d and %d", {1}, "1 and %d"},  // missing argument stays visible
        {"en_US", "%d", {"text"}, "%d"},          // wrong kind of argument
        {"en_US", "%k %", {1}, "%k %"},           // unknown and incomplete
    };
    for (const auto& c : cases) {
        EXPECT_EQ(localizedStringWithFormat(Locale(c.locale), c.format, c.arguments), c.text) << c.format;
    }
}

TEST(TextScanning, TrimsNonAlphanumericsFromBothEnds) {
    struct Case {
        const char* input;
        const char* trimmed;
    };
    const Case cases[] = {
        {"#FA9B31 ", "FA9B31"},
        {"  #fff\n", "fff"},
        {"(42)", "42"},
        {"x#y", "x#y"},
        {"#_ab_#", "ab"},
        {"###", ""},
        {"", ""},
        {"·é·", "é"},
        {"#e\u0301#", "e\u0301"},  // a combining mark is alphanumeric
        {"²#", "²"},
        {"🙂ab🙂", "ab"},
        {"\xFF"
         "ab\xFE",
         "ab"},
    };
    for (const auto& c : cases) EXPECT_EQ(trimmingNonAlphanumerics(c.input), c.trimmed) << c.input;
    EXPECT_EQ(characterCount("e\u0301f"), 2u);
    EXPECT_EQ(characterCount("ab\r\n"), 3u);
    EXPECT_EQ(characterCount("FA9B31"), 6u);
}

TEST(TextScanning, ScansHexLikeThePlatformScanner) {
    struct Case {
        const char* input;
        std::optional<std::uint64_t> value;
        std::size_t end;
    };
    const Case cases[] = {
        {"  ff", 255, 4},
        {"0x1F", 31, 4},
        {"0XaB", 171, 4},
        {"0xg", 0, 1},  // the prefix needs a digit after it; the 0 alone is read
        {"12g4", 0x12, 2},
        {"FFFFFFFFFFFFFFFF", UINT64_MAX, 16},
        {"10000000000000000", UINT64_MAX, 17},  // clamps and keeps consuming
        {"0000000000000000000001", 1, 22},
        {"-1", std::nullopt, 0},
        {"xyz", std::nullopt, 0},
        {"", std::nullopt, 0},
    };
    for (const auto& c : cases) {
        const auto scan = scanHexInt64(c.input);
        ASSERT_EQ(scan.has_value(), c.value.has_value()) << c.input;
        if (scan) {
            EXPECT_EQ(scan->value, *c.value) << c.input;
            EXPECT_EQ(scan->endOffset, c.end) << c.input;
        }
    }
}

}  // namespace
}  // namespace qrv::platform
