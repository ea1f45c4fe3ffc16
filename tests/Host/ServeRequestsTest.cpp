// What the live host accepts from a browser: an intent's parameters exactly,
// a clock setting, and nothing else.
#include "Host/WebServerRequests.hpp"

#include <gtest/gtest.h>

#include "Host/WebServer.hpp"
#include "Platform/time/ISO8601.hpp"

namespace qrv::host {
namespace {

std::string problem(const std::variant<IntentRequest, BadRequest>& result) {
    const auto* bad = std::get_if<BadRequest>(&result);
    return bad ? bad->message : "";
}

std::variant<IntentRequest, BadRequest> waterIntent(std::string_view contentType, std::string_view body) {
    auto fields = parseFields(contentType, body);
    if (auto* bad = std::get_if<BadRequest>(&fields)) return *bad;
    return intentRequest("WaterWidgetIntent", std::get<Fields>(fields));
}

TEST(ServeRequestsTest, AnIntentTakesExactlyItsParametersAsJSONOrFormFields) {
    const struct {
        std::string contentType;
        std::string body;
        std::string problem;  // empty: accepted
    } cases[] = {
        {"application/json", R"({"waterUnit":"ml","waterValue":"250"})", ""},
        {"application/json; charset=utf-8", R"({"waterValue":"8","waterUnit":"oz"})", ""},
        {"application/x-www-form-urlencoded", "waterUnit=cups&waterValue=1.5", ""},
        {"application/x-www-form-urlencoded", "waterUnit=%6Dl&waterValue=250", ""},
        {"application/json", R"({"waterUnit":"ml"})", "missing parameter waterValue"},
        {"application/json", R"({"waterUnit":"ml","waterValue":"250","extra":"1"})", "unexpected parameter extra"},
        {"application/json", R"({"unit":"ml","amount":"250"})", "unexpected parameter unit"},
        {"application/json", R"({"waterUnit":"ml","waterUnit":"oz","waterValue":"1"})", "more than once"},
        {"application/x-www-form-urlencoded", "waterUnit=ml&waterUnit=oz&waterValue=1", "more than once"},
        {"application/json", R"({"waterUnit":"ml","waterValue":250})", "must be a text"},
        {"application/json", R"(["ml","250"])", "JSON object"},
        {"application/json", R"({"waterUnit":"ml",)", "not valid JSON"},
        {"application/x-www-form-urlencoded", "waterUnit=ml&waterValue=%zz", "percent-encoded"},
        {"text/plain", "waterUnit=ml&waterValue=250", "application/json"},
        {"application/json", R"({"waterUnit":"litres","waterValue":"250"})", "oz, ml or cups"},
        {"application/json", R"({"waterUnit":"ml","waterValue":"lots"})", "a number"},
        {"application/json", R"({"waterUnit":"ml","waterValue":"-250"})", "a number not below 0"},
        {"application/json", R"({"waterUnit":"ml\n","waterValue":"250"})", "control characters"},
        {"application/json", R"({"waterUnit":"ml","waterValue":")" + std::string(65, '1') + R"("})", "longer than"},
    };
    for (const auto& each : cases) {
        const auto result = waterIntent(each.contentType, each.body);
        if (each.problem.empty()) {
            EXPECT_EQ(problem(result), "") << each.body;
        } else {
            EXPECT_NE(problem(result).find(each.problem), std::string::npos)
                << each.body << " gave: " << problem(result);
        }
    }
    const auto accepted = std::get<IntentRequest>(waterIntent("application/json", R"({"waterUnit":"ml","waterValue":"250"})"));
    EXPECT_EQ(accepted.parameter("waterUnit"), "ml");
    EXPECT_EQ(accepted.parameter("waterValue"), "250");
    EXPECT_NE(problem(intentRequest("NoSuchIntent", {})).find("no intent"), std::string::npos);
}

TEST(ServeRequestsTest, ClockSettings) {
    const auto calendar = platform::Calendar(*platform::TimeZone::named("America/New_York"));
    const auto parse = [&](Fields fields) { return clockSetting(fields, calendar); };

    const auto real = parse({{"mode", "real"}});
    ASSERT_TRUE(std::holds_alternative<ClockSetting>(real));
    EXPECT_FALSE(std::get<ClockSetting>(real).date);

    const auto run = parse({{"mode", "run"}, {"time", "2024-03-09T23:59:50"}});
    ASSERT_TRUE(std::holds_alternative<ClockSetting>(run));
    EXPECT_TRUE(std::get<ClockSetting>(run).running);
    EXPECT_EQ(*std::get<ClockSetting>(run).date, platform::parseISO8601("2024-03-10T04:59:50Z", calendar))
        << "a time without an offset is the host's local time";
    const auto stop = parse({{"mode", "stop"}, {"time", "2024-03-09T12:00:00Z"}});
    ASSERT_TRUE(std::holds_alternative<ClockSetting>(stop));
    EXPECT_FALSE(std::get<ClockSetting>(stop).running);

    for (const auto& bad : std::vector<Fields>{{},
                                               {{"mode", "later"}},
                                               {{"mode", "run"}},
                                               {{"mode", "run"}, {"time", "tomorrow"}},
                                               {{"mode", "real"}, {"time", "2024-03-09T12:00"}},
                                               {{"mode", "run"}, {"time", "2024-03-09T12:00"}, {"x", "1"}}})
        EXPECT_TRUE(std::holds_alternative<BadRequest>(parse(bad))) << bad.size();
}

TEST(ServeRequestsTest, LoopbackAddresses) {
    for (const char* address : {"127.0.0.1", "127.1.2.3", "::1", "localhost"}) EXPECT_TRUE(isLoopback(address));
    for (const char* address : {"0.0.0.0", "192.168.1.2", "localhost.example.com", "::", ""})
        EXPECT_FALSE(isLoopback(address)) << address;
}

}  // namespace
}  // namespace qrv::host
