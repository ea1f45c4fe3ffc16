#include "Host/WebServerRequests.hpp"

#include <algorithm>
#include <cmath>
#include <set>

#include <simdjson.h>

#include "Host/Options.hpp"
#include "Platform/coding/JSONWriter.hpp"
#include "Platform/time/ISO8601.hpp"
#include "Widget/Water/FloatParsing.hpp"
#include "Host/RenderWidget.hpp"
#include "Host/TargetsJSON.hpp"
#include "Widget/Water/WaterWidgetUnit.hpp"

namespace qrv::host {

using platform::JSONWriter;

namespace {

constexpr std::size_t kMaxValueBytes = 64;

std::string_view mediaType(std::string_view contentType) {
    const auto semicolon = contentType.find(';');
    auto type = contentType.substr(0, semicolon);
    while (!type.empty() && type.back() == ' ') type.remove_suffix(1);
    return type;
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

std::optional<std::string> formDecoded(std::string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '+') {
            out += ' ';
        } else if (text[i] == '%') {
            if (i + 2 >= text.size()) return std::nullopt;
            const int high = hexDigit(text[i + 1]), low = hexDigit(text[i + 2]);
            if (high < 0 || low < 0) return std::nullopt;
            out += static_cast<char>(high * 16 + low);
            i += 2;
        } else {
            out += text[i];
        }
    }
    return out;
}

std::variant<Fields, BadRequest> formFields(std::string_view body) {
    Fields fields;
    std::size_t start = 0;
    while (start <= body.size() && !body.empty()) {
        auto end = body.find('&', start);
        if (end == std::string_view::npos) end = body.size();
        const auto pair = body.substr(start, end - start);
        if (!pair.empty()) {
            const auto equals = pair.find('=');
            if (equals == std::string_view::npos) return BadRequest{"a form field without a value"};
            auto name = formDecoded(pair.substr(0, equals));
            auto value = formDecoded(pair.substr(equals + 1));
            if (!name || !value) return BadRequest{"a form field is not properly percent-encoded"};
            fields.push_back({std::move(*name), std::move(*value)});
        }
        start = end + 1;
    }
    return fields;
}

std::variant<Fields, BadRequest> jsonFields(std::string_view body) {
    // The parser itself, not the decoder: a key given twice must be seen twice.
    simdjson::dom::parser parser;
    simdjson::dom::element root;
    if (parser.parse(body.data(), body.size()).get(root) != simdjson::SUCCESS)
        return BadRequest{"the body is not valid JSON"};
    simdjson::dom::object object;
    if (root.get_object().get(object) != simdjson::SUCCESS) return BadRequest{"the body must be a JSON object of texts"};
    Fields fields;
    for (const auto field : object) {
        std::string_view text;
        if (field.value.get_string().get(text) != simdjson::SUCCESS)
            return BadRequest{"the value of " + std::string(field.key) + " must be a text"};
        fields.emplace_back(std::string(field.key), std::string(text));
    }
    return fields;
}

}  // namespace

std::variant<Fields, BadRequest> parseFields(std::string_view contentType, std::string_view body) {
    const auto type = mediaType(contentType);
    std::variant<Fields, BadRequest> parsed;
    if (type == "application/json")
        parsed = jsonFields(body);
    else if (type == "application/x-www-form-urlencoded")
        parsed = formFields(body);
    else
        return BadRequest{"send the fields as application/json or application/x-www-form-urlencoded"};
    if (auto* fields = std::get_if<Fields>(&parsed)) {
        std::set<std::string> seen;
        for (const auto& field : *fields)
            if (!seen.insert(field.first).second) return BadRequest{field.first + " is given more than once"};
    }
    return parsed;
}

std::variant<IntentRequest, BadRequest> intentRequest(const std::string& intentName, const Fields& fields) {
    const auto names = intentParameterNames(intentName);
    if (!names) return BadRequest{"no intent is called " + intentName};
    std::string takes = intentName + " takes exactly ";
    for (std::size_t i = 0; i < names->size(); ++i)
        takes += (i == 0 ? "" : i + 1 == names->size() ? " and " : ", ") + (*names)[i];
    for (const auto& field : fields)
        if (std::find(names->begin(), names->end(), field.first) == names->end())
            return BadRequest{"unexpected parameter " + field.first + "; " + takes};
    IntentRequest invocation{intentName, {}};
    for (const auto& name : *names) {
        const auto found = std::find_if(fields.begin(), fields.end(),
                                        [&](const auto& field) { return field.first == name; });
        if (found == fields.end()) return BadRequest{"missing parameter " + name + "; " + takes};
        if (found->second.size() > kMaxValueBytes)
            return BadRequest{name + " is longer than " + std::to_string(kMaxValueBytes) + " bytes"};
        if (std::any_of(found->second.begin(), found->second.end(),
                        [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; }))
            return BadRequest{name + " holds control characters"};
        invocation.parameters.push_back(*found);
    }
    if (intentName == waterIntentName()) {
        const auto amount = widget::parseFloat(*invocation.parameter("waterValue"));
        if (!amount || !std::isfinite(*amount) || *amount < 0)
            return BadRequest{"waterValue must be a number not below 0"};
        if (!widget::waterWidgetUnit(*invocation.parameter("waterUnit")))
            return BadRequest{"waterUnit must be oz, ml or cups"};
    }
    return invocation;
}

std::variant<ClockSetting, BadRequest> clockSetting(const Fields& fields,
                                                    const platform::Calendar& calendar) {
    const auto field = [&](std::string_view name) -> const std::string* {
        for (const auto& each : fields)
            if (each.first == name) return &each.second;
        return nullptr;
    };
    const std::string* mode = field("mode");
    if (!mode) return BadRequest{"missing mode: real, run or stop"};
    if (*mode == "real") {
        if (fields.size() != 1) return BadRequest{"mode real takes no other field"};
        return ClockSetting{};
    }
    if (*mode != "run" && *mode != "stop") return BadRequest{"unknown mode " + *mode + "; allowed: real, run or stop"};
    const std::string* time = field("time");
    if (!time || fields.size() != 2) return BadRequest{"mode " + *mode + " takes exactly one more field: time"};
    std::string error;
    const auto date = platform::tryParseISO8601(*time, calendar, &error);
    if (!date) return BadRequest{"time is not an ISO 8601 time (" + error + ")"};
    return ClockSetting{*date, *mode == "run"};
}

namespace {

void writeWidget(JSONWriter& json, const InstalledWidget& widget, const platform::Calendar& calendar,
                 const DeviceProfile& device) {
    const auto& image = widget.image;
    json.beginObject();
    json.key("id").string(widget.id);
    json.key("kind").string(widget.kind);
    json.key("name").string(hostWidgetName(widget.kind));
    json.key("displayName").string(widget.displayName);
    json.key("family").string(platform::name(widget.family));
    json.key("screen").string(widget.isOnLockScreen() ? "lock" : "home");
    // Where else the device shows it, and how much larger it is drawn there.
    json.key("appearances").beginObject();
    for (auto appearance : kAllAppearances)
        if (const auto placement = device.placement(appearance, widget.family))
            json.key(appearanceName(appearance)).beginObject().key("scale").number(placement->scale).endObject();
    json.endObject();
    json.key("version").integer(static_cast<std::int64_t>(widget.version));
    json.key("placeholder").boolean(widget.placeholder);
    json.key("entryDate");
    if (widget.entryDate)
        json.string(platform::formatISO8601(*widget.entryDate, calendar));
    else
        json.null();
    json.key("entryIndex").integer(static_cast<std::int64_t>(widget.entryIndex));
    json.key("entryCount").integer(static_cast<std::int64_t>(widget.entryCount));
    json.key("nextReload");
    if (widget.nextReload)
        json.string(platform::formatISO8601(*widget.nextReload, calendar));
    else
        json.null();
    json.key("waiting").boolean(widget.waitingForTimeline);
    json.key("requests").integer(static_cast<std::int64_t>(widget.timelineRequests));
    json.key("size");
    writeSize(json, image.size);
    json.key("widgetURL");
    writeOptional(json, image.widgetURL);
    json.key("links");
    writeLinks(json, image.links);
    json.key("buttons");
    writeButtons(json, image.buttons);
    json.key("texts").beginArray();
    for (const auto& text : image.texts) {
        json.beginObject().key("id");
        writeOptional(json, text.id);
        json.key("text").string(text.text).key("shown").string(text.shown).endObject();
    }
    json.endArray();
    json.endObject();
}

}  // namespace

std::string stateJSON(const HostSnapshot& snapshot, const HostEngine& engine, const StateOptions& options) {
    const auto& calendar = engine.calendar();
    JSONWriter json;
    json.beginObject();
    json.key("version").integer(static_cast<std::int64_t>(snapshot.version));
    json.key("now").string(platform::formatISO8601(snapshot.now, calendar));
    json.key("nowUnix").number(snapshot.now.timeIntervalSince1970());
    json.key("clock").string(modeName(snapshot.clockMode));
    json.key("device").string(engine.device().name);
    json.key("deviceDescription").string(engine.device().description);
    json.key("os").integer(engine.device().systemVersion);
    json.key("scheme").string(options.scheme);
    json.key("language").string(options.language);
    json.key("widgets").beginArray();
    for (const auto& widget : snapshot.widgets) writeWidget(json, widget, calendar, engine.device());
    json.endArray();
    json.endObject();
    return std::move(json).take();
}

}  // namespace qrv::host
