#pragma once
// The Gregorian calendar in one time zone, with the day arithmetic the phone's
// calendar uses: the start of a day, adding whole days while keeping the wall
// clock, and comparing local days. The zone is injected so tests pin it.
#include <optional>

#include "Platform/time/Date.hpp"
#include "Platform/time/TimeZone.hpp"

namespace qrv::platform {

struct DateComponents {
    int year = 0;
    int month = 0;   // 1...12
    int day = 0;     // 1...31
    int hour = 0;    // 0...23
    int minute = 0;  // 0...59
    int second = 0;  // 0...59
    friend bool operator==(const DateComponents&, const DateComponents&) = default;
};

class Calendar {
public:
    explicit Calendar(TimeZone zone) : zone_(zone) {}

    // The calendar of the process's local zone (see TimeZone::current()).
    static Calendar current() { return Calendar(TimeZone::current()); }

    const TimeZone& timeZone() const { return zone_; }

    // The earliest instant whose local date is the local date of `date`. Where
    // local midnight does not exist the day starts when the gap ends; where it
    // occurs twice, the first one.
    Date startOfDay(Date date) const;

    // `days` whole days later (earlier when negative), keeping the local wall-clock
    // time. A wall time that falls into a spring-forward gap moves on by the gap; a
    // repeated one takes its first occurrence when moving forward. Nothing when the
    // result leaves the range the calendar handles (about the years -1200...5100)
    // or the date is not finite.
    std::optional<Date> dateByAddingDays(int days, Date date) const;

    // Same local year, month and day.
    bool isDateInSameDayAs(Date a, Date b) const;

    // Local components, seconds truncated towards the past.
    DateComponents components(Date date) const;

    // The instant of local wall time `components`. A wall time inside a gap is read
    // with the offset in force before the gap (02:30 on a spring-forward night is
    // 03:30 of the new offset); a repeated one is its first occurrence. Nothing for
    // components that name no valid date or time.
    std::optional<Date> date(const DateComponents& components) const;

private:
    TimeZone zone_;
};

}  // namespace qrv::platform
