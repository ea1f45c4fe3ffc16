#include <gtest/gtest.h>

#include "Platform/locale/StringCatalog.hpp"

namespace qrv::platform {
namespace {

const char* kCatalog = R"({
  "sourceLanguage" : "en",
  "strings" : {
    "greeting" : {"comment" : "Hello", "localizations" : {
      "en" : {"stringUnit" : {"state" : "translated", "value" : "Hello"}},
      "de" : {"stringUnit" : {"state" : "translated", "value" : "Hallo"}},
      "pt" : {"stringUnit" : {"state" : "translated", "value" : "Olá"}},
      "pt-BR" : {"stringUnit" : {"state" : "needs_review", "value" : "Oi"}}}},
    "onlyEnglish" : {"localizations" : {"en" : {"stringUnit" : {"state" : "translated", "value" : "English"}}}},
    "Water" : {},
    "plural" : {"localizations" : {"en" : {"variations" : {"plural" : {}}}}}
  },
  "version" : "1.0"
})";

TEST(StringCatalog, LooksUpByTagThenLanguageThenSourceThenKey) {
    const auto catalog = StringCatalog::parse(kCatalog);
    struct Case {
        const char* key;
        const char* locale;
        const char* text;
    };
    const Case cases[] = {
        {"greeting", "de_DE", "Hallo"}, {"greeting", "pt_BR", "Oi"},          {"greeting", "pt_PT", "Olá"},
        {"greeting", "ja_JP", "Hello"}, {"onlyEnglish", "de", "English"},     {"Water", "de", "Water"},
        {"plural", "en", "plural"},     {"missing.key", "de", "missing.key"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(localizedString(catalog, c.key, Locale(c.locale)), c.text) << c.key << " " << c.locale;
    }
    EXPECT_EQ(catalog.size(), 4u);
    EXPECT_EQ(catalog.languages(), (std::vector<std::string>{"de", "en", "pt", "pt-BR"}));
    EXPECT_EQ(localizedString(StringCatalog(), "greeting", Locale("de")), "greeting");
}

TEST(StringCatalog, RejectsTextThatIsNotACatalog) {
    for (const char* bad : {"", "[]", "{", R"({"strings": []})"}) {
        EXPECT_THROW(StringCatalog::parse(bad), std::runtime_error) << bad;
    }
    EXPECT_TRUE(StringCatalog::parse(R"({"sourceLanguage": "en"})").empty());
    EXPECT_THROW(StringCatalog::load("/nonexistent/Localizable.xcstrings"), std::runtime_error);
}

}  // namespace
}  // namespace qrv::platform
