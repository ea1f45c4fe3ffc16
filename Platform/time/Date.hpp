#pragma once
// A point in time as the phone keeps it: seconds since 2001-01-01 00:00:00 UTC,
// held as a double. Property-list dates and the records' JSON dates use the same
// reference, so a Date crosses both without conversion.
#include <compare>

namespace qrv::platform {

struct Date {
    // Seconds between 1970-01-01 and 2001-01-01, both UTC.
    static constexpr double kUnixToReference = 978307200.0;

    double timeIntervalSinceReferenceDate = 0;

    static constexpr Date fromUnix(double unixSeconds) { return Date{unixSeconds - kUnixToReference}; }
    constexpr double timeIntervalSince1970() const { return timeIntervalSinceReferenceDate + kUnixToReference; }
    constexpr Date addingTimeInterval(double seconds) const { return Date{timeIntervalSinceReferenceDate + seconds}; }
    constexpr double timeIntervalSince(Date other) const {
        return timeIntervalSinceReferenceDate - other.timeIntervalSinceReferenceDate;
    }

    friend constexpr bool operator==(Date, Date) = default;
    friend constexpr auto operator<=>(Date, Date) = default;
};

}  // namespace qrv::platform
