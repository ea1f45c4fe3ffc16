#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/Host/HostTestSupport.hpp"

namespace qrv::host {
namespace {

// What the shell completion is offered: read from the program's own commands
// and options, so a set check, a code check and a path each complete their way.
TEST(CompletionTest, OffersWordsFromTheProgramsOwnDefinitions) {
    const test::HostWorld world;
    struct Case {
        std::vector<std::string> words;
        std::vector<std::string> offered;
    };
    const std::vector<Case> cases{
        {{"snapshot", "--scheme"}, {}},  // an option the command does not have
        {{"render", "--scheme"}, {"light", "dark", "both"}},
        {{"render", "--widget"}, {"water", "calories", "macronutrients"}},
        {{"render", "--container"}, {"<dir>"}},
        {{"render", "--help"}, {}},  // a flag takes nothing
        {{"events", "--out"}, {"<file>"}},
        {{"timeline", "--now"}, {"<text>"}},
    };
    for (const auto& c : cases) {
        auto args = c.words;
        args.insert(args.begin(), "__complete");
        EXPECT_EQ(test::linesOf(world.run(args, false).out), c.offered) << c.words[0] << ' ' << c.words[1];
    }
    const auto commands = test::linesOf(world.run({"__complete"}, false).out);
    EXPECT_NE(std::find(commands.begin(), commands.end(), "render"), commands.end());
    EXPECT_EQ(std::find(commands.begin(), commands.end(), "__complete"), commands.end());
}

}  // namespace
}  // namespace qrv::host
