#include <gtest/gtest.h>

#include <set>
#include <string>

#include "Platform/timeline/WidgetFamily.hpp"

namespace qrv::platform {
namespace {

// Family names are what --family takes and what the manifest writes.
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

}  // namespace
}  // namespace qrv::platform
