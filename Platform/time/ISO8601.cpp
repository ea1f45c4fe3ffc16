#include "Platform/time/ISO8601.hpp"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <date/date.h>

namespace qrv::platform {

namespace {

constexpr std::string_view kExpected =
    "expected YYYY-MM-DD, optionally followed by THH:MM[:SS[.fff]] and Z or an offset such as +01:00";

class Reader {
public:
    explicit Reader(std::string_view text) : text_(text) {}
    bool atEnd() const { return pos_ == text_.size(); }
    char peek() const { return atEnd() ? '\0' : text_[pos_]; }
    bool accept(char c) {
        if (peek() != c) return false;
        ++pos_;
        return true;
    }
    // Exactly `count` decimal digits.
    std::optional<int> digits(int count) {
        if (text_.size() - pos_ < static_cast<std::size_t>(count)) return std::nullopt;
        int value = 0;
        for (int i = 0; i < count; ++i) {
            char c = text_[pos_ + static_cast<std::size_t>(i)];
            if (c < '0' || c > '9') return std::nullopt;
            value = value * 10 + (c - '0');
        }
        pos_ += static_cast<std::size_t>(count);
        return value;
    }
    // One or more digits after a decimal point, as a fraction of one.
    std::optional<double> fraction() {
        double value = 0, scale = 0.1;
        std::size_t start = pos_;
        while (peek() >= '0' && peek() <= '9') {
            value += (text_[pos_] - '0') * scale;
            scale /= 10;
            ++pos_;
        }
        if (pos_ == start) return std::nullopt;
        return value;
    }

private:
    std::string_view text_;
    std::size_t pos_ = 0;
};


std::optional<Date> parse(std::string_view text, const Calendar& calendar, std::string& error) {
    auto fail = [&](std::string_view why) -> std::optional<Date> {
        error = "invalid time \"" + std::string(text) + "\": " + std::string(why);
        return std::nullopt;
    };
    Reader in(text);
    DateComponents c;
    auto year = in.digits(4);
    if (!year || !in.accept('-')) return fail(kExpected);
    auto month = in.digits(2);
    if (!month || !in.accept('-')) return fail(kExpected);
    auto day = in.digits(2);
    if (!day) return fail(kExpected);
    c.year = *year;
    c.month = *month;
    c.day = *day;
    if (c.month < 1 || c.month > 12) return fail("the month must be 01 to 12");
    date::year_month_day ymd{date::year{c.year}, date::month{static_cast<unsigned>(c.month)},
                             date::day{static_cast<unsigned>(c.day)}};
    if (!ymd.ok()) return fail("no such day in that month");

    double fraction = 0;
    bool hasTime = false;
    if (in.accept('T') || in.accept('t') || in.accept(' ')) {
        hasTime = true;
        auto hour = in.digits(2);
        if (!hour || !in.accept(':')) return fail(kExpected);
        auto minute = in.digits(2);
        if (!minute) return fail(kExpected);
        c.hour = *hour;
        c.minute = *minute;
        if (in.accept(':')) {
            auto second = in.digits(2);
            if (!second) return fail(kExpected);
            c.second = *second;
            if (in.accept('.') || in.accept(',')) {
                auto f = in.fraction();
                if (!f) return fail("a decimal point must be followed by digits");
                fraction = *f;
            }
        }
        if (c.hour > 23) return fail("the hour must be 00 to 23");
        if (c.minute > 59) return fail("the minute must be 00 to 59");
        if (c.second > 59) return fail("the second must be 00 to 59");
    }

    std::optional<int> offset;  // seconds east of UTC
    if (in.accept('Z') || in.accept('z')) {
        offset = 0;
    } else if (in.peek() == '+' || in.peek() == '-') {
        int sign = in.peek() == '-' ? -1 : 1;
        in.accept(in.peek());
        auto hours = in.digits(2);
        if (!hours) return fail("an offset is written +HH:MM, +HHMM or +HH");
        int minutes = 0;
        bool colon = in.accept(':');
        if (colon || !in.atEnd()) {
            auto m = in.digits(2);
            if (!m) return fail("an offset is written +HH:MM, +HHMM or +HH");
            minutes = *m;
        }
        if (*hours > 23 || minutes > 59) return fail("the offset is out of range");
        offset = sign * (*hours * 3600 + minutes * 60);
    }
    if (!in.atEnd()) return fail(kExpected);
    if (offset && !hasTime) return fail("an offset needs a time of day");

    if (!offset) {
        if (!hasTime) {
            // A bare date is the start of that local day, even where midnight is skipped.
            auto noon = calendar.date(DateComponents{c.year, c.month, c.day, 12, 0, 0});
            if (!noon) return fail("the year is out of range");
            return calendar.startOfDay(*noon);
        }
        auto local = calendar.date(c);
        if (!local) return fail("the year is out of range");
        return local->addingTimeInterval(fraction);
    }
    auto days = date::sys_days{ymd}.time_since_epoch().count();
    double unix = static_cast<double>(days) * 86400.0 + c.hour * 3600 + c.minute * 60 + c.second - *offset;
    return Date::fromUnix(unix).addingTimeInterval(fraction);
}

}  // namespace

std::optional<Date> tryParseISO8601(std::string_view text, const Calendar& calendar, std::string* error) {
    std::string reason;
    auto result = parse(text, calendar, reason);
    if (!result && error != nullptr) *error = reason;
    return result;
}

Date parseISO8601(std::string_view text, const Calendar& calendar) {
    std::string reason;
    auto result = parse(text, calendar, reason);
    if (!result) throw std::invalid_argument(reason);
    return *result;
}

std::string formatISO8601(Date d, const Calendar& calendar) {
    if (!std::isfinite(d.timeIntervalSinceReferenceDate)) return "invalid date";
    auto c = calendar.components(d);
    double whole = std::floor(d.timeIntervalSinceReferenceDate);
    int millis = static_cast<int>(std::lround((d.timeIntervalSinceReferenceDate - whole) * 1000));
    if (millis == 1000) millis = 999;  // never round into the next second's text
    int offset = calendar.timeZone().secondsFromGMT(d);
    char buffer[64];
    int n = std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02dT%02d:%02d:%02d", c.year, c.month, c.day, c.hour,
                          c.minute, c.second);
    std::string out(buffer, static_cast<std::size_t>(n));
    if (millis != 0) {
        std::snprintf(buffer, sizeof buffer, ".%03d", millis);
        out += buffer;
    }
    if (offset == 0) {
        out += 'Z';
    } else {
        int a = offset < 0 ? -offset : offset;
        std::snprintf(buffer, sizeof buffer, "%c%02d:%02d", offset < 0 ? '-' : '+', a / 3600, a / 60 % 60);
        out += buffer;
    }
    return out;
}

}  // namespace qrv::platform
