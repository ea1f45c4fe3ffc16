#pragma once
// ISO 8601 text for instants: reading what a user types for --now, and writing
// an instant with its offset in a given zone.
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "Platform/time/Calendar.hpp"
#include "Platform/time/Date.hpp"

namespace qrv::platform {

// Accepts YYYY-MM-DD, optionally followed by 'T' or one space and HH:MM,
// HH:MM:SS or HH:MM:SS.fraction, optionally followed by 'Z' or an offset
// +HH:MM, +HHMM or +HH (or '-'). Without an offset the wall time is local to
// `calendar`'s zone (a time inside a spring-forward gap moves on by the gap, a
// repeated one is its first occurrence); a date alone is that day's start.
// Throws std::invalid_argument naming the problem for anything else.
Date parseISO8601(std::string_view text, const Calendar& calendar);

// The same, with nothing instead of an exception; the reason goes to `error`.
std::optional<Date> tryParseISO8601(std::string_view text, const Calendar& calendar,
                                    std::string* error = nullptr);

// "2024-03-10T00:00:00-05:00" in `calendar`'s zone; "Z" for a zero offset; a
// fraction of a second appears as milliseconds when there is one.
std::string formatISO8601(Date date, const Calendar& calendar);

}  // namespace qrv::platform
