// qrv-widgets render as the real program: the widgets offered on each system
// version, in gallery order, the matrix's folders and its answers to bad requests.
#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tests/Host/HostTestSupport.hpp"

using namespace qrv::platform;

namespace {

struct DrawnImage {
    std::string kind, device, locale, png;
};

class RenderCommandTest : public ::testing::Test {
  protected:
    RenderCommandTest() { world_.environment["LANG"] = "en_US.UTF-8"; }

    int render(const std::string& arguments) const {
        std::vector<std::string> args{"render", "--out", gallery_.string(), "--scheme", "light",
                                      "--scale", "1", "--wait", "20"};
        std::istringstream words(arguments);
        for (std::string word; words >> word;) args.push_back(word);
        const auto run = world_.run(args);
        // The last line is where the gallery is.
        if (run.exitCode == 0) {
            EXPECT_EQ(run.out, (gallery_ / "index.html").string() + "\n");
        }
        return run.exitCode;
    }

    // The manifest's widget kinds, in order, and its images.
    std::pair<std::vector<std::string>, std::vector<DrawnImage>> manifest() const {
        const std::string json = qrv::test::slurp(gallery_ / "manifest.json");
        using Manifest = std::pair<std::vector<std::string>, std::vector<DrawnImage>>;
        auto read = decodeJSON<Manifest>(bytesOf(json), [](const JSONValue& root) {
            Manifest out;
            const auto object = root.keyedContainer();
            for (auto widgets = object["widgets"].unkeyedContainer(); !widgets.isAtEnd();)
                out.first.push_back(widgets.next().keyedContainer().decodeString("kind"));
            for (auto images = object["images"].unkeyedContainer(); !images.isAtEnd();) {
                const auto image = images.next().keyedContainer();
                out.second.push_back({image.decodeString("kind"), image.decodeString("device"),
                                      image.decodeString("locale"), image.decodeString("png")});
            }
            return out;
        });
        EXPECT_TRUE(read) << json.substr(0, 400);
        return std::move(read).toOptional().value_or(Manifest{});
    }

    qrv::test::HostWorld world_;
    std::filesystem::path gallery_ = world_.folder.path() / "gallery";
};

}  // namespace

TEST_F(RenderCommandTest, WidgetsOfferedOnEachSystemVersionInGalleryOrder) {
    const std::vector<std::string> withWater{"com.qrv.widget.Water", "com.qrv.widget.CaloriesConsumed",
                                             "com.qrv.widget.Macronutrients"};
    const std::vector<std::string> withoutWater(withWater.begin() + 1, withWater.end());
    const std::pair<const char*, std::vector<std::string>> rows[] = {
        {"16", withoutWater}, {"17", withWater}, {"18", withWater}};
    for (const auto& [version, expected] : rows) {
        SCOPED_TRACE(version);
        ASSERT_EQ(render(std::string("--os ") + version + " --family systemMedium"), 0);
        const auto [widgets, images] = manifest();
        EXPECT_EQ(widgets, expected);
        std::vector<std::string> drawn;
        for (const auto& image : images)
            if (drawn.empty() || drawn.back() != image.kind) drawn.push_back(image.kind);
        EXPECT_EQ(drawn, expected);
    }
}

TEST_F(RenderCommandTest, RequestsThatCannotBeDrawnAreUsageErrors) {
    for (const char* arguments : {"--widget water --os 16", "--widget steps", "--device watch", "--scale 4",
                                  "--widget macronutrients --family systemSmall"})
        EXPECT_EQ(render(arguments), 2) << arguments;
}

TEST_F(RenderCommandTest, MatrixDrawsEachCellIntoItsFolderUnderOneManifest) {
    ASSERT_EQ(render("--widget calories --family systemSmall --device phone --device pad --locale en_US "
                     "--locale de_DE"),
              0);
    std::set<std::string> folders;
    for (const auto& image : manifest().second) {
        const auto folder = image.device + "/" + image.locale + "/";
        EXPECT_TRUE(image.png.starts_with(folder)) << image.png;
        EXPECT_TRUE(std::filesystem::is_regular_file(gallery_ / image.png)) << image.png;
        folders.insert(folder);
    }
    EXPECT_EQ(folders, (std::set<std::string>{"phone/en_US/", "phone/de_DE/", "pad/en_US/", "pad/de_DE/"}));
}
