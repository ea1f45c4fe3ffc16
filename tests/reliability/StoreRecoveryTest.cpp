// The shared store when things around it go wrong: a damaged file, a container
// the widget cannot write, a value far larger than any record. The widgets
// carry on and say what happened in the lines the reader prints.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "Platform/store/PropertyList.hpp"
#include "Platform/store/UserDefaults.hpp"
#include "Widget/Cache/CaloriesConsumedDataEntry.hpp"
#include "Widget/Cache/InteractiveWaterData.hpp"
#include "Widget/Cache/MacronutrientsDataEntry.hpp"
#include "Widget/Cache/WaterDataEntry.hpp"
#include "Widget/Providers/WidgetFetchEvent.hpp"
#include "tests/reliability/ReliabilitySupport.hpp"

using namespace qrv;
using namespace qrv::reliability;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

// 2024-03-09 20:00:00 UTC, and a calories record of that moment.
constexpr const char* kNow = "2024-03-09T20:00:30Z";
const std::string kCaloriesJSON =
    R"({"date":731707200.5,"isLoggedIn":true,"shouldShowBarcodeButton":true,"energyUnitTitle":"cals",)"
    R"("condensedEnergyUnitTitle":"cal","goalTitle":"Base Goal","goal":"1,500","goalAdjustedForExercise":"1,750",)"
    R"("consumedTitle":"Food","consumed":"500","exerciseTitle":"Exercise","exercise":"250","remaining":"1,250",)"
    R"("subtitle":"Remaining","progress":0.33,"reverseProgress":0,"exerciseProgress":0})";

platform::PropertyListValue::Data bytesOf(const std::string& text) { return {text.begin(), text.end()}; }

// The water taps stored in `file`; an empty list when there are none.
widget::InteractiveWaterDataList tapsIn(const fs::path& file) {
    const auto taps = widget::decodeInteractiveWaterDataList(
        platform::UserDefaults::atPath(file)->data("WaterInteractiveData").value_or(
            platform::PropertyListValue::Data{}));
    EXPECT_TRUE(taps.has_value()) << "the tap list in " << file << " does not decode";
    return taps.value_or(widget::InteractiveWaterDataList{});
}

std::string pseudoRandomBytes(std::size_t size, unsigned seed) {
    std::mt19937 random(seed);
    std::string bytes(size, '\0');
    for (auto& byte : bytes) byte = static_cast<char>(random() & 0xff);
    return bytes;
}

class StoreRecovery : public ::testing::Test {
  protected:
    void SetUp() override { fs::create_directories(container_); }

    ProgramResult run(std::vector<std::string> args, bool withContainer = true) const {
        if (withContainer) args.insert(args.end(), {"--container", container_.string()});
        return runProgram(qrvWidgets(), args, environment_, scratch_.path());
    }
    ProgramResult calories() const { return run({"timeline", "--widget", "calories", "--now", kNow}); }
    ProgramResult water() const { return run({"timeline", "--widget", "water", "--now", kNow}); }
    ProgramResult logWater(const std::string& amount) const {
        return run({"log-water", "--unit", "ml", "--amount", amount});
    }

    // The files beside the store whose name holds `part`.
    std::vector<fs::path> besideTheStore(std::string_view part = ".plist.corrupt-") const {
        std::vector<fs::path> found;
        for (const auto& entry : fs::directory_iterator(storeFile(container_).parent_path()))
            if (entry.path().filename().string().find(part) != std::string::npos) found.push_back(entry.path());
        return found;
    }

    Scratch scratch_;
    fs::path container_ = scratch_ / "container";
    std::map<std::string, std::string> environment_ = programEnvironment(scratch_ / "data");
};

TEST_F(StoreRecovery, DamagedFileIsSetAsideAndTheWidgetsCarryOn) {
    const auto fixture = readFile(repositoryRoot() / "tests/fixtures/container/Library/Preferences" /
                                  "group.com.qrv.widgets.plist");
    const auto fixtureXML = readFile(repositoryRoot() / "tests/fixtures/container/group.com.qrv.widgets.xml");
    ASSERT_GT(fixture.size(), 100u);
    ASSERT_GT(fixtureXML.size(), 100u);
    const struct {
        const char* name;
        std::string bytes;
    } damaged[] = {
        {"binary cut in half", fixture.substr(0, fixture.size() / 2)},
        {"binary missing its trailer", fixture.substr(0, fixture.size() - 1)},
        {"XML cut in half", fixtureXML.substr(0, fixtureXML.size() / 2)},
        {"garbage", pseudoRandomBytes(4096, 7)},
        {"a list, not a dictionary", "<plist version=\"1.0\"><array><integer>1</integer></array></plist>"},
    };
    for (const auto& [name, bytes] : damaged) {
        SCOPED_TRACE(name);
        fs::remove_all(container_);
        writeBytes(storeFile(container_), bytes);

        const auto first = calories();
        EXPECT_EQ(first.exitCode, 3);
        EXPECT_THAT(first.out, HasSubstr("unable to find data for type: Calories\n"));
        EXPECT_THAT(first.err, HasSubstr("is not a readable property list"));
        EXPECT_THAT(first.err, HasSubstr("moved aside to"));
        const auto aside = besideTheStore();
        ASSERT_EQ(aside.size(), 1u);
        EXPECT_EQ(readFile(aside.front()), bytes) << "the damaged file is kept as it was";

        // The store works again: a tap lands and the water widget shows it.
        EXPECT_EQ(logWater("250").exitCode, 0);
        const auto shown = water();
        EXPECT_EQ(shown.exitCode, 0) << shown.err;
        EXPECT_THAT(shown.out, HasSubstr("\"entries\":[{"));
        const auto again = calories();
        EXPECT_THAT(again.err, Not(HasSubstr("moved aside")));
        EXPECT_EQ(besideTheStore().size(), 1u);
        EXPECT_EQ(tapsIn(storeFile(container_)).size(), 1u);
    }
}

TEST_F(StoreRecovery, ContainerThatCannotBeCreatedFallsBackToTheStandardDefaults) {
    // Tests run as root, for whom permission bits stop nothing; a container
    // path that runs through a regular file cannot be created by anyone
    // (ENOTDIR), which is what a missing app-group entitlement looks like to
    // the store. The container comes from the environment, as on the phone.
    writeBytes(scratch_ / "not-a-directory", "x");
    environment_["QRV_APP_GROUP_CONTAINER"] = (scratch_ / "not-a-directory" / "container").string();

    const auto calories = run({"timeline", "--widget", "calories", "--now", kNow}, false);
    EXPECT_EQ(calories.exitCode, 3);
    EXPECT_EQ(calories.out, "unable to find data for type: Calories\n");

    ASSERT_EQ(run({"log-water", "--unit", "ml", "--amount", "300"}, false).exitCode, 0);
    const auto standard = scratch_ / "data" / "quorvane" / "standard" / "qrv-widgets.plist";
    ASSERT_TRUE(fs::exists(standard)) << "the tap went to the standard defaults";
    const auto taps = tapsIn(standard);
    ASSERT_EQ(taps.size(), 1u);
    EXPECT_EQ(taps.front().waterValue, 300.0f);

    const auto water = run({"timeline", "--widget", "water", "--now", kNow}, false);
    EXPECT_EQ(water.exitCode, 0) << water.err;
    EXPECT_THAT(water.out, HasSubstr("\"isLoggedIn\":true"));
}

TEST_F(StoreRecovery, ReadOnlyContainerFallsBackToTheStandardDefaults) {
    // A container holding today's calories record, mounted read-only in a
    // mount namespace of its own (root ignores permission bits, not a
    // read-only mount). Where namespaces are not allowed the case is skipped.
    platform::UserDefaults::atPath(storeFile(container_))->set("CaloriesData", bytesOf(kCaloriesJSON));
    const auto before = readFile(storeFile(container_));
    const auto script = "mount --bind -o ro \"$0\" \"$0\" && exec \"$@\"";
    auto inReadOnlyMount = [&](std::vector<std::string> args) {
        std::vector<std::string> full{"-m", "--", "/bin/sh", "-c", script, container_.string(),
                                      qrvWidgets().string()};
        full.insert(full.end(), args.begin(), args.end());
        full.push_back("--container");
        full.push_back(container_.string());
        return runProgram("/usr/bin/unshare", full, environment_, scratch_.path());
    };
    const auto probe = inReadOnlyMount({"placeholder", "--widget", "water"});
    if (probe.exitCode != 0) GTEST_SKIP() << "no read-only mount possible here: " << probe.err;

    const auto calories = inReadOnlyMount({"timeline", "--widget", "calories", "--now", kNow});
    EXPECT_EQ(calories.exitCode, 3);
    EXPECT_EQ(calories.out, "unable to find data for type: Calories\n");
    EXPECT_THAT(calories.err, HasSubstr("cannot be used"));
    EXPECT_EQ(inReadOnlyMount({"log-water", "--unit", "ml", "--amount", "300"}).exitCode, 0);
    EXPECT_TRUE(fs::exists(scratch_ / "data" / "quorvane" / "standard" / "qrv-widgets.plist"));
    EXPECT_EQ(readFile(storeFile(container_)), before) << "nothing was written into the container";

    // Writable again, the same container's record is found.
    const auto writable = this->calories();
    EXPECT_EQ(writable.exitCode, 0) << writable.out << writable.err;
}

TEST(HugeValues, TenMegabytesUnderARecordKeyIsRejectedByEveryDecoder) {
    constexpr std::size_t kSize = 10u << 20;
    const std::vector<std::string> values{
        std::string(kSize, '['),                                   // nesting far past any limit
        R"({"date":)" + std::string(kSize, '7') + "}",            // one enormous number
        pseudoRandomBytes(kSize, 11),                              // not text at all
        "[" + std::string(kSize, ' ') + "{\"x\":1}]",              // valid JSON of the wrong shape
    };
    for (std::size_t index = 0; index < values.size(); ++index) {
        SCOPED_TRACE(index);
        const auto bytes = std::span(reinterpret_cast<const std::uint8_t*>(values[index].data()),
                                     values[index].size());
        EXPECT_FALSE(widget::CaloriesConsumedDataEntry::decode(bytes));
        EXPECT_FALSE(widget::MacronutrientsDataEntry::decode(bytes));
        EXPECT_FALSE(widget::WaterDataEntry::decode(bytes));
        EXPECT_FALSE(widget::WidgetFetchEvent::decode(bytes));
        EXPECT_FALSE(widget::decodeInteractiveWaterDataList(bytes));
    }
}

TEST_F(StoreRecovery, TenMegabytesUnderTheRecordKeysLeavesTheWidgetsWorking) {
    constexpr std::size_t kSize = 10u << 20;
    const auto store = platform::UserDefaults::atPath(storeFile(container_));
    store->set("CaloriesData", bytesOf(std::string(kSize, '[')));
    store->set("WaterEntryData", bytesOf(pseudoRandomBytes(kSize, 3)));
    const auto hugeTaps = bytesOf(std::string(kSize, '{'));
    store->set("WaterInteractiveData", hugeTaps);

    // Reading 30 MB under the sanitizers on a busy machine can outlast the
    // default 2 s wait; the wait is only an upper bound, so a long one costs
    // nothing when the answer comes sooner.
    const auto calories = run({"timeline", "--widget", "calories", "--now", kNow, "--wait", "60"});
    EXPECT_EQ(calories.exitCode, 3);
    EXPECT_EQ(calories.out, "unable to decode entry for type: Calories\n");

    const auto water = run({"timeline", "--widget", "water", "--now", kNow, "--wait", "60"});
    EXPECT_EQ(water.exitCode, 0) << water.err;
    EXPECT_THAT(water.out, HasSubstr("\"waterValue\":0,"));

    // A tap starts a fresh list; the unreadable one is kept aside, not dropped.
    EXPECT_EQ(logWater("250").exitCode, 0);
    EXPECT_EQ(tapsIn(storeFile(container_)).size(), 1u);
    // The unreadable list is kept byte for byte in a file beside the store.
    const auto kept = besideTheStore(".WaterInteractiveData-unreadable-");
    ASSERT_EQ(kept.size(), 1u);
    EXPECT_EQ(std::filesystem::file_size(kept.front()), hugeTaps.size());
}

}  // namespace
