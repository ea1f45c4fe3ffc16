#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "Platform/locale/Locale.hpp"
#include "Platform/locale/StringCatalog.hpp"
#include "Widget/Shared/LocalizedStringProvider.hpp"

namespace qrv::widget {
namespace {

using platform::Locale;
using platform::ScopedLocaleOverride;
using platform::StringCatalog;

std::string shippedTable() { return std::string(QRV_BIN_DIR) + "/Resources/Localizable.xcstrings"; }

// Replaces the program's table for one test.
class ScopedTable {
  public:
    explicit ScopedTable(StringCatalog catalog) {
        StringCatalog::setMain(std::make_shared<const StringCatalog>(std::move(catalog)));
    }
    ~ScopedTable() { StringCatalog::setMain(nullptr); }
};

// The format conversions of a text, in order ("%d", "%@", ...).
std::vector<std::string> conversions(const std::string& text) {
    static const std::regex conversion("%(?:[0-9]+\\$)?(?:ll|l|q)?[dDiuU@]|%%");
    std::vector<std::string> out;
    for (std::sregex_iterator it(text.begin(), text.end(), conversion), end; it != end; ++it)
        out.push_back(it->str());
    return out;
}

TEST(StringTable, ShippedTableTranslatesEveryKeyWithMatchingPlaceholders) {
    const auto catalog = StringCatalog::load(shippedTable());
    const auto languages = catalog.languages();
    ASSERT_EQ(languages, (std::vector<std::string>{"ar", "de", "en", "es", "fr", "he"}));
    for (const auto& key : catalog.keys()) {
        const auto source = catalog.translation(key, catalog.sourceLanguage());
        ASSERT_TRUE(source) << key;
        for (const auto& language : languages) {
            const auto translated = catalog.translation(key, language);
            ASSERT_TRUE(translated) << key << " " << language;
            EXPECT_FALSE(translated->empty()) << key << " " << language;
            EXPECT_EQ(conversions(*translated), conversions(*source)) << key << " " << language;
        }
    }
}

// The table beside the program, as the widgets find it.
TEST(LocalizedStrings, LookupInEachLanguageOfTheShippedTable) {
    struct Case {
        const char* locale;
        const char* login;
        const char* water;
        const char* left;
        const char* over;
    };
    const Case cases[] = {
        {"en_US", "Log in to view data.", "Water", "1,234 g left", "15 g over"},
        {"de_DE", "Melde dich an, um deine Daten zu sehen.", "Wasser", "Noch 1.234 g übrig", "15 g zu viel"},
        {"es_ES", "Inicia sesión para ver tus datos.", "Agua", "Te quedan 1.234 g", "15 g de más"},
        {"ja_JP", "Log in to view data.", "Water", "1,234 g left",
         "15 g over"},  // no Japanese: the source text
    };
    for (const auto& c : cases) {
        ScopedLocaleOverride locale(Locale(c.locale));
        EXPECT_EQ(localizedString("dashb.widget.login.long", "Log in to view data."), c.login) << c.locale;
        EXPECT_EQ(localizedString("Water"), c.water) << c.locale;
        EXPECT_EQ(localizedStringWithFormat(localizedString("dashb.macros.gram.left", "%d g left"), {1234}),
                  c.left)
            << c.locale;
        EXPECT_EQ(localizedStringWithFormat(localizedString("dashb.macros.gram.over", "%d g over"), {15}),
                  c.over)
            << c.locale;
        EXPECT_EQ(localizedString("no.such.key"), "no.such.key");
    }
}

TEST(LocalizedStrings, EmptyTableShowsEveryKeyAsItself) {
    ScopedTable table{StringCatalog()};
    ScopedLocaleOverride locale(Locale("de_DE"));
    for (const char* key : {"Water", "dashb.widget.login.long", "%lld"})
        EXPECT_EQ(localizedString(key, "comment"), key);
}

}  // namespace
}  // namespace qrv::widget
