#include "Platform/time/Calendar.hpp"

#include <chrono>
#include <cmath>
#include <date/date.h>
#include <date/tz.h>

namespace qrv::platform {

namespace {

using std::chrono::seconds;
using Days = date::days;

// Unix seconds the calendar works in: roughly the years -1200...5100, well
// inside what the zone library and the day arithmetic handle.
constexpr long long kLimit = 100'000'000'000LL;
constexpr long long kReferenceUnix = 978'307'200LL;

// A date split into whole Unix seconds and the fraction above them. The split is
// done on the reference-based value so the fraction keeps all its bits.
struct Instant {
    date::sys_seconds whole;
    double fraction = 0;
};

std::optional<Instant> split(Date d) {
    double t = d.timeIntervalSinceReferenceDate;
    if (!std::isfinite(t)) return std::nullopt;
    double whole = std::floor(t);
    if (std::fabs(whole) > static_cast<double>(kLimit)) return std::nullopt;
    return Instant{date::sys_seconds{seconds{static_cast<long long>(whole) + kReferenceUnix}}, t - whole};
}

Date join(date::sys_seconds whole, double fraction) {
    auto ref = whole.time_since_epoch().count() - kReferenceUnix;
    return Date{static_cast<double>(ref) + fraction};
}

bool inRange(date::sys_seconds s) {
    auto ref = s.time_since_epoch().count() - kReferenceUnix;
    return ref >= -kLimit && ref <= kLimit;
}

seconds offsetAt(const date::time_zone& zone, date::sys_seconds s) { return zone.get_info(s).offset; }

date::local_seconds localOf(const date::time_zone& zone, date::sys_seconds s) {
    return date::local_seconds{s.time_since_epoch() + offsetAt(zone, s)};
}

seconds wallTime(const date::time_zone& zone, date::sys_seconds s) {
    auto local = localOf(zone, s);
    return local - date::floor<Days>(local);
}

// Local wall time to an instant: in a gap, the offset from before the gap; when
// repeated, the first occurrence.
date::sys_seconds instantOf(const date::time_zone& zone, date::local_seconds local) {
    auto info = zone.get_info(local);
    return date::sys_seconds{local.time_since_epoch() - info.first.offset};
}

}  // namespace

Date Calendar::startOfDay(Date d) const {
    auto instant = split(d);
    if (!instant) return d;
    const auto& zone = zone_.zone();
    auto day = date::floor<Days>(localOf(zone, instant->whole));
    date::local_seconds midnight{day};
    auto info = zone.get_info(midnight);
    date::sys_seconds start;
    if (info.result == date::local_info::nonexistent)
        start = info.second.begin;  // the day begins where the gap ends
    else
        start = date::sys_seconds{midnight.time_since_epoch() - info.first.offset};  // earliest of two
    return join(start, 0);
}

std::optional<Date> Calendar::dateByAddingDays(int days, Date d) const {
    auto instant = split(d);
    if (!instant) return std::nullopt;
    const auto& zone = zone_.zone();
    const auto t = instant->whole;
    auto u = t + seconds{static_cast<long long>(days) * 86400};
    if (!inRange(u)) return std::nullopt;

    // Keep the wall clock across an offset change: shift by the difference of
    // offsets, unless the wanted wall time does not exist on the target day and
    // the offset grew, in which case the plain 24-hour steps stand.
    const auto offT = offsetAt(zone, t);
    const auto offU = offsetAt(zone, u);
    const auto wallT = wallTime(zone, t);
    if (wallTime(zone, u) != wallT && offT != offU) {
        auto u2 = u + (offT - offU);
        if (!(wallTime(zone, u2) != wallT && offT < offU)) u = u2;
    }

    // Moving forward into the repeated hour of a fall-back night lands on its
    // second occurrence; the calendar prefers the first.
    if (days > 0) {
        auto info = zone.get_info(u);
        auto before = zone.get_info(info.begin - seconds{1});
        auto diff = before.offset - info.offset;
        if (diff > seconds{0} && u >= info.begin && u < info.begin + diff) u -= diff;
    }
    if (!inRange(u)) return std::nullopt;
    return join(u, instant->fraction);
}

bool Calendar::isDateInSameDayAs(Date a, Date b) const {
    auto ia = split(a);
    auto ib = split(b);
    if (!ia || !ib) return false;
    const auto& zone = zone_.zone();
    return date::floor<Days>(localOf(zone, ia->whole)) == date::floor<Days>(localOf(zone, ib->whole));
}

DateComponents Calendar::components(Date d) const {
    auto instant = split(d);
    if (!instant) return {};
    auto local = localOf(zone_.zone(), instant->whole);
    auto day = date::floor<Days>(local);
    date::year_month_day ymd{day};
    date::hh_mm_ss<seconds> time{local - day};
    return DateComponents{static_cast<int>(ymd.year()),
                          static_cast<int>(static_cast<unsigned>(ymd.month())),
                          static_cast<int>(static_cast<unsigned>(ymd.day())),
                          static_cast<int>(time.hours().count()),
                          static_cast<int>(time.minutes().count()),
                          static_cast<int>(time.seconds().count())};
}

std::optional<Date> Calendar::date(const DateComponents& c) const {
    if (c.year < -1000 || c.year > 5000 || c.month < 1 || c.month > 12 || c.day < 1 || c.hour < 0 ||
        c.hour > 23 || c.minute < 0 || c.minute > 59 || c.second < 0 || c.second > 59)
        return std::nullopt;
    date::year_month_day ymd{date::year{c.year}, date::month{static_cast<unsigned>(c.month)},
                             date::day{static_cast<unsigned>(c.day)}};
    if (!ymd.ok()) return std::nullopt;
    date::local_seconds local{date::local_days{ymd}.time_since_epoch() +
                              seconds{c.hour * 3600 + c.minute * 60 + c.second}};
    return join(instantOf(zone_.zone(), local), 0);
}

}  // namespace qrv::platform
