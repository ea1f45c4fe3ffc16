// The extension's string table (string-catalog JSON). Parsing either gives a
// table or throws std::runtime_error with a reason; every key of a parsed table
// can be looked up in every language it lists and in one it does not, and a
// key the source language translates is found in any language (the fallback).
#include <cstddef>
#include <cstdint>
#include <stdexcept>

#include "Platform/locale/Locale.hpp"
#include "Platform/locale/StringCatalog.hpp"
#include "fuzz/FuzzSupport.hpp"

using namespace qrv::platform;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    StringCatalog catalog;
    try {
        catalog = StringCatalog::parse(qrv::fuzz::text(data, size));
    } catch (const std::runtime_error& error) {
        QRV_FUZZ_CHECK(error.what() != nullptr);
        return 0;
    }
    const auto keys = catalog.keys();
    QRV_FUZZ_CHECK(keys.size() == catalog.size());
    auto languages = catalog.languages();
    languages.push_back("zz-Latn-ZZ");
    for (const auto& language : languages) {
        const Locale locale(language);
        for (const auto& key : keys) {
            const auto found = catalog.lookup(key, locale);
            if (catalog.translation(key, catalog.sourceLanguage())) QRV_FUZZ_CHECK(found.has_value());
            (void)localizedString(catalog, key, locale);
        }
    }
    return 0;
}
