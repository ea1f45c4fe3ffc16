// The rendered gallery, in process: which deep links and buttons each drawn
// widget offers to a tap, placeholders, logged-out records, and escaping of
// the records' texts in the page.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "Host/GalleryPage.hpp"
#include "Host/RenderGallery.hpp"
#include "Platform/locale/Locale.hpp"
#include "QRVUnitSystem/UnitSystemLoader.hpp"
#include "Widget/Cache/CaloriesConsumedDataEntry.hpp"
#include "Widget/Cache/MacronutrientsDataEntry.hpp"
#include "Widget/Cache/WaterDataEntry.hpp"
#include "Widget/Widgets/QRVWidgets.hpp"

using namespace qrv::host;
using namespace qrv::platform;
using namespace qrv::widget;

namespace {

constexpr const char* kCalories = "com.qrv.widget.CaloriesConsumed";
constexpr const char* kMacros = "com.qrv.widget.Macronutrients";
constexpr const char* kWater = "com.qrv.widget.Water";

class RenderGalleryTest : public ::testing::Test {
  protected:
    void SetUp() override {
        qrv::units::reloadUnitSystem(std::string(QRV_BIN_DIR));
        char pattern[] = "/tmp/qrv-render-gallery-XXXXXX";
        ASSERT_NE(::mkdtemp(pattern), nullptr);
        dir_ = pattern;
        store_ = UserDefaults::atPath(dir_ / "store.plist");
        environment_.store = store_;
        environment_.calendar = calendar_;
        environment_.clock = std::make_shared<ManualClock>(now_);
        environment_.printLine = [](std::string_view) {};
    }
    void TearDown() override { std::filesystem::remove_all(dir_); }

    template <class Entry>
    void store(const char* key, const Entry& entry) {
        const auto json = entry.encode();
        store_->set(key, PropertyListValue::Data(json.begin(), json.end()));
    }
    CaloriesConsumedDataEntry calories(bool loggedIn = true, bool barcode = true) const {
        auto entry = CaloriesConsumedDataEntry::makeSample(now_);
        entry.isLoggedIn = loggedIn;
        entry.shouldShowBarcodeButton = barcode;
        entry.remaining = "1,070";
        return entry;
    }
    MacronutrientsDataEntry macros(bool loggedIn = true) const {
        auto entry = MacronutrientsDataEntry::makeSample(now_);
        entry.isLoggedIn = loggedIn;
        return entry;
    }
    WaterDataEntry water(bool loggedIn = true) const { return {now_, loggedIn, 1250, WaterWidgetUnit::ml}; }

    GalleryResult render(GalleryOptions options = {}, int systemVersion = 17) {
        options.out = dir_ / "gallery";
        options.device.systemVersion = systemVersion;
        options.schemes = {ColorScheme::light};
        options.scale = 1;
        std::ostringstream progress;
        return renderGallery(QRVWidgets{}.body(systemVersion), options, environment_, progress);
    }

    Calendar calendar_{*TimeZone::named("Europe/Berlin")};
    Date now_ = *calendar_.date(DateComponents{2024, 3, 9, 15, 0, 0});
    std::filesystem::path dir_;
    std::shared_ptr<UserDefaults> store_;
    WidgetDataCacheReaderEnvironment environment_ = WidgetDataCacheReaderEnvironment::defaults();
    ScopedLocaleOverride english_{Locale("en")};
};

std::string deepLink(const char* target) { return std::string("qrv://qrv/widgets/") + target; }

}  // namespace

TEST_F(RenderGalleryTest, EveryFamilyOffersExactlyTheDeepLinksATapCanReach) {
    store("CaloriesData", calories());
    store("MacronutrientsData", macros());
    store("WaterEntryData", water());
    const auto result = render();

    // The deep links a tap can open: the widget's URL and the links that react.
    // Small widgets are one target, so the search and barcode links are not.
    struct Expected {
        std::string widgetURL;
        std::set<std::string> links = {};  // reachable besides the widget's URL
        std::size_t buttons = 0;
    };
    const std::map<std::pair<std::string, WidgetFamily>, Expected> expected{
        {{kWater, WidgetFamily::systemSmall}, {"water_small", {}, 1}},
        {{kWater, WidgetFamily::systemMedium}, {"water_medium", {}, 1}},
        {{kCalories, WidgetFamily::systemSmall}, {"calories_small"}},
        {{kCalories, WidgetFamily::systemMedium}, {"calories_medium", {deepLink("food_search"), deepLink("barcode")}}},
        {{kCalories, WidgetFamily::accessoryInline}, {"calories_inline"}},
        {{kCalories, WidgetFamily::accessoryCircular}, {"calories_tiny_circular"}},
        {{kMacros, WidgetFamily::systemMedium}, {"macronutrients"}},
        {{kMacros, WidgetFamily::accessoryInline}, {"macronutrients"}},
        {{kMacros, WidgetFamily::accessoryRectangular}, {"macronutrients"}},
    };
    std::set<std::pair<std::string, WidgetFamily>> seen;
    for (const auto& image : result.manifest.images) {
        SCOPED_TRACE(image.kind + " " + std::string(name(image.family)) + " " + std::string(momentName(image.moment)));
        const auto found = expected.find({image.kind, image.family});
        ASSERT_NE(found, expected.end());
        seen.insert(found->first);
        EXPECT_FALSE(image.placeholder);
        ASSERT_EQ(image.widgetURL, deepLink(found->second.widgetURL.c_str()));
        std::set<std::string> reachable{*image.widgetURL}, expectedReachable = found->second.links;
        for (const auto& link : image.links) reachable.insert(link.url);
        expectedReachable.insert(*image.widgetURL);
        EXPECT_EQ(reachable, expectedReachable);
        EXPECT_EQ(image.buttons.size(), found->second.buttons);
        // The water button logs one increment of the entry's unit (each unit's is the view's test).
        for (const auto& button : image.buttons)
            EXPECT_EQ(button.intent, (IntentInvocation{"WaterWidgetIntent", {"ml", "250"}}));
        EXPECT_TRUE(std::filesystem::is_regular_file(dir_ / "gallery" / image.png));
        EXPECT_TRUE(std::filesystem::is_regular_file(dir_ / "gallery" / image.svg));
    }
    EXPECT_EQ(seen.size(), expected.size());
    // Each widget also drawn as it will be after midnight.
    EXPECT_EQ(result.manifest.images.size(), 2 * expected.size());
}

TEST_F(RenderGalleryTest, BarcodeLinkOnlyWhenTheRecordAsksForIt) {
    store("CaloriesData", calories(true, false));
    GalleryOptions options;
    options.widgets = {"calories"};
    options.families = {WidgetFamily::systemMedium};
    const auto result = render(options);
    ASSERT_EQ(result.manifest.images.size(), 2u);
    for (const auto& image : result.manifest.images) {
        ASSERT_EQ(image.links.size(), 1u);
        EXPECT_EQ(image.links[0].url, deepLink("food_search"));
    }
}

TEST_F(RenderGalleryTest, LoggedOutRecordsShowTheLogInPromptInEveryFamily) {
    store("CaloriesData", calories(false));
    store("MacronutrientsData", macros(false));
    store("WaterEntryData", water(false));
    const auto result = render();
    ASSERT_FALSE(result.manifest.images.empty());
    for (const auto& image : result.manifest.images) {
        if (image.moment != EntryMoment::now) continue;
        SCOPED_TRACE(image.kind + " " + std::string(name(image.family)));
        bool prompt = false;
        for (const auto& text : image.texts) {
            prompt = prompt || text.text.find("Log in to view data.") != std::string::npos;
            EXPECT_NE(text.text, "1,070");
            EXPECT_EQ(text.text.find("1,250"), std::string::npos) << text.text;
        }
        EXPECT_TRUE(prompt);
    }
}

TEST_F(RenderGalleryTest, ProvidersThatDoNotAnswerShowTheirPlaceholder) {
    // Nothing stored: the calories provider never answers; the water provider
    // answers with an empty glass. The wait only bounds a provider still at
    // work (one that has given up is seen at once), so it is long enough for
    // the water provider under the sanitizers on a busy machine.
    GalleryOptions options;
    options.widgets = {"calories", "water"};
    options.families = {WidgetFamily::systemSmall};
    options.wait = std::chrono::seconds(20);
    std::map<std::string, int> images;
    for (const auto& image : render(options).manifest.images) {
        ++images[image.kind];
        EXPECT_EQ(image.placeholder, image.kind == kCalories) << image.kind;
        // Drawn as the platform draws placeholders: shapes, no legible text.
        EXPECT_TRUE(!image.placeholder || image.texts.empty());
    }
    EXPECT_EQ(images, (std::map<std::string, int>{{kCalories, 1}, {kWater, 2}}));
}

TEST_F(RenderGalleryTest, RecordTextsAreEscapedInThePage) {
    auto entry = calories();
    entry.goalTitle = "<script>alert(\"x\")</script>";
    entry.consumedTitle = "Tom & 'Jerry'";
    store("CaloriesData", entry);
    GalleryOptions options;
    options.widgets = {"calories"};
    options.families = {WidgetFamily::systemMedium};
    const auto result = render(options);

    std::ifstream file(result.index);
    const std::string page((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    EXPECT_EQ(page.find("<script"), std::string::npos);
    EXPECT_NE(page.find("&lt;script&gt;alert(&quot;x&quot;)&lt;/script&gt;"), std::string::npos);
    EXPECT_NE(page.find("Tom &amp; &#39;Jerry&#39;"), std::string::npos);
}
