#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "Platform/time/Calendar.hpp"
#include "Platform/time/ISO8601.hpp"

using namespace qrv::platform;

namespace {

Calendar in(const char* zone) {
    auto tz = TimeZone::named(zone);
    EXPECT_TRUE(tz.has_value()) << zone;
    return Calendar(tz.value_or(TimeZone::utc()));
}

Date utc(const char* text) { return parseISO8601(text, Calendar(TimeZone::utc())); }

// Seconds since 2001 written as UTC text, for readable expectations.
std::string asUTC(Date d) { return formatISO8601(d, Calendar(TimeZone::utc())); }

}  // namespace

TEST(Calendar, StartOfDay) {
    struct Case {
        const char* zone;
        const char* at;
        const char* expected;
    };
    const Case cases[] = {
        {"America/New_York", "2024-03-10T12:00:00-04:00", "2024-03-10T05:00:00Z"},  // 23-hour day
        {"America/New_York", "2024-03-09T23:59:59-05:00", "2024-03-09T05:00:00Z"},
        {"America/Sao_Paulo", "2018-11-04T12:00:00-02:00", "2018-11-04T03:00:00Z"},  // midnight skipped
        {"Asia/Beirut", "2024-03-31T12:00:00+03:00", "2024-03-30T22:00:00Z"},        // midnight skipped
        {"America/Sao_Paulo", "2019-02-17T12:00:00-03:00", "2019-02-17T03:00:00Z"},  // 23:xx of the 16th repeats
        {"America/Havana", "2023-11-05T12:00:00-05:00", "2023-11-05T04:00:00Z"},     // two midnights: the first
        {"UTC", "2001-01-01T00:00:00Z", "2001-01-01T00:00:00Z"},
        {"Asia/Kolkata", "2024-01-01T00:10:00+05:30", "2023-12-31T18:30:00Z"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(asUTC(in(c.zone).startOfDay(utc(c.at))), c.expected) << c.zone << " " << c.at;
    }
}

TEST(Calendar, AddingDaysKeepsTheWallClock) {
    struct Case {
        const char* zone;
        const char* at;
        int days;
        const char* expected;  // local, with the offset in force
    };
    const Case cases[] = {
        {"America/New_York", "2024-03-09T15:00:00-05:00", 1, "2024-03-10T15:00:00-04:00"},  // 23 h later
        {"America/New_York", "2024-03-09T02:30:00-05:00", 1, "2024-03-10T03:30:00-04:00"},  // into the gap
        {"America/New_York", "2024-11-02T15:00:00-04:00", 1, "2024-11-03T15:00:00-05:00"},  // 25 h later
        {"America/New_York", "2024-11-02T01:30:00-04:00", 1, "2024-11-03T01:30:00-04:00"},  // first of two
        {"America/New_York", "2024-03-01T01:30:00-05:00", 247, "2024-11-03T01:30:00-04:00"},
        {"America/New_York", "2024-03-11T15:00:00-04:00", -2, "2024-03-09T15:00:00-05:00"},
        {"Europe/Paris", "2024-02-28T23:15:00+01:00", 2, "2024-03-01T23:15:00+01:00"},
    };
    for (const auto& c : cases) {
        auto cal = in(c.zone);
        auto result = cal.dateByAddingDays(c.days, utc(c.at));
        ASSERT_TRUE(result) << c.at;
        EXPECT_EQ(formatISO8601(*result, cal), c.expected) << c.zone << " " << c.at << " + " << c.days;
    }
    auto ny = in("America/New_York");
    EXPECT_EQ(ny.dateByAddingDays(1, Date{731707200})->timeIntervalSinceReferenceDate, 731790000.0);
    // The fraction of a second rides along.
    EXPECT_EQ(ny.dateByAddingDays(1, Date{731707200.25})->timeIntervalSinceReferenceDate, 731790000.25);
    EXPECT_FALSE(ny.dateByAddingDays(1, Date{std::numeric_limits<double>::quiet_NaN()}));
    EXPECT_FALSE(ny.dateByAddingDays(1, Date{1e300}));
}

TEST(Calendar, SameDayAndComponentsAreLocal) {
    auto ny = in("America/New_York");
    EXPECT_TRUE(ny.isDateInSameDayAs(utc("2024-03-10T04:59:59Z"), utc("2024-03-09T05:00:00Z")));
    EXPECT_FALSE(ny.isDateInSameDayAs(utc("2024-03-10T04:59:59Z"), utc("2024-03-10T05:00:00Z")));
    EXPECT_TRUE(Calendar(TimeZone::utc()).isDateInSameDayAs(utc("2024-03-10T00:00:00Z"),
                                                            utc("2024-03-10T23:59:59Z")));
    EXPECT_EQ(ny.components(utc("2024-03-10T07:30:15.9Z")), (DateComponents{2024, 3, 10, 3, 30, 15}));
    EXPECT_EQ(Calendar(TimeZone::utc()).components(Date{-0.5}), (DateComponents{2000, 12, 31, 23, 59, 59}));
    EXPECT_EQ(Calendar(TimeZone::utc()).components(Date{0}), (DateComponents{2001, 1, 1, 0, 0, 0}));
}

TEST(Calendar, ZoneComesFromTZFirst) {
    EXPECT_EQ(TimeZone::fromEnvironment("America/New_York").identifier(), "America/New_York");
    EXPECT_EQ(TimeZone::fromEnvironment(":Europe/Paris").identifier(), "Europe/Paris");
    EXPECT_EQ(TimeZone::fromEnvironment("/usr/share/zoneinfo/Asia/Tokyo").identifier(), "Asia/Tokyo");
    EXPECT_EQ(TimeZone::fromEnvironment(""), TimeZone::utc());
    EXPECT_FALSE(TimeZone::named("Not/AZone"));

    const char* saved = std::getenv("TZ");
    std::string savedValue = saved ? saved : "";
    ::setenv("TZ", "America/New_York", 1);
    auto cal = Calendar::current();
    if (saved) ::setenv("TZ", savedValue.c_str(), 1); else ::unsetenv("TZ");
    EXPECT_EQ(cal.timeZone().identifier(), "America/New_York");
}

TEST(ISO8601, ParsesWhatAUserTypes) {
    auto ny = in("America/New_York");
    struct Case {
        const char* text;
        const char* expected;
    };
    const Case cases[] = {
        {"2024-03-09T15:00", "2024-03-09T20:00:00Z"},
        {"2024-03-09T15:00:00", "2024-03-09T20:00:00Z"},
        {"2024-03-09 15:00", "2024-03-09T20:00:00Z"},
        {"2024-03-09T15:00Z", "2024-03-09T15:00:00Z"},
        {"2024-03-09T15:00:00+01:00", "2024-03-09T14:00:00Z"},
        {"2024-03-09T15:00:00-0230", "2024-03-09T17:30:00Z"},
        {"2024-03-09T15:00:00.250Z", "2024-03-09T15:00:00.250Z"},
        {"2024-03-10T02:30", "2024-03-10T07:30:00Z"},  // inside the gap: 03:30 EDT
        {"2024-11-03T01:30", "2024-11-03T05:30:00Z"},  // repeated: the first, EDT
        {"2024-03-09", "2024-03-09T05:00:00Z"},
    };
    for (const auto& c : cases) EXPECT_EQ(asUTC(parseISO8601(c.text, ny)), c.expected) << c.text;
    EXPECT_EQ(asUTC(parseISO8601("2018-11-04", in("America/Sao_Paulo"))), "2018-11-04T03:00:00Z");

    for (const char* bad : {"", "yesterday", "2024-3-9", "2024-13-01T00:00", "2024-02-30T00:00", "2024-03-09T24:00",
                            "2024-03-09T15:60", "2024-03-09T15", "2024-03-09T15:00+1", "2024-03-09T15:00 junk",
                            "2024-03-09T15:00:00.", "2024-03-09Z"}) {
        std::string error;
        EXPECT_FALSE(tryParseISO8601(bad, ny, &error)) << bad;
        EXPECT_NE(error.find("invalid time"), std::string::npos) << bad;
    }
    EXPECT_THROW(parseISO8601("nonsense", ny), std::invalid_argument);
}
