// qrv-widgets compare as the real program, on two renders that differ in one
// colour token of a scratch token table.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

namespace fs = std::filesystem;

namespace {

struct RunResult {
    int exitCode = -1;
    std::string out;
};

RunResult run(const std::string& command) {
    RunResult result;
    FILE* pipe = ::popen((command + " 2>/dev/null").c_str(), "r");
    if (pipe == nullptr) return result;
    std::array<char, 4096> buffer{};
    while (const auto n = std::fread(buffer.data(), 1, buffer.size(), pipe)) result.out.append(buffer.data(), n);
    const int status = ::pclose(pipe);
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

std::string readAll(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace

// The oracle is the vector drawing: exactly the images whose SVG changed use
// the colour, and compare must name exactly those, from the pixels alone.
TEST(CompareCommandTest, NamesExactlyTheImagesThatUseAChangedColour) {
    char pattern[] = "/tmp/qrv-compare-XXXXXX";
    ASSERT_NE(::mkdtemp(pattern), nullptr);
    const fs::path dir = pattern, bin = QRV_BIN_DIR;
    const fs::path scratch = dir / "resources", bundle = scratch / "QRVUICatalog_QRVUICatalog.bundle";
    fs::create_directories(bundle);
    fs::create_directories(dir / "container");
    fs::create_directory_symlink(bin / "Resources" / "Icons", scratch / "Icons");
    fs::create_symlink(bin / "Resources" / "Localizable.xcstrings", scratch / "Localizable.xcstrings");
    std::string table = readAll(bin / "QRVUICatalog_QRVUICatalog.bundle" / "Colors.json");
    const auto render = [&](const std::string& out) {
        std::ofstream(bundle / "Colors.json", std::ios::trunc) << table;
        return run("LANG=en_US.UTF-8 QRV_RESOURCE_DIR='" + scratch.string() + "' '" + (bin / "qrv-widgets").string() +
                   "' render --out '" + (dir / out).string() + "' --container '" + (dir / "container").string() +
                   "' --now 2024-03-09T15:00 --scale 1 --wait 0.2")
            .exitCode;
    };
    const auto compare = [&](const std::string& a, const std::string& b) {
        return run("'" + (bin / "qrv-widgets").string() + "' compare '" + (dir / a).string() + "' '" +
                   (dir / b).string() + "' --out '" + (dir / "report").string() + "'");
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
        if (readAll(entry.path()) != readAll(dir / "after" / entry.path().filename())) expected.insert(png);
    }
    for (std::size_t start = 0, end; (end = result.out.find('\n', start)) != std::string::npos; start = end + 1)
        if (const auto line = result.out.substr(start, end - start); line.starts_with("changed: "))
            named.insert(line.substr(9, line.find(' ', 9) - 9));
    EXPECT_FALSE(expected.empty());
    EXPECT_LT(expected.size(), all.size());
    EXPECT_EQ(named, expected) << result.out;
    const auto html = readAll(dir / "report" / "report.html");
    for (const auto& png : expected) EXPECT_NE(html.find("<h2>" + png + "</h2>"), std::string::npos) << png;
    fs::remove_all(dir);
}
