// qrv-widgets render as the real program: the widgets offered on each system
// version, in gallery order, and its answers to bad requests.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "Platform/coding/JSONDecoder.hpp"

using namespace qrv::platform;

namespace {

struct RunResult {
    int exitCode = -1;
    std::string out;
};

struct ManifestSummary {
    std::vector<std::string> widgets;  // kinds, in order
    std::vector<std::string> imageKinds;
};

class RenderCommandTest : public ::testing::Test {
  protected:
    void SetUp() override {
        char pattern[] = "/tmp/qrv-render-command-XXXXXX";
        ASSERT_NE(::mkdtemp(pattern), nullptr);
        dir_ = pattern;
        std::filesystem::create_directories(dir_ / "container");
    }
    void TearDown() override { std::filesystem::remove_all(dir_); }

    RunResult run(const std::string& arguments) const {
        const std::string command = "LANG=en_US.UTF-8 '" + std::string(QRV_BIN_DIR) +
                                    "/qrv-widgets' render --out '" + (dir_ / "gallery").string() +
                                    "' --container '" + (dir_ / "container").string() +
                                    "' --scheme light --scale 1 --wait 0.2 " + arguments + " 2>/dev/null";
        RunResult result;
        FILE* pipe = ::popen(command.c_str(), "r");
        if (pipe == nullptr) return result;
        std::array<char, 4096> buffer{};
        while (const auto n = std::fread(buffer.data(), 1, buffer.size(), pipe)) result.out.append(buffer.data(), n);
        const int status = ::pclose(pipe);
        result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        return result;
    }

    ManifestSummary manifest() const {
        std::ifstream file(dir_ / "gallery" / "manifest.json");
        const std::string json((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        auto summary = decodeJSON<ManifestSummary>(bytesOf(json), [](const JSONValue& root) {
            ManifestSummary out;
            const auto object = root.keyedContainer();
            auto widgets = object["widgets"].unkeyedContainer();
            while (!widgets.isAtEnd()) out.widgets.push_back(widgets.next().keyedContainer().decodeString("kind"));
            auto images = object["images"].unkeyedContainer();
            while (!images.isAtEnd()) out.imageKinds.push_back(images.next().keyedContainer().decodeString("kind"));
            return out;
        });
        EXPECT_TRUE(summary) << json.substr(0, 400);
        return std::move(summary).toOptional().value_or(ManifestSummary{});
    }

    std::filesystem::path dir_;
};

}  // namespace

TEST_F(RenderCommandTest, WidgetsOfferedOnEachSystemVersionInGalleryOrder) {
    const std::vector<std::string> withWater{"com.qrv.widget.Water", "com.qrv.widget.CaloriesConsumed",
                                             "com.qrv.widget.Macronutrients"};
    const std::vector<std::string> withoutWater{"com.qrv.widget.CaloriesConsumed", "com.qrv.widget.Macronutrients"};
    const std::pair<const char*, const std::vector<std::string>*> rows[] = {
        {"16", &withoutWater}, {"17", &withWater}, {"18", &withWater}};
    for (const auto& [version, expected] : rows) {
        SCOPED_TRACE(version);
        const auto result = run(std::string("--os ") + version + " --family systemMedium");
        ASSERT_EQ(result.exitCode, 0);
        // The last line is where the gallery is.
        EXPECT_EQ(result.out, (dir_ / "gallery" / "index.html").string() + "\n");
        const auto summary = manifest();
        EXPECT_EQ(summary.widgets, *expected);
        std::vector<std::string> drawn;
        for (const auto& kind : summary.imageKinds)
            if (drawn.empty() || drawn.back() != kind) drawn.push_back(kind);
        EXPECT_EQ(drawn, *expected);
    }
}

TEST_F(RenderCommandTest, RequestsThatCannotBeDrawnAreUsageErrors) {
    EXPECT_EQ(run("--widget water --os 16").exitCode, 2);
    EXPECT_EQ(run("--widget steps").exitCode, 2);
    EXPECT_EQ(run("--widget macronutrients --family systemSmall").exitCode, 2);
    EXPECT_EQ(run("--device watch").exitCode, 2);
    EXPECT_EQ(run("--scale 4").exitCode, 2);
}

TEST_F(RenderCommandTest, MatrixDrawsEachCellIntoItsFolderUnderOneManifest) {
    ASSERT_EQ(run("--widget calories --family systemSmall --device phone --device pad --locale en_US --locale de_DE")
                  .exitCode,
              0);
    std::ifstream file(dir_ / "gallery" / "manifest.json");
    const std::string json((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    const auto cells = decodeJSON<std::vector<std::string>>(bytesOf(json), [&](const JSONValue& root) {
        std::vector<std::string> seen;
        auto images = root.keyedContainer()["images"].unkeyedContainer();
        while (!images.isAtEnd()) {
            const auto image = images.next().keyedContainer();
            const auto folder = image.decodeString("device") + "/" + image.decodeString("locale") + "/";
            const auto png = image.decodeString("png");
            EXPECT_TRUE(png.starts_with(folder)) << png;
            EXPECT_TRUE(std::filesystem::is_regular_file(dir_ / "gallery" / png)) << png;
            seen.push_back(folder);
        }
        return seen;
    });
    ASSERT_TRUE(cells);
    const std::set<std::string> folders(cells.value().begin(), cells.value().end());
    EXPECT_EQ(folders, (std::set<std::string>{"phone/en_US/", "phone/de_DE/", "pad/en_US/", "pad/de_DE/"}));
}
