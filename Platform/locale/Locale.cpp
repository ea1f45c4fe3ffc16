#include "Platform/locale/Locale.hpp"

#include <unicode/uloc.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <mutex>

namespace qrv::platform {
namespace {

std::mutex overrideMutex;
std::optional<Locale> overrideLocale;  // guarded by overrideMutex

std::string normalise(std::string_view raw) {
    // Drop the codeset (".UTF-8") and the modifier ("@euro").
    const auto cut = raw.find_first_of(".@");
    if (cut != std::string_view::npos) raw = raw.substr(0, cut);
    while (!raw.empty() && std::isspace(static_cast<unsigned char>(raw.front()))) raw.remove_prefix(1);
    while (!raw.empty() && std::isspace(static_cast<unsigned char>(raw.back()))) raw.remove_suffix(1);
    if (raw.empty()) return Locale::kFallbackIdentifier;
    if (raw == "C" || raw == "POSIX") return Locale::kPosixIdentifier;
    std::string id(raw);
    std::replace(id.begin(), id.end(), '-', '_');
    return id;
}

}  // namespace

Locale::Locale(std::string_view identifier) : identifier_(normalise(identifier)) {}

std::string Locale::languageCode() const {
    std::string code = identifier_.substr(0, identifier_.find('_'));
    std::transform(code.begin(), code.end(), code.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return code;
}

std::string Locale::languageTag() const {
    std::string tag = identifier_;
    std::replace(tag.begin(), tag.end(), '_', '-');
    return tag;
}

bool Locale::isRightToLeft() const { return uloc_isRightToLeft(identifier_.c_str()) != 0; }

Locale Locale::fromEnvironment() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(name);
        if (value != nullptr && *value != '\0') return Locale(value);
    }
    return Locale();
}

Locale Locale::current() {
    {
        std::lock_guard lock(overrideMutex);
        if (overrideLocale) return *overrideLocale;
    }
    return fromEnvironment();
}

void Locale::setCurrentOverride(std::optional<Locale> locale) {
    std::lock_guard lock(overrideMutex);
    overrideLocale = std::move(locale);
}

ScopedLocaleOverride::ScopedLocaleOverride(std::optional<Locale> locale) {
    std::lock_guard lock(overrideMutex);
    previous_ = overrideLocale;
    overrideLocale = std::move(locale);
}

ScopedLocaleOverride::~ScopedLocaleOverride() {
    std::lock_guard lock(overrideMutex);
    overrideLocale = std::move(previous_);
}

}  // namespace qrv::platform
