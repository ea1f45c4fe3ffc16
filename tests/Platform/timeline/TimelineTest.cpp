#include <gtest/gtest.h>

#include <set>
#include <string>

#include "Platform/timeline/Timeline.hpp"
#include "Platform/timeline/TimelineProvider.hpp"

namespace qrv::platform {
namespace {

TEST(WidgetFamilyTest, NamesRoundTripAndAreExact) {
    std::set<std::string_view> seen;
    for (auto family : kAllWidgetFamilies) {
        EXPECT_EQ(widgetFamily(name(family)), family);
        seen.insert(name(family));
    }
    EXPECT_EQ(seen.size(), kAllWidgetFamilies.size());
    for (std::string_view bad : {"", "small", "SystemSmall", "systemsmall", "systemSmall "})
        EXPECT_FALSE(widgetFamily(bad).has_value()) << bad;
}

TEST(WidgetFamilyTest, OnlyLockScreenFamiliesAreAccessories) {
    int accessories = 0;
    for (auto family : kAllWidgetFamilies) {
        accessories += isAccessory(family) ? 1 : 0;
        EXPECT_EQ(isAccessory(family), name(family).starts_with("accessory")) << name(family);
    }
    EXPECT_EQ(accessories, 3);
}

TEST(TimelineReloadPolicyTest, OnlyAfterCarriesADate) {
    EXPECT_EQ(TimelineReloadPolicy::atEnd().kind(), TimelineReloadPolicy::Kind::atEnd);
    EXPECT_FALSE(TimelineReloadPolicy::never().date().has_value());
    const auto after = TimelineReloadPolicy::after(Date{60});
    EXPECT_EQ(after.date(), Date{60});
    EXPECT_NE(after, TimelineReloadPolicy::after(Date{61}));
    EXPECT_NE(TimelineReloadPolicy::atEnd(), TimelineReloadPolicy::never());
    EXPECT_EQ(Timeline<int>{}.policy, TimelineReloadPolicy::atEnd());
}

// A provider written against the contract alone, as a widget's would be.
struct CountingProvider final : TimelineProvider<int> {
    int placeholder(const TimelineProviderContext&) const override { return 0; }
    void getSnapshot(const TimelineProviderContext& context, SnapshotCompletion completion) const override {
        completion(static_cast<int>(context.displaySize.width));
    }
    void getTimeline(const TimelineProviderContext&, TimelineCompletion completion) const override {
        completion(Timeline<int>{{1, 2}, TimelineReloadPolicy::never()});
    }
};

TEST(TimelineProviderTest, AnswersThroughCompletions) {
    CountingProvider provider;
    const auto context = TimelineProviderContext::forFamily(WidgetFamily::systemMedium);
    int snapshot = -1;
    provider.getSnapshot(context, [&](int entry) { snapshot = entry; });
    EXPECT_EQ(snapshot, 338);
    Timeline<int> timeline;
    provider.getTimeline(context, [&](Timeline<int> t) { timeline = std::move(t); });
    EXPECT_EQ(timeline.entries, (std::vector<int>{1, 2}));
    EXPECT_EQ(timeline.policy.kind(), TimelineReloadPolicy::Kind::never);
}

}  // namespace
}  // namespace qrv::platform
