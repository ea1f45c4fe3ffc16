// The live host's engine, driven step by step: manual queues, a clock the test
// sets, and a provider whose answers the test hands over (late, twice, never).
#include "Host/HostEngine.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <future>
#include <mutex>

#include "Host/HostEngineStoreWatcher.hpp"
#include "Host/RenderWidget.hpp"
#include "Platform/dispatch/ManualExecutor.hpp"
#include "Platform/store/UserDefaults.hpp"
#include "tests/Widget/Cache/ReaderTestSupport.hpp"

namespace qrv::host {
namespace {

using platform::Date;
using platform::Timeline;
using platform::TimelineReloadPolicy;
using platform::WidgetFamily;
using widget::WidgetEntry;

struct FakeEntry {
    Date date;
    bool isLoggedIn = true;
    std::string label;
    std::string encode() const { return label; }
};

// Keeps every completion it is given so the test decides when, and how often,
// each request is answered.
struct Requests {
    std::vector<std::pair<WidgetFamily, widget::WidgetProvider::TimelineCompletion>> pending;
    std::size_t count(WidgetFamily family) const {
        return static_cast<std::size_t>(std::ranges::count(pending, family, &decltype(pending)::value_type::first));
    }
    widget::WidgetProvider::TimelineCompletion last(WidgetFamily family) const {
        for (auto it = pending.rbegin(); it != pending.rend(); ++it)
            if (it->first == family) return it->second;
        return {};
    }
};

class ScriptedProvider final : public widget::WidgetProvider {
  public:
    explicit ScriptedProvider(std::shared_ptr<Requests> requests) : requests_(std::move(requests)) {}
    WidgetEntry placeholder(const platform::TimelineProviderContext&) const override {
        return WidgetEntry(FakeEntry{Date{0}, true, "placeholder"});
    }
    void getSnapshot(const platform::TimelineProviderContext&, SnapshotCompletion) const override {}
    void getTimeline(const platform::TimelineProviderContext& context, TimelineCompletion completion) const override {
        requests_->pending.emplace_back(context.family, std::move(completion));
    }

  private:
    std::shared_ptr<Requests> requests_;
};

widget::WidgetConfiguration fakeWidget(std::shared_ptr<Requests> requests) {
    return widget::WidgetConfiguration(
               "com.example.Fake",
               [requests](const widget::WidgetDataCacheReaderEnvironment&) {
                   return std::make_shared<ScriptedProvider>(requests);
               },
               [](const WidgetEntry& entry, WidgetFamily, platform::ColorScheme) {
                   const auto* fake = entry.as<FakeEntry>();
                   const std::string label = fake ? fake->label : "";
                   return widget::WidgetContent{
                       [label] {
                           return platform::View(platform::VStack(
                               {platform::Text(label),
                                platform::Button(platform::IntentInvocation{"WaterWidgetIntent", {"ml", "250"}},
                                                 platform::Text("Log"))}));
                       },
                       {}};
               })
        .supportedFamilies({WidgetFamily::systemSmall, WidgetFamily::accessoryInline});
}

Timeline<WidgetEntry> timeline(std::vector<std::pair<double, std::string>> entries,
                               TimelineReloadPolicy policy = TimelineReloadPolicy::atEnd()) {
    std::vector<WidgetEntry> out;
    for (auto& [date, label] : entries) out.emplace_back(FakeEntry{Date{date}, true, label});
    return {std::move(out), policy};
}

class HostEngineTest : public ::testing::Test {
  protected:
    std::shared_ptr<platform::ManualExecutor> main = std::make_shared<platform::ManualExecutor>();
    std::shared_ptr<platform::ManualExecutor> background = std::make_shared<platform::ManualExecutor>();
    std::shared_ptr<platform::ManualClock> base = std::make_shared<platform::ManualClock>(Date{1000});
    std::shared_ptr<HostClock> clock = std::make_shared<HostClock>(base);
    std::shared_ptr<Requests> requests = std::make_shared<Requests>();
    test::ScratchFolder folder;
    std::shared_ptr<platform::UserDefaults> store = platform::UserDefaults::atPath(folder.path() / "store.plist");
    platform::Painter painter{widgetIconDirectory()};
    std::vector<IntentRequest> intentsRun;
    std::unique_ptr<HostEngine> engine;

    void SetUp() override {
        auto environment = widget::WidgetDataCacheReaderEnvironment::defaults();
        environment.store = store;
        environment.clock = clock;
        environment.queues = {main, background};
        HostEngineOptions options;
        options.schemes = {platform::ColorScheme::light};
        options.runIntent = [this](const IntentRequest& request) { intentsRun.push_back(request); };
        engine = std::make_unique<HostEngine>(std::vector{fakeWidget(requests)}, environment, clock, painter, options);
        engine->start();
        main->drain();
    }

    InstalledWidget widget(const std::string& id) const {
        for (auto& each : engine->snapshot().widgets)
            if (each.id == id) return each;
        ADD_FAILURE() << "no widget " << id;
        return {};
    }
    std::string shownLabel(const std::string& id = "fake-systemSmall") const {
        const auto shown = widget(id);
        return shown.image.texts.empty() ? "" : shown.image.texts.front().shown;
    }
    void answer(Timeline<WidgetEntry> answered, WidgetFamily family = WidgetFamily::systemSmall) {
        requests->last(family)(std::move(answered));
        main->drain();
    }
    void at(double seconds) {
        base->set(Date{seconds});
        engine->tick();
        main->drain();
    }
};

TEST_F(HostEngineTest, ShowsThePlaceholderThenTheEntryWhoseDateIsLatestNotAfterNowAndCountsChanges) {
    EXPECT_EQ(engine->snapshot().widgets.size(), 2u);  // each family is its own widget
    EXPECT_TRUE(widget("fake-systemSmall").placeholder);
    EXPECT_EQ(shownLabel(), "placeholder");
    ASSERT_EQ(requests->count(WidgetFamily::systemSmall), 1u);

    answer(timeline({{1500, "b"}, {1200, "a"}, {2000, "c"}}));  // out of order, all ahead
    EXPECT_FALSE(widget("fake-systemSmall").placeholder);
    EXPECT_EQ(shownLabel(), "b") << "before every entry, the first one given, as the gallery draws it";

    const struct {
        double now;
        std::string label;
    } cases[] = {{1200, "a"}, {1499.5, "a"}, {1500, "b"}, {1999, "b"}, {2000, "c"}, {9000, "c"}};
    auto version = widget("fake-systemSmall").version;
    std::string before = shownLabel();
    for (const auto& each : cases) {
        at(each.now);
        EXPECT_EQ(shownLabel(), each.label) << "at " << each.now;
        // The version goes up only when the picture changes.
        if (each.label != before) ++version;
        EXPECT_EQ(widget("fake-systemSmall").version, version) << "at " << each.now;
        before = each.label;
    }
}

TEST_F(HostEngineTest, ReloadPolicyDecidesWhenToAskAgain) {
    const struct {
        const char* name;
        TimelineReloadPolicy policy;
        double quiet;  // no new request at this moment
        std::optional<double> asks;
        double lastEntry = 4000;
    } cases[] = {
        {"at end: once the last entry's date has come", TimelineReloadPolicy::atEnd(), 3999, 4000},
        {"at end, and the end is now: not on every tick", TimelineReloadPolicy::atEnd(), 1001, 1000 + 5 * 60,
         1000},
        {"after, earlier than the last entry", TimelineReloadPolicy::after(Date{2500}), 2499, 2500},
        {"after, later than the last entry", TimelineReloadPolicy::after(Date{6000}), 5999, 6000},
        {"never", TimelineReloadPolicy::never(), 99999, std::nullopt},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        TearDown();
        base->set(Date{1000});
        clock->useRealTime();
        requests->pending.clear();
        SetUp();
        answer(timeline({{1000, "a"}, {each.lastEntry, "b"}}, each.policy));
        at(each.quiet);
        EXPECT_EQ(requests->count(WidgetFamily::systemSmall), 1u);
        if (each.asks) {
            at(*each.asks);
            EXPECT_EQ(requests->count(WidgetFamily::systemSmall), 2u);
            at(*each.asks + 1);
            EXPECT_EQ(requests->count(WidgetFamily::systemSmall), 2u) << "one request while it is unanswered";
        }
    }
}

TEST_F(HostEngineTest, MisbehavingProvidersChangeNothingTheyShouldNot) {
    const auto first = requests->last(WidgetFamily::systemSmall);
    answer(timeline({{1000, "a"}, {3000, "b"}}));
    first(timeline({{1000, "twice"}}));  // the same request answered again
    main->drain();
    EXPECT_EQ(shownLabel(), "a");

    engine->reloadAll();
    main->drain();
    const auto stale = requests->last(WidgetFamily::systemSmall);
    engine->reloadAll();
    main->drain();
    stale(timeline({{1000, "stale"}}));  // replaced by a newer request
    main->drain();
    EXPECT_EQ(shownLabel(), "a");

    answer(timeline({}));  // empty: the last timeline stays
    EXPECT_EQ(shownLabel(), "a");
    at(3000);
    EXPECT_EQ(shownLabel(), "b");
}

TEST_F(HostEngineTest, AnUnansweredRequestHoldsBackThePolicyOnlyForAWhile) {
    answer(timeline({{1000, "a"}, {2000, "b"}}));
    at(2000);
    ASSERT_EQ(requests->count(WidgetFamily::systemSmall), 2u);  // never answered
    at(2000 + 14 * 60);
    EXPECT_EQ(requests->count(WidgetFamily::systemSmall), 2u);
    EXPECT_TRUE(widget("fake-systemSmall").waitingForTimeline);
    EXPECT_EQ(shownLabel(), "b") << "the last picture stays";
    at(2000 + 15 * 60);
    EXPECT_EQ(requests->count(WidgetFamily::systemSmall), 3u);
}

TEST_F(HostEngineTest, AnIntentRunsThenReloadsOnlyTheTappedWidget) {
    answer(timeline({{1000, "a"}}, TimelineReloadPolicy::never()));
    std::optional<IntentOutcome> outcome;
    engine->runIntent("fake-systemSmall", {"WaterWidgetIntent", {{"waterValue", "250"}, {"waterUnit", "ml"}}},
                      [&](IntentOutcome result) { outcome = result; });
    main->drain();
    EXPECT_TRUE(intentsRun.empty()) << "the intent runs on the background queue";
    EXPECT_EQ(requests->count(WidgetFamily::systemSmall), 1u) << "no reload before the intent has run";
    background->drain();
    ASSERT_EQ(intentsRun.size(), 1u);
    EXPECT_EQ(intentsRun[0].parameter("waterUnit"), "ml");
    main->drain();
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->status, IntentOutcome::Status::ran);
    EXPECT_EQ(requests->count(WidgetFamily::systemSmall), 2u);
    EXPECT_EQ(requests->count(WidgetFamily::accessoryInline), 1u);
}

TEST_F(HostEngineTest, IntentsAreRefusedWhereNoButtonRunsThem) {
    answer(timeline({{1000, "a"}}));
    answer(timeline({{1000, "a"}}), WidgetFamily::accessoryInline);
    const struct {
        std::string id;
        std::string intent;
        IntentOutcome::Status status;
    } cases[] = {
        {"fake-accessoryInline", "WaterWidgetIntent", IntentOutcome::Status::noSuchButton},  // inline: no controls
        {"fake-systemSmall", "OtherIntent", IntentOutcome::Status::noSuchButton},
        {"nothing-systemSmall", "WaterWidgetIntent", IntentOutcome::Status::unknownWidget},
    };
    for (const auto& each : cases) {
        std::optional<IntentOutcome> outcome;
        engine->runIntent(each.id, {each.intent, {}}, [&](IntentOutcome result) { outcome = result; });
        main->drain();
        background->drain();
        ASSERT_TRUE(outcome) << each.id;
        EXPECT_EQ(outcome->status, each.status) << each.id;
        EXPECT_FALSE(outcome->message.empty());
    }
    EXPECT_TRUE(intentsRun.empty());
}

TEST_F(HostEngineTest, StoreChangesReloadEveryWidgetWhenTheRecordsDiffer) {
    const auto total = [&] { return requests->pending.size(); };
    ASSERT_EQ(total(), 2u);
    store->set("widget_events", platform::PropertyListValue(std::string("fetched")));
    store->set("CaloriesWidgetInstalled", platform::PropertyListValue(true));
    engine->storeChanged();
    main->drain();
    EXPECT_EQ(total(), 2u) << "the widgets' own bookkeeping is no news";

    const std::string record = R"({"date":1000})";
    store->set("CaloriesData", platform::PropertyListValue::Data(record.begin(), record.end()));
    engine->storeChanged();
    main->drain();
    EXPECT_EQ(total(), 4u);
    engine->storeChanged();  // the same contents seen again
    main->drain();
    EXPECT_EQ(total(), 4u);
}

TEST_F(HostEngineTest, TheClockRunsFromAMovedTimeStopsAndReturnsAndEachMoveReloads) {
    clock->runFrom(Date{5000});
    base->advance(10);
    EXPECT_EQ(clock->now(), Date{5010});
    EXPECT_EQ(clock->mode(), HostClock::Mode::shifted);
    clock->stopAt(Date{7000});
    base->advance(10);
    EXPECT_EQ(clock->now(), Date{7000});
    clock->useRealTime();
    EXPECT_EQ(clock->now(), base->now());

    answer(timeline({{1000, "a"}, {86400, "tomorrow"}}));
    engine->setClock(Date{86400 - 10}, true);
    main->drain();
    EXPECT_EQ(requests->count(WidgetFamily::systemSmall), 2u);
    base->advance(10);
    engine->tick();
    main->drain();
    EXPECT_EQ(shownLabel(), "tomorrow");
    engine->setClock(std::nullopt, true);
    main->drain();
    EXPECT_EQ(shownLabel(), "a");
    EXPECT_EQ(clock->mode(), HostClock::Mode::real);
}

TEST(StoreWatcherTest, ReportsTheStoreFileReplacedByRename) {
    test::ScratchFolder folder;
    const auto file = folder.path() / "Library" / "Preferences" / "group.plist";
    std::promise<void> changed;
    std::once_flag once;
    StoreWatcher watcher(file, [&] { std::call_once(once, [&] { changed.set_value(); }); });
    std::ofstream(file.parent_path() / "other.plist") << "x";
    platform::UserDefaults::atPath(file)->set("CaloriesData", platform::PropertyListValue(std::string("new")));
    EXPECT_EQ(changed.get_future().wait_for(std::chrono::seconds(5)), std::future_status::ready);
}

}  // namespace
}  // namespace qrv::host
