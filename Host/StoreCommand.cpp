// qrv-widgets store: what the shared store holds, key by key, with the records
// decoded where they decode: the way to see what the app and the widgets left.
#include <cmath>
#include <functional>
#include <iostream>
#include <map>
#include <memory>
#include <string>

#include "Host/Command.hpp"
#include "Host/Options.hpp"
#include "Platform/coding/JSONWriter.hpp"
#include "Widget/Cache/CaloriesConsumedDataEntry.hpp"
#include "Widget/Cache/InteractiveWaterData.hpp"
#include "Widget/Cache/MacronutrientsDataEntry.hpp"
#include "Widget/Cache/WaterDataEntry.hpp"
#include "Widget/Cache/WidgetDataCacheType.hpp"
#include "Widget/Cache/WidgetSettings.hpp"
#include "Widget/Providers/WidgetFetchEvent.hpp"

namespace qrv::host {
namespace {

using Value = platform::PropertyListValue;

std::string bytesText(const std::vector<std::uint8_t>& bytes) {
    return std::string(bytes.begin(), bytes.end());
}

// A decoded record as JSON, or the reason it does not decode.
struct Decoded {
    std::optional<std::string> json;
    std::string error;
};

template <class Record>
Decoded decodeRecord(const Value::Data& bytes) {
    const auto result = Record::decodeResult(bytes);
    if (!result) return {std::nullopt, result.error().describe()};
    return {result.value().encode(), {}};
}

Decoded decodeInteractiveWater(const Value::Data& bytes) {
    const auto records = widget::decodeInteractiveWaterDataList(bytes);
    if (!records) return {std::nullopt, "not a list of logged water amounts"};
    return {bytesText(widget::encodeInteractiveWaterDataList(*records)), {}};
}

// The keys whose data the extension knows how to read.
const std::map<std::string, std::function<Decoded(const Value::Data&)>, std::less<>>& recordDecoders() {
    static const std::map<std::string, std::function<Decoded(const Value::Data&)>, std::less<>> decoders{
        {std::string(widget::WidgetStoreKeys::caloriesData), decodeRecord<widget::CaloriesConsumedDataEntry>},
        {std::string(widget::WidgetStoreKeys::macronutrientsData),
         decodeRecord<widget::MacronutrientsDataEntry>},
        {std::string(widget::WidgetStoreKeys::waterEntryData), decodeRecord<widget::WaterDataEntry>},
        {std::string(widget::WidgetStoreKeys::waterInteractiveData), decodeInteractiveWater},
    };
    return decoders;
}

std::optional<std::size_t> sizeOf(const Value& value) {
    if (const auto* data = value.dataValue()) return data->size();
    if (const auto* text = value.stringValue()) return text->size();
    if (const auto* array = value.arrayValue()) return array->size();
    if (const auto* dictionary = value.dictionaryValue()) return dictionary->size();
    return std::nullopt;
}

std::optional<std::string> scalarJSON(const Value& value) {
    platform::JSONWriter writer;
    if (const auto* flag = value.booleanValue())
        writer.boolean(*flag);
    else if (const auto* integer = value.integerValue())
        writer.integer(*integer);
    else if (const auto* real = value.realValue()) {
        if (!std::isfinite(*real)) return jsonString(std::to_string(*real));
        writer.number(*real);
    } else if (const auto* text = value.stringValue())
        writer.string(*text);
    else if (const auto* date = value.dateValue())
        writer.date(*date);
    else
        return std::nullopt;
    return writer.text();
}

std::string eventsJSON(const Value& value) {
    std::string records = "[", errors;
    const auto& elements = *value.arrayValue();
    for (std::size_t index = 0; index < elements.size(); ++index) {
        std::string problem;
        if (const auto* blob = elements[index].dataValue()) {
            const auto event = widget::WidgetFetchEvent::decode(*blob);
            if (event) {
                if (records.size() > 1) records += ',';
                records += bytesText(event.value().encode());
                continue;
            }
            problem = event.error().describe();
        } else {
            problem = std::string(elements[index].typeName()) + ", not data";
        }
        if (!errors.empty()) errors += ',';
        errors += "{\"index\":" + std::to_string(index) + ",\"error\":" + jsonString(problem) + "}";
    }
    return ",\"records\":" + records + "]" + (errors.empty() ? "" : ",\"errors\":[" + errors + "]");
}

std::string keyJSON(const std::string& key, const Value& value) {
    std::string json = "{\"key\":" + jsonString(key) + ",\"type\":" + jsonString(value.typeName());
    if (const auto size = sizeOf(value)) json += ",\"size\":" + std::to_string(*size);
    if (const auto scalar = scalarJSON(value)) json += ",\"value\":" + *scalar;
    if (const auto decoder = recordDecoders().find(key); decoder != recordDecoders().end()) {
        if (const auto* data = value.dataValue()) {
            const auto decoded = decoder->second(*data);
            json += decoded.json ? ",\"record\":" + *decoded.json : ",\"error\":" + jsonString(decoded.error);
        } else {
            json += ",\"error\":" + jsonString("holds " + std::string(value.typeName()) + ", not data");
        }
    } else if (key == widget::WidgetStoreKeys::widgetEvents) {
        json += value.arrayValue()
                    ? eventsJSON(value)
                    : ",\"error\":" + jsonString("holds " + std::string(value.typeName()) + ", not a list");
    }
    return json + "}";
}

struct StoreOptions {
    std::string container;
    std::string out;
};

int run(const StoreOptions& options) {
    useContainer(options.container);
    const auto store = widget::WidgetSettings::defaults();
    const auto contents = store->dictionaryRepresentation();
    std::string json = "{\"file\":" + jsonString(store->filePath().string()) + ",\"installed\":{";
    bool first = true;
    for (auto type : widget::allWidgetDataCacheTypes) {
        json += (first ? "" : ",") + jsonString(widget::typeName(type)) + ":" +
                (store->boolValue(widget::installedKey(type)) ? "true" : "false");
        first = false;
    }
    json += ",\"Unknown\":";
    json += store->boolValue(widget::WidgetStoreKeys::unknownWidgetInstalled) ? "true" : "false";
    json += "},\"keys\":[";
    first = true;
    for (const auto& [key, value] : contents) {
        json += (first ? "" : ",") + keyJSON(key, value);
        first = false;
    }
    json += "]}";
    return writeOutput(options.out, json) ? kExitOk : kExitFailure;
}

const CommandRegistration storeCommand{
    "store", [](CLI::App& app) {
        auto options = std::make_shared<StoreOptions>();
        auto* command = app.add_subcommand(
            "store",
            "Print what the shared store holds as JSON: its file, the installed flags, and every key with "
            "its "
            "value's type and size and, for the records, the record decoded (or why it does not decode)");
        addContainerOption(*command, options->container);
        addOutOption(*command, options->out);
        setCommandAction(*command, "store", [options] { return run(*options); });
    }};

}  // namespace
}  // namespace qrv::host
