#pragma once
// A program's string table in the string-catalog format (JSON):
//   {"sourceLanguage": "en", "version": "1.0",
//    "strings": {KEY: {"comment": "...",
//                      "localizations": {LANG: {"stringUnit": {"state": "translated", "value": "..."}}}}}}
// and the platform's localized-string lookup on it: a key that the table lacks
// shows as the key itself.
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/locale/Locale.hpp"

namespace qrv::platform {

class StringCatalog {
  public:
    // The file name of a program's default table.
    static constexpr const char* kDefaultTableFile = "Localizable.xcstrings";

    StringCatalog() = default;  // an empty table

    // Throws std::runtime_error with a readable reason when the text is not a
    // string catalog.
    static StringCatalog parse(std::string_view json);
    // Throws std::runtime_error when the file cannot be read or parsed.
    static StringCatalog load(const std::filesystem::path& file);

    // The text for a key in a locale: the translation for the locale's full
    // tag ("pt-BR"), else for its language ("pt"), else the source language's
    // value. Nothing when the table has none of these.
    std::optional<std::string> lookup(std::string_view key, const Locale& locale) const;
    // The text for a key in exactly this language tag, without fallback.
    std::optional<std::string> translation(std::string_view key, std::string_view language) const;

    const std::string& sourceLanguage() const { return sourceLanguage_; }
    std::vector<std::string> keys() const;
    std::vector<std::string> languages() const;
    std::size_t size() const { return strings_.size(); }
    bool empty() const { return strings_.empty(); }

    // The program's default table, loaded on first use from the program's
    // resource search path. A missing table is an empty one (every key shows
    // as itself); an unreadable one is reported on standard error once and
    // treated as empty.
    static std::shared_ptr<const StringCatalog> main();
    // Replaces the program's default table (tests; a host that loads another).
    // nullptr goes back to the file found on the search path.
    static void setMain(std::shared_ptr<const StringCatalog> catalog);

  private:
    std::string sourceLanguage_ = "en";
    // key -> language -> value
    std::map<std::string, std::map<std::string, std::string>, std::less<>> strings_;
};

// The platform's localized-string lookup in the program's default table with an
// empty default value: the translation for the current locale, or the key
// itself when the table has none. The comment is for translators only.
std::string localizedString(std::string_view key, std::string_view comment = {});
std::string localizedString(const StringCatalog& catalog, std::string_view key, const Locale& locale);

}  // namespace qrv::platform
