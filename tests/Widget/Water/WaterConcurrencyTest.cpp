// Taps that overlap across processes all land: two processes each run the
// log-water command 200 times while the other does the same. Each process is
// this test program started again in "tapper" mode, running the command in
// process 200 times; that keeps the test quick (two program starts, not 400)
// while the store's cross-process lock is what is under test.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "Host/Command.hpp"
#include "Platform/store/UserDefaults.hpp"
#include "Widget/Cache/InteractiveWaterData.hpp"

extern char** environ;

namespace {

constexpr int kTapsPerProcess = 200;
// An upper bound, not a measurement: a tapper that hangs fails the test
// instead of blocking the suite.
constexpr const char* kTimeLimitSeconds = "300";
constexpr const char* kUnitVariable = "QRV_WATER_TAPPER_UNIT";
constexpr const char* kAmountVariable = "QRV_WATER_TAPPER_AMOUNT";
constexpr const char* kContainerVariable = "QRV_WATER_TAPPER_CONTAINER";

// Starts this program again, limited in time, to run only TapperProcess.
pid_t spawnTapper(const std::filesystem::path& container, const std::string& unit,
                  const std::string& amount) {
    std::vector<std::string> environment;
    for (char** variable = environ; *variable != nullptr; ++variable) environment.emplace_back(*variable);
    environment.push_back(std::string(kUnitVariable) + "=" + unit);
    environment.push_back(std::string(kAmountVariable) + "=" + amount);
    environment.push_back(std::string(kContainerVariable) + "=" + container.string());
    std::vector<char*> envp;
    for (auto& variable : environment) envp.push_back(variable.data());
    envp.push_back(nullptr);

    std::string self = std::filesystem::read_symlink("/proc/self/exe").string();
    std::string filter = "--gtest_filter=WaterConcurrencyTest.TapperProcess";
    std::string timeout = "timeout";
    std::string limit = kTimeLimitSeconds;
    std::vector<char*> argv{timeout.data(), limit.data(), self.data(), filter.data(), nullptr};
    pid_t pid = -1;
    if (::posix_spawnp(&pid, "timeout", nullptr, nullptr, argv.data(), envp.data()) != 0) return -1;
    return pid;
}

int exitStatus(pid_t pid) {
    int status = 0;
    if (::waitpid(pid, &status, 0) != pid) return -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// Only does something in a process started by spawnTapper.
TEST(WaterConcurrencyTest, TapperProcess) {
    const char* unit = std::getenv(kUnitVariable);
    const char* amount = std::getenv(kAmountVariable);
    const char* container = std::getenv(kContainerVariable);
    if (unit == nullptr || amount == nullptr || container == nullptr)
        GTEST_SKIP() << "runs only as a tapper started by TwoProcessesTappingAtOnceKeepEveryRecord";
    // Keep the 200 "logged ..." lines out of the output.
    const int null = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (null >= 0) ::dup2(null, STDOUT_FILENO);
    int failures = 0;
    for (int tap = 0; tap < kTapsPerProcess; ++tap) {
        std::vector<std::string> arguments{"qrv-widgets", "log-water", "--unit",      unit,
                                           "--amount",    amount,      "--container", container};
        std::vector<char*> argv;
        for (auto& argument : arguments) argv.push_back(argument.data());
        argv.push_back(nullptr);
        if (qrv::host::runMain(static_cast<int>(arguments.size()), argv.data()) != qrv::host::kExitOk)
            ++failures;
    }
    EXPECT_EQ(failures, 0);
}

TEST(WaterConcurrencyTest, TwoProcessesTappingAtOnceKeepEveryRecord) {
    if (std::getenv(kUnitVariable) != nullptr) GTEST_SKIP() << "a tapper does not start tappers";
    char pattern[] = "/tmp/qrv-water-concurrency-XXXXXX";
    ASSERT_NE(::mkdtemp(pattern), nullptr);
    const std::filesystem::path container = pattern;

    const pid_t first = spawnTapper(container, "ml", "250");
    const pid_t second = spawnTapper(container, "cups", "2");
    ASSERT_GT(first, 0);
    ASSERT_GT(second, 0);
    EXPECT_EQ(exitStatus(first), 0);
    EXPECT_EQ(exitStatus(second), 0);

    const auto store = qrv::platform::UserDefaults::openSuite("group.com.qrv.widgets", container);
    ASSERT_NE(store, nullptr);
    const auto data = store->data("WaterInteractiveData");
    ASSERT_TRUE(data);
    const auto records = qrv::widget::decodeInteractiveWaterDataList(*data);
    ASSERT_TRUE(records);
    EXPECT_EQ(records->size(), 2u * kTapsPerProcess);
    std::size_t cups = 0;
    for (const auto& record : *records)
        cups += record.waterUnit == qrv::widget::WaterWidgetUnit::cups ? 1 : 0;
    EXPECT_EQ(cups, static_cast<std::size_t>(kTapsPerProcess));
    // Every list read along the way decoded: nothing was set aside as unreadable.
    for (const auto& file : std::filesystem::directory_iterator(store->filePath().parent_path()))
        EXPECT_EQ(file.path().filename().string().find("-unreadable-"), std::string::npos) << file.path();
    std::filesystem::remove_all(container);
}

}  // namespace
