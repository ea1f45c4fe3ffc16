#include "Platform/locale/StringCatalog.hpp"

#include <simdjson.h>

#include <cstdio>
#include <fstream>
#include <mutex>
#include <sstream>
#include <stdexcept>

#include "Platform/locale/ResourceLocator.hpp"

namespace qrv::platform {
namespace {

std::mutex mainMutex;
std::shared_ptr<const StringCatalog> mainOverride;  // guarded by mainMutex

[[noreturn]] void fail(const std::string& reason) {
    throw std::runtime_error("invalid string catalog: " + reason);
}

std::shared_ptr<const StringCatalog> loadFromSearchPath() {
    for (const auto& dir : programResourceSearchPath()) {
        const auto file = dir / StringCatalog::kDefaultTableFile;
        std::error_code error;
        if (!std::filesystem::is_regular_file(file, error)) continue;
        try {
            return std::make_shared<const StringCatalog>(StringCatalog::load(file));
        } catch (const std::exception& e) {
            std::fprintf(stderr, "unable to load string table %s: %s\n", file.c_str(), e.what());
            return std::make_shared<const StringCatalog>();
        }
    }
    return std::make_shared<const StringCatalog>();
}

}  // namespace

StringCatalog StringCatalog::parse(std::string_view json) {
    simdjson::dom::parser parser;
    simdjson::padded_string padded(json);
    simdjson::dom::element root;
    if (auto error = parser.parse(padded).get(root)) fail(simdjson::error_message(error));
    simdjson::dom::object top;
    if (root.get(top)) fail("the top level is not an object");

    StringCatalog catalog;
    std::string_view source;
    if (!top["sourceLanguage"].get(source)) catalog.sourceLanguage_ = std::string(source);

    simdjson::dom::object strings;
    if (auto error = top["strings"].get(strings)) {
        if (error == simdjson::NO_SUCH_FIELD) return catalog;
        fail("\"strings\" is not an object");
    }
    for (auto [key, entry] : strings) {
        auto& values = catalog.strings_[std::string(key)];
        simdjson::dom::object localizations;
        if (entry["localizations"].get(localizations)) continue;  // a key that is its own text
        for (auto [language, localization] : localizations) {
            std::string_view value;
            // Plural and device variations are not used by this program's
            // texts; an entry without a plain string unit has no value.
            if (localization["stringUnit"]["value"].get(value)) continue;
            values.emplace(std::string(language), std::string(value));
        }
    }
    return catalog;
}

StringCatalog StringCatalog::load(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) throw std::runtime_error("cannot open " + file.string());
    std::ostringstream text;
    text << in.rdbuf();
    return parse(text.str());
}

std::optional<std::string> StringCatalog::translation(std::string_view key, std::string_view language) const {
    const auto entry = strings_.find(key);
    if (entry == strings_.end()) return std::nullopt;
    const auto value = entry->second.find(std::string(language));
    if (value == entry->second.end()) return std::nullopt;
    return value->second;
}

std::optional<std::string> StringCatalog::lookup(std::string_view key, const Locale& locale) const {
    if (auto exact = translation(key, locale.languageTag())) return exact;
    if (auto language = translation(key, locale.languageCode())) return language;
    return translation(key, sourceLanguage_);
}

std::vector<std::string> StringCatalog::keys() const {
    std::vector<std::string> out;
    out.reserve(strings_.size());
    for (const auto& [key, values] : strings_) out.push_back(key);
    return out;
}

std::vector<std::string> StringCatalog::languages() const {
    std::map<std::string, bool> seen;
    for (const auto& [key, values] : strings_) {
        for (const auto& [language, value] : values) seen[language] = true;
    }
    std::vector<std::string> out;
    for (const auto& [language, unused] : seen) out.push_back(language);
    return out;
}

std::shared_ptr<const StringCatalog> StringCatalog::main() {
    {
        std::lock_guard lock(mainMutex);
        if (mainOverride) return mainOverride;
    }
    static const std::shared_ptr<const StringCatalog> fromFile = loadFromSearchPath();
    return fromFile;
}

void StringCatalog::setMain(std::shared_ptr<const StringCatalog> catalog) {
    std::lock_guard lock(mainMutex);
    mainOverride = std::move(catalog);
}

std::string localizedString(const StringCatalog& catalog, std::string_view key, const Locale& locale) {
    if (auto value = catalog.lookup(key, locale)) return *value;
    return std::string(key);
}

std::string localizedString(std::string_view key, std::string_view /*comment*/) {
    return localizedString(*StringCatalog::main(), key, Locale::current());
}

}  // namespace qrv::platform
