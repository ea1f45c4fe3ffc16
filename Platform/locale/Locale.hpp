#pragma once
// The user's locale as the platform reports it. On the phone it comes from the
// system settings; here it comes from the POSIX environment (LC_ALL,
// LC_MESSAGES, LANG: the first that is set and not empty), unless the host
// program pins one explicitly (its --locale option).
#include <optional>
#include <string>
#include <string_view>

namespace qrv::platform {

class Locale {
  public:
    // The locale used when the environment names none.
    static constexpr const char* kFallbackIdentifier = "en";
    // What "C" and "POSIX" stand for: English texts, numbers without grouping.
    static constexpr const char* kPosixIdentifier = "en_US_POSIX";

    Locale() : identifier_(kFallbackIdentifier) {}
    // Accepts POSIX names ("de_DE.UTF-8@euro") and BCP 47 tags ("de-DE"); the
    // codeset and modifier are dropped, the separator becomes '_'.
    explicit Locale(std::string_view identifier);

    // "de_DE", "en_US_POSIX", "zh_Hans_CN".
    const std::string& identifier() const { return identifier_; }
    // Lower-case language subtag: "de" for "de_DE".
    std::string languageCode() const;
    // The identifier with '-' separators: "de-DE".
    std::string languageTag() const;
    // Whether the locale's script is written right to left (Arabic, Hebrew,
    // Persian, Urdu, ...), as ICU's likely-script data says.
    bool isRightToLeft() const;

    // The override when one is set, otherwise the environment's locale.
    static Locale current();
    static Locale fromEnvironment();
    // Pins (or with nullopt releases) the process-wide current locale.
    static void setCurrentOverride(std::optional<Locale> locale);

    friend bool operator==(const Locale&, const Locale&) = default;

  private:
    std::string identifier_;
};

// Sets an override for the lifetime of the object and restores the previous
// state afterwards (tests, and commands that render in a given locale).
class ScopedLocaleOverride {
  public:
    explicit ScopedLocaleOverride(std::optional<Locale> locale);
    ~ScopedLocaleOverride();
    ScopedLocaleOverride(const ScopedLocaleOverride&) = delete;
    ScopedLocaleOverride& operator=(const ScopedLocaleOverride&) = delete;

  private:
    std::optional<Locale> previous_;
};

}  // namespace qrv::platform
