#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <variant>

#include "Platform/coding/JSONDecoder.hpp"
#include "Widget/Cache/CaloriesConsumedDataEntry.hpp"
#include "Widget/Cache/MacronutrientsDataEntry.hpp"
#include "Widget/Cache/WaterDataEntry.hpp"

using namespace qrv::widget;
using qrv::platform::Date;
using qrv::platform::DecodingErrorKind;

namespace {

const std::filesystem::path kRecords = std::filesystem::path(QRV_TEST_DATA) / "fixtures" / "records";

std::string readFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    EXPECT_TRUE(in) << path;
    return {std::istreambuf_iterator<char>(in), {}};
}

using AnyRecord = std::variant<CaloriesConsumedDataEntry, MacronutrientsDataEntry, WaterDataEntry>;

// Decodes `json` as the record its file name starts with.
template <class Visit>
void decodeAsNamed(const std::string& name, const std::string& json, Visit visit) {
    auto bytes = qrv::platform::bytesOf(json);
    if (name.starts_with("calories")) return visit(CaloriesConsumedDataEntry::decodeResult(bytes));
    if (name.starts_with("macronutrients")) return visit(MacronutrientsDataEntry::decodeResult(bytes));
    return visit(WaterDataEntry::decodeResult(bytes));
}

std::set<std::string> jsonFilesIn(const std::filesystem::path& dir) {
    std::set<std::string> names;
    for (const auto& file : std::filesystem::directory_iterator(dir))
        if (file.path().extension() == ".json") names.insert(file.path().filename().string());
    return names;
}

CaloriesConsumedDataEntry caloriesOverGoal() {
    return {Date{731707200}, true,    false,      "kJ",      "kJ",      "Objectif / jour", "8 400",
            "9 450",         "Aliments", "10 500", "Exercice", "1 050", "-1 050",          "Dépassé",
            1.25,            -0.25,   0.125};
}

MacronutrientsDataEntryValue macro(const char* title, double max, double value, MacronutrientsDataValueType type) {
    return {title, max, value, type};
}

}  // namespace

TEST(CachedEntryRecords, FixturesAsTheAppWritesThemDecode) {
    using enum MacronutrientsDataValueType;
    const std::map<std::string, AnyRecord> expected = {
        {"calories.json",
         CaloriesConsumedDataEntry{Date{731707200.123}, true, true, "cals", "cal", "Base Goal", "1,500", "1,750",
                                   "Food", "500", "Exercise", "250", "1,250", "Remaining", 0.2857142857142857,
                                   0.7142857142857143, 0.14285714285714285}},
        {"calories-logged-out.json",
         CaloriesConsumedDataEntry{Date{0}, false, false, "", "", "", "", "", "", "0", "", "0", "", "", 0, 0, 0}},
        // Unknown keys ignored; "progress" given twice: the first counts.
        {"calories-over-goal-extra-keys.json", caloriesOverGoal()},
        {"macronutrients.json",
         MacronutrientsDataEntry{Date{731707200.5}, true,
                                 {{carbs, macro("Carbs", 165, 50, carbs)},
                                  {fat, macro("Fat", 65, 35.5, fat)},
                                  {protein, macro("Protein", 85, 65, protein)}}}},
        {"macronutrients-empty-values.json", MacronutrientsDataEntry{Date{731707200}, true, {}}},
        // Protein given twice: the later pair wins, its type carried as sent.
        {"macronutrients-repeated-key.json",
         MacronutrientsDataEntry{Date{731707200}, true,
                                 {{carbs, macro("Carbs", 165, 1, carbs)}, {protein, macro("Proteins", 90, 20, fat)}}}},
        {"water.json", WaterDataEntry{Date{731707200}, true, 24.0f, WaterWidgetUnit::oz}},
        {"water-cups.json", WaterDataEntry{Date{731707200.25}, true, 2.5f, WaterWidgetUnit::cups}},
        {"water-ml.json", WaterDataEntry{Date{731707200}, true, 0.1f, WaterWidgetUnit::ml}},
        {"water-logged-out.json", WaterDataEntry{Date::fromUnix(0), false, 0.0f, WaterWidgetUnit::oz}},
    };
    std::set<std::string> listed;
    for (const auto& [name, record] : expected) listed.insert(name);
    EXPECT_EQ(jsonFilesIn(kRecords), listed) << "every fixture has its expected record";

    for (const auto& [name, want] : expected) {
        std::string json = readFile(kRecords / name);
        decodeAsNamed(name, json, [&](auto result) {
            ASSERT_TRUE(result) << name << ": " << result.error().describe();
            using Record = std::decay_t<decltype(result.value())>;
            EXPECT_EQ(result.value(), std::get<Record>(want)) << name;
            // What we write reads back to the same record.
            EXPECT_EQ(Record::decode(result.value().encode()), result.value()) << name;
        });
    }
}

// None of the invalid fixtures decodes. Where the record's own code rejects a
// value (the platform decoder's kinds are its tests' part), the error says
// what and where.
TEST(CachedEntryRecords, InvalidFixturesDoNotDecode) {
    const std::map<std::string, const char*> ownRejections = {
        {"macronutrients-invalid-type.json", "values[1].type"},
        {"macronutrients-odd-values.json", "values"},
        {"macronutrients-unknown-key.json", "values[0]"},  // an Int value 3
        {"water-unknown-unit.json", "waterUnit"},
        {"water-uppercase-unit.json", "waterUnit"},
    };
    const auto names = jsonFilesIn(kRecords / "invalid");
    for (const auto& [name, path] : ownRejections) EXPECT_TRUE(names.contains(name)) << name;
    for (const auto& name : names) {
        decodeAsNamed(name, readFile(kRecords / "invalid" / name), [&](auto result) {
            ASSERT_FALSE(result) << name;
            if (const auto own = ownRejections.find(name); own != ownRejections.end()) {
                EXPECT_EQ(result.error().kind, DecodingErrorKind::dataCorrupted) << name;
                EXPECT_EQ(result.error().pathText(), own->second) << name;
            }
        });
    }
}

// The app reads what the widget writes: compact, keys in field order, the
// nutrient map as a flat list of key and value. Round trips are tested above.
TEST(CachedEntryRecords, EncodesCompactlyInFieldOrder) {
    WaterDataEntry water{Date{754000000.5}, true, 0.1f, WaterWidgetUnit::cups};
    EXPECT_EQ(water.encode(), R"({"date":754000000.5,"isLoggedIn":true,"waterValue":0.1,"waterUnit":"cups"})");

    auto macros = MacronutrientsDataEntry::makeSample(Date{-978307200});
    EXPECT_EQ(macros.encode(),
              R"({"date":-978307200,"isLoggedIn":true,"values":[0,{"title":"Carbs","maxValue":165,"value":50,"type":0},)"
              R"(1,{"title":"Fat","maxValue":65,"value":35,"type":1},2,{"title":"Protein","maxValue":85,"value":65,"type":2}]})");
}
