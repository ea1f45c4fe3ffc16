// qrv-widgets compare as the real program, on two renders that differ in one
// colour token of a scratch token table.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <string>

#include "tests/Host/HostTestSupport.hpp"

namespace fs = std::filesystem;
using qrv::test::slurp;

// The oracle is the vector drawing: exactly the images whose SVG changed use
// the colour, and compare must name exactly those, from the pixels alone.
TEST(CompareCommandTest, NamesExactlyTheImagesThatUseAChangedColour) {
    qrv::test::HostWorld world;
    const fs::path dir = world.folder.path(), bin = QRV_BIN_DIR, scratch = dir / "resources";
    const fs::path bundle = scratch / "QRVUICatalog_QRVUICatalog.bundle";
    fs::create_directories(bundle);
    fs::create_directory_symlink(bin / "Resources" / "Icons", scratch / "Icons");
    fs::create_symlink(bin / "Resources" / "Localizable.xcstrings", scratch / "Localizable.xcstrings");
    world.environment["LANG"] = "en_US.UTF-8";
    world.environment["QRV_RESOURCE_DIR"] = scratch.string();
    std::string table = slurp(bin / "QRVUICatalog_QRVUICatalog.bundle" / "Colors.json");
    const auto render = [&](const std::string& out) {
        std::ofstream(bundle / "Colors.json", std::ios::trunc) << table;
        return world.run({"render", "--out", (dir / out).string(), "--now", "2024-03-09T15:00", "--scale", "1",
                          "--wait", "20"})
            .exitCode;
    };
    const auto compare = [&](const std::string& a, const std::string& b) {
        return world.run({"compare", (dir / a).string(), (dir / b).string(), "--out", (dir / "report").string()},
                         false);
    };
    ASSERT_EQ(render("before"), 0);
    EXPECT_EQ(compare("before", "before").exitCode, 0);

    const std::string token = "\"neutralsSecondary\": {\"light\": \"#";
    const auto at = table.find(token);
    ASSERT_NE(at, std::string::npos);
    table.replace(at + token.size(), 6, "FF00FF");
    ASSERT_EQ(render("after"), 0);
    const auto result = compare("before", "after");
    EXPECT_EQ(result.exitCode, 1);

    std::set<std::string> expected, named, all;
    for (const auto& entry : fs::directory_iterator(dir / "before")) {
        if (entry.path().extension() != ".svg") continue;
        const auto png = entry.path().stem().string() + ".png";
        all.insert(png);
        if (slurp(entry.path()) != slurp(dir / "after" / entry.path().filename())) expected.insert(png);
    }
    for (const auto& line : qrv::test::linesOf(result.out))
        if (line.starts_with("changed: ")) named.insert(line.substr(9, line.find(' ', 9) - 9));
    EXPECT_FALSE(expected.empty());
    EXPECT_LT(expected.size(), all.size());
    EXPECT_EQ(named, expected) << result.out;
    const auto html = slurp(dir / "report" / "report.html");
    for (const auto& png : expected) EXPECT_NE(html.find("<h2>" + png + "</h2>"), std::string::npos) << png;
}
