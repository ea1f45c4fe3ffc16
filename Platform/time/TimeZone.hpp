#pragma once
// A time zone from the system's zone database. A small value: it refers to the
// database entry, which lives for the whole process.
#include <optional>
#include <string_view>

#include "Platform/time/Date.hpp"

namespace date {
class time_zone;
}

namespace qrv::platform {

class TimeZone {
public:
    static TimeZone utc();

    // A zone by its database name ("America/New_York"). A leading ':' (as TZ
    // allows) and a path into the zone database ("/usr/share/zoneinfo/Europe/Paris")
    // are accepted too. Nothing for a name the database does not know.
    static std::optional<TimeZone> named(std::string_view identifier);

    // The process's zone. The zone library does not look at TZ, so it is read
    // here first; then the system's configured zone; then UTC.
    static TimeZone current();

    // The rule behind current(), with the value of TZ passed in (nullptr when
    // unset) so that it can be exercised without touching the environment.
    // An empty TZ means UTC, as the C library reads it.
    static TimeZone fromEnvironment(const char* tzValue);

    std::string_view identifier() const;
    int secondsFromGMT(Date date) const;

    const date::time_zone& zone() const { return *zone_; }

    friend bool operator==(const TimeZone& a, const TimeZone& b) { return a.zone_ == b.zone_; }

private:
    explicit TimeZone(const date::time_zone* zone) : zone_(zone) {}
    const date::time_zone* zone_;
};

}  // namespace qrv::platform
