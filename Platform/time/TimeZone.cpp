#include "Platform/time/TimeZone.hpp"

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <date/tz.h>
#include <exception>
#include <string>

namespace qrv::platform {

TimeZone TimeZone::utc() {
    static const date::time_zone* const zone = date::locate_zone("UTC");
    return TimeZone(zone);
}

std::optional<TimeZone> TimeZone::named(std::string_view identifier) {
    if (!identifier.empty() && identifier.front() == ':') identifier.remove_prefix(1);
    // TZ may name a file of the zone database; its path below "zoneinfo/" is the name.
    constexpr std::string_view kZoneinfo = "zoneinfo/";
    if (!identifier.empty() && identifier.front() == '/') {
        auto at = identifier.rfind(kZoneinfo);
        if (at == std::string_view::npos) return std::nullopt;
        identifier.remove_prefix(at + kZoneinfo.size());
    }
    if (identifier.empty()) return std::nullopt;
    try {
        return TimeZone(date::locate_zone(identifier));
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

TimeZone TimeZone::fromEnvironment(const char* tzValue) {
    if (tzValue != nullptr) {
        std::string_view value{tzValue};
        if (value.empty() || value == ":") return utc();
        if (auto zone = named(value)) return *zone;
    }
    try {
        return TimeZone(date::current_zone());
    } catch (const std::exception&) {
        return utc();
    }
}

TimeZone TimeZone::current() { return fromEnvironment(std::getenv("TZ")); }

std::string_view TimeZone::identifier() const { return zone_->name(); }

int TimeZone::secondsFromGMT(Date date) const {
    double t = date.timeIntervalSince1970();
    if (!std::isfinite(t)) return 0;
    // Beyond a few thousand years the zone's last rule holds anyway.
    t = std::fmax(-1e11, std::fmin(1e11, std::floor(t)));
    date::sys_seconds at{std::chrono::seconds{static_cast<long long>(t)}};
    return static_cast<int>(zone_->get_info(at).offset.count());
}

}  // namespace qrv::platform
