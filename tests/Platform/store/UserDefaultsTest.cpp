#include "Platform/store/UserDefaults.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string>

#include "Platform/store/PropertyList.hpp"
#include "tests/Platform/store/StoreTestSupport.hpp"

namespace qrv::platform {
namespace {

namespace fs = std::filesystem;
using Value = PropertyListValue;
using test::ScratchDirectory;

constexpr const char* kSuite = "group.com.qrv.widgets";

const fs::path kFixtureContainer = fs::path(QRV_TEST_DATA) / "fixtures" / "container";

// The names of the files in `directory` whose name holds `part`, sorted.
std::vector<std::string> filesIn(const fs::path& directory, std::string_view part = "") {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(directory))
        if (auto name = entry.path().filename().string(); name.find(part) != std::string::npos)
            names.push_back(std::move(name));
    std::sort(names.begin(), names.end());
    return names;
}

TEST(StoreUserDefaults, ReadsAContainerAsCopiedFromThePhone) {
    ScratchDirectory scratch;
    fs::copy(kFixtureContainer, scratch.path(), fs::copy_options::recursive);
    auto store = UserDefaults::openSuite(kSuite, scratch.path());
    ASSERT_TRUE(store);
    EXPECT_EQ(store->filePath(), scratch.path() / "Library/Preferences/group.com.qrv.widgets.plist");

    const auto calories = store->data("CaloriesData");
    ASSERT_TRUE(calories);
    const std::string json(calories->begin(), calories->end());
    EXPECT_EQ(json.rfind("{\"date\":753000000,\"isLoggedIn\":true,", 0), 0u) << json;
    EXPECT_TRUE(store->boolValue("CaloriesWidgetInstalled"));
    EXPECT_EQ(store->string("LastSyncNote"), "Caf\u00e9 sync \u2713");
    EXPECT_EQ(store->object("SyncCount"), Value(-42));
    EXPECT_EQ(store->object("SyncRatio"), Value(0.25));
    EXPECT_EQ(store->object("LastSync"), Value(Date{752920200.0}));
    EXPECT_EQ(store->object("Nested"), Value(Value::Dictionary{{"depth", Value(2)}}));
    EXPECT_EQ(store->dictionaryRepresentation().size(), 8u);
}

TEST(StoreUserDefaults, OnlyDataCountsAsDataAndTruthFollowsThePlatform) {
    ScratchDirectory scratch;
    auto store = UserDefaults::atPath(scratch.path() / "d.plist");
    struct Row {
        const char* key;
        Value value;
        bool isData;
        bool truth;
    };
    const std::vector<Row> rows = {
        {"data", Value(Value::Data{'{', '}'}), true, false},
        {"emptyData", Value(Value::Data{}), true, false},
        {"text", Value("{}"), false, false},
        {"yes", Value("YES"), false, true},
        {"trueText", Value("  true"), false, true},
        {"signedZeros", Value("-007"), false, true},
        {"zeroText", Value("0"), false, false},
        {"no", Value("no"), false, false},
        {"one", Value(1), false, true},
        {"zero", Value(0), false, false},
        {"half", Value(0.5), false, true},
        {"flag", Value(true), false, true},
        {"array", Value(Value::Array{Value(Value::Data{1})}), false, false},
        {"date", Value(Date{1}), false, false},
    };
    for (const auto& row : rows) {
        store->set(row.key, row.value);
    }
    for (const auto& row : rows) {
        SCOPED_TRACE(row.key);
        EXPECT_EQ(store->data(row.key).has_value(), row.isData);
        EXPECT_EQ(store->boolValue(row.key), row.truth);
        EXPECT_EQ(store->object(row.key), row.value);
    }
    EXPECT_FALSE(store->data("missing"));
    EXPECT_FALSE(store->boolValue("missing"));
}

TEST(StoreUserDefaults, EveryReadSeesTheLatestWriteFromAnyHandle) {
    ScratchDirectory scratch;
    auto first = UserDefaults::openSuite(kSuite, scratch.path());
    auto second = UserDefaults::openSuite(kSuite, scratch.path());
    ASSERT_TRUE(first && second);
    EXPECT_FALSE(second->object("k"));
    first->set("k", Value(1));
    EXPECT_EQ(second->object("k"), Value(1));
    // A write by another process, seen without reopening.
    ASSERT_EQ(test::runInChild([&] {
                  UserDefaults::openSuite(kSuite, scratch.path())->set("k", Value("child"));
                  return 0;
              }),
              0);
    EXPECT_EQ(first->object("k"), Value("child"));
    second->removeObject("k");
    EXPECT_FALSE(first->object("k"));
}

TEST(StoreUserDefaults, UpdateReadsModifiesAndWritesOneKey) {
    ScratchDirectory scratch;
    auto store = UserDefaults::atPath(scratch.path() / "u.plist");
    store->set("other", Value("kept"));

    auto appended = store->update("list", [](std::optional<Value> current) -> std::optional<Value> {
        EXPECT_FALSE(current);
        return Value(Value::Array{Value(1)});
    });
    EXPECT_EQ(appended, Value(Value::Array{Value(1)}));
    EXPECT_EQ(store->object("list"), appended);

    // A throwing update writes nothing.
    EXPECT_THROW(store->update("list", [](std::optional<Value>) -> std::optional<Value> {
        throw std::runtime_error("caller gave up");
    }),
                 std::runtime_error);
    EXPECT_EQ(store->object("list"), appended);

    // Nothing removes.
    store->update("list", [](std::optional<Value>) { return std::optional<Value>(); });
    EXPECT_FALSE(store->object("list"));
    EXPECT_EQ(store->object("other"), Value("kept"));
}

// Reading damaged files of every sort is the reliability tests' part; here, an
// empty file is an empty store and a write onto a damaged one sets it aside.
TEST(StoreUserDefaults, EmptyFileIsEmptyAndAWriteSetsADamagedOneAside) {
    ScratchDirectory scratch;
    auto store = UserDefaults::openSuite(kSuite, scratch.path());
    ASSERT_TRUE(store);
    const fs::path preferences = store->filePath().parent_path();
    EXPECT_TRUE(store->dictionaryRepresentation().empty());
    test::writeBytes(store->filePath(), "");
    EXPECT_TRUE(store->dictionaryRepresentation().empty());
    EXPECT_TRUE(filesIn(preferences, ".corrupt-").empty());

    const std::string damaged("bplist00\x00\x01", 10);
    test::writeBytes(store->filePath(), damaged);
    store->set("k", Value(true));
    EXPECT_EQ(store->dictionaryRepresentation(), (Value::Dictionary{{"k", Value(true)}}));
    const auto copies = filesIn(preferences, ".corrupt-");
    ASSERT_EQ(copies.size(), 1u);
    EXPECT_EQ(copies[0].rfind("group.com.qrv.widgets.plist.corrupt-2", 0), 0u) << copies[0];
    const auto bytes = test::readBytes(preferences / copies[0]);
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), damaged) << "kept byte for byte";
}

TEST(StoreUserDefaults, FailedWriteThrowsAndKeepsTheFile) {
    ScratchDirectory scratch;
    auto store = UserDefaults::atPath(scratch.path() / "w.plist");
    store->set("k", Value(1));
    EXPECT_THROW(store->set("bad", Value(std::string("a\0b", 3))), UserDefaultsError);
    EXPECT_THROW(store->set("caf\xE9", Value(1)), UserDefaultsError);
    EXPECT_EQ(store->dictionaryRepresentation(), (Value::Dictionary{{"k", Value(1)}}));

    // A store whose directory cannot exist: the parent is a regular file.
    test::writeBytes(scratch.path() / "file", "x");
    auto impossible = UserDefaults::atPath(scratch.path() / "file" / "s.plist");
    EXPECT_FALSE(impossible->object("k"));
    EXPECT_THROW(impossible->set("k", Value(1)), UserDefaultsError);
}

TEST(StoreUserDefaults, SuiteIsRefusedWhenTheContainerCannotBeUsed) {
    ScratchDirectory scratch;
    test::writeBytes(scratch.path() / "plain-file", "x");
    EXPECT_FALSE(UserDefaults::openSuite(kSuite, scratch.path() / "plain-file"));
    EXPECT_FALSE(UserDefaults::openSuite(kSuite, scratch.path() / "plain-file" / "deeper"));
    EXPECT_FALSE(UserDefaults::openSuite("", scratch.path()));
    EXPECT_FALSE(UserDefaults::openSuite("../escape", scratch.path()));
    EXPECT_TRUE(UserDefaults::openSuite(kSuite, scratch.path() / "fresh" / "container"));

    // A read-only container. Root ignores permission bits, so the check runs
    // as an unprivileged user.
    const fs::path container = scratch.path() / "container";
    fs::copy(kFixtureContainer, container, fs::copy_options::recursive);
    for (const auto& entry : fs::recursive_directory_iterator(container))
        fs::permissions(entry.path(), entry.is_directory() ? fs::perms(0555) : fs::perms(0444));
    fs::permissions(container, fs::perms(0555));
    fs::permissions(scratch.path(), fs::perms(0755));
    const int status = test::runInChild([&] {
        if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0)) return 10;
        if (UserDefaults::openSuite(kSuite, container)) return 1;
        // Still readable by hand: refusing is about writing.
        return UserDefaults::atPath(suitePreferencesPath(container, kSuite))->data("CaloriesData") ? 0 : 2;
    });
    EXPECT_EQ(status, 0);
}

TEST(StoreUserDefaults, LocationsFollowTheEnvironment) {
    const int status = test::runInChild([] {
        ::setenv("HOME", "/home/someone", 1);
        ::unsetenv("XDG_DATA_HOME");
        ::unsetenv(kAppGroupContainerVariable);
        if (appGroupContainerDirectory() != "/home/someone/.local/share/quorvane/app-group") return 1;
        ::setenv("XDG_DATA_HOME", "/data", 1);
        if (appGroupContainerDirectory() != "/data/quorvane/app-group") return 2;
        if (standardDefaultsPath() != fs::path("/data/quorvane/standard") / (currentProgramName() + ".plist"))
            return 3;
        ::setenv(kAppGroupContainerVariable, "/phone/container", 1);
        if (appGroupContainerDirectory() != "/phone/container") return 4;
        return 0;
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(currentProgramName(), "tests_platform");
}

TEST(StoreUserDefaults, PlistutilAndTheStoreReadEachOtherAndNothingIsLeftBehind) {
    ScratchDirectory scratch;
    auto store = UserDefaults::openSuite(kSuite, scratch.path());
    ASSERT_TRUE(store);
    store->set("WaterWidgetInstalled", Value(true));
    store->set("WaterEntryData", Value(Value::Data{'{', '}'}));
    store->set("Count", Value(-7));
    store->set("Note", Value("Caf\u00e9"));

    struct stat info {};
    ASSERT_EQ(::stat(store->filePath().c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0644u);
    EXPECT_EQ(filesIn(store->filePath().parent_path()),
              (std::vector<std::string>{"group.com.qrv.widgets.plist", "group.com.qrv.widgets.plist.lock"}));

    if (std::system("command -v plistutil >/dev/null") != 0)
        GTEST_SKIP() << "plistutil not installed (Debian package libplist-utils)";
    const auto plistutil = [](const fs::path& in, const char* format, const fs::path& out) {
        const std::string command = "plistutil -i '" + in.string() + "' -f " + format + " -o '" + out.string() + "'";
        return std::system(command.c_str()) == 0;
    };

    ASSERT_TRUE(plistutil(store->filePath(), "xml", scratch.path() / "store.xml"));
    const auto xmlBytes = test::readBytes(scratch.path() / "store.xml");
    const std::string xml(xmlBytes.begin(), xmlBytes.end());
    EXPECT_NE(xml.find("<key>WaterWidgetInstalled</key>\n\t<true/>"), std::string::npos) << xml;
    EXPECT_NE(xml.find("<key>WaterEntryData</key>\n\t<data>\n\te30=\n\t</data>"), std::string::npos) << xml;
    EXPECT_NE(xml.find("<integer>-7</integer>"), std::string::npos) << xml;
    EXPECT_NE(xml.find("<string>Caf\u00e9</string>"), std::string::npos) << xml;

    // The other way: plistutil turns the committed XML into the binary file.
    const fs::path container = scratch.path() / "converted";
    const fs::path converted = suitePreferencesPath(container, kSuite);
    fs::create_directories(converted.parent_path());
    ASSERT_TRUE(plistutil(kFixtureContainer / "group.com.qrv.widgets.xml", "bin", converted));
    const auto bytes = test::readBytes(converted);
    ASSERT_GE(bytes.size(), 8u);
    EXPECT_EQ(std::string(bytes.begin(), bytes.begin() + 8), "bplist00");
    auto fromPlistutil = UserDefaults::openSuite(kSuite, container);
    ASSERT_TRUE(fromPlistutil);
    auto fromFixture = UserDefaults::atPath(suitePreferencesPath(kFixtureContainer, kSuite));
    EXPECT_EQ(fromPlistutil->dictionaryRepresentation(), fromFixture->dictionaryRepresentation());
}

}  // namespace
}  // namespace qrv::platform
