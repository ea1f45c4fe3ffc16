#pragma once
// The live host's requests and answers, apart from the HTTP server: reading
// an intent's parameters and a clock setting from a request body, and the
// state of the home screen as JSON. Every text a record brings goes out JSON
// escaped; the page puts it into the document as text, never as markup.
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "Host/HostEngine.hpp"
#include "Platform/time/Calendar.hpp"

namespace qrv::host {

// A request that cannot be carried out, with the message for its 400 answer.
struct BadRequest {
    std::string message;
};

// Name → text pairs, in the order the request gave them.
using Fields = std::vector<std::pair<std::string, std::string>>;

// Flat name → text pairs from a JSON object of strings
// ({"waterUnit":"ml","waterValue":"250"}) or from form fields
// (waterUnit=ml&waterValue=250), by content type. Repeated names, values that
// are not texts and other content types are refused.
std::variant<Fields, BadRequest> parseFields(std::string_view contentType,
                                                                            std::string_view body);

// The fields as the intent's parameters: exactly the names it declares, each
// once, texts of at most 64 bytes without control characters. The water
// intent's texts must also be what its button could carry (a number not below
// zero; oz, ml or cups): the intent would quietly log 0 or ounces otherwise.
std::variant<IntentRequest, BadRequest> intentRequest(const std::string& intentName, const Fields& fields);

// How the clock should be set: {"mode":"real"}, {"mode":"run","time":T} (runs
// on from T) or {"mode":"stop","time":T}; T is ISO 8601, local time in
// `calendar`'s zone when it has no offset.
struct ClockSetting {
    std::optional<platform::Date> date;  // nothing: real time
    bool running = true;
};
std::variant<ClockSetting, BadRequest> clockSetting(const Fields& fields,
                                                    const platform::Calendar& calendar);

struct StateOptions {
    std::string scheme = "system";  // the page's initial colour scheme
    std::string language = "en";
};

// Everything the page shows: the clock, the device, every installed widget
// with its picture's version, entry, schedule, texts and tap targets.
std::string stateJSON(const HostSnapshot& snapshot, const HostEngine& engine, const StateOptions& options);

}  // namespace qrv::host
