#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "Platform/locale/Locale.hpp"
#include "Platform/locale/StringCatalog.hpp"
#include "QRVUnitSystem/UnitSystemLoader.hpp"
#include "Widget/Water/WaterWidgetViewModel.hpp"

using namespace qrv;
using namespace qrv::widget;

namespace {

// The glass the model makes is the view test's part: it measures and fills it.
TEST(WaterWidgetViewModelTest, TextsComeFromTheEntryAndTheStringTable) {
    units::reloadUnitSystem(std::string(QRV_BIN_DIR));
    // With an empty string table every key shows as itself.
    platform::StringCatalog::setMain(std::make_shared<const platform::StringCatalog>());
    platform::ScopedLocaleOverride locale{platform::Locale("en_US")};
    const WaterWidgetViewModel model(WaterDataEntry{platform::Date{0}, false, 600, WaterWidgetUnit::ml});
    EXPECT_FALSE(model.isLoggedIn());
    EXPECT_EQ(model.buttonText(), "+ 250 ml");  // one increment of the entry's unit
    EXPECT_EQ(model.waterRepresentation(), "600 ml");
    EXPECT_EQ(model.topText(), "Water");
    EXPECT_EQ(model.subtitle(), "Today");
    EXPECT_EQ(model.loggedOutMessage(), "dashb.widget.login.long");
    platform::StringCatalog::setMain(nullptr);
    units::reloadUnitSystem();
}

}  // namespace
