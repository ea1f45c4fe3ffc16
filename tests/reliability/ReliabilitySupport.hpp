#pragma once
// Scratch containers, child processes and the real qrv-widgets program for the
// reliability tests. Children are started together through a pipe that the
// parent closes (a start gun), never by waiting for time to pass.
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "tests/Platform/store/StoreTestSupport.hpp"

extern char** environ;

namespace qrv::reliability {

namespace fs = std::filesystem;

inline const char* kSuiteName = "group.com.qrv.widgets";

inline fs::path qrvWidgets() { return fs::path(QRV_BIN_DIR) / "qrv-widgets"; }
inline fs::path repositoryRoot() { return fs::path(QRV_TEST_DATA).parent_path(); }

// A fresh directory, on memory where there is one (these tests write a lot
// and need no disk flushes), removed with everything in it at the end.
struct Scratch : test::ScratchDirectory {
    Scratch() : ScratchDirectory(test::memoryBackedTemporaryDirectory()) {}
    fs::path operator/(const fs::path& rest) const { return path() / rest; }
};

// <container>/Library/Preferences/group.com.qrv.widgets.plist
inline fs::path storeFile(const fs::path& container) {
    return container / "Library" / "Preferences" / (std::string(kSuiteName) + ".plist");
}

inline std::string readFile(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

using test::writeBytes;

struct ProgramResult {
    int exitCode = -1;  // -1 when the program did not exit normally
    std::string out;
    std::string err;
};

// Runs `program args...` with the given variables added to (or, when empty,
// removed from) the environment, standard output and error captured apart.
// `scratch` holds the capture files.
inline ProgramResult runProgram(const fs::path& program, const std::vector<std::string>& args,
                                const std::map<std::string, std::string>& environment, const fs::path& scratch) {
    static int serial = 0;
    const std::string tag = std::to_string(::getpid()) + "-" + std::to_string(serial++);
    const fs::path outFile = scratch / ("out-" + tag), errFile = scratch / ("err-" + tag);

    std::vector<std::string> envStrings, argStrings{program.string()};
    for (char** entry = environ; *entry != nullptr; ++entry)
        if (const std::string text(*entry); !environment.count(text.substr(0, text.find('='))))
            envStrings.push_back(text);
    for (const auto& [name, value] : environment)
        if (!value.empty()) envStrings.push_back(name + "=" + value);
    argStrings.insert(argStrings.end(), args.begin(), args.end());
    std::vector<char*> envp, argv;
    for (auto& text : envStrings) envp.push_back(text.data());
    for (auto& text : argStrings) argv.push_back(text.data());
    envp.push_back(nullptr);
    argv.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, outFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    pid_t child = -1;
    const int spawned = ::posix_spawn(&child, argv[0], &actions, nullptr, argv.data(), envp.data());
    posix_spawn_file_actions_destroy(&actions);
    ProgramResult result;
    if (spawned != 0) {
        result.err = "cannot start " + program.string();
        return result;
    }
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.out = readFile(outFile);
    result.err = readFile(errFile);
    fs::remove(outFile);
    fs::remove(errFile);
    return result;
}

// The environment every run of the program gets: its own data directory (where
// the standard defaults live when the container cannot be used) and the
// project's leak suppressions for the libraries' one-off caches.
inline std::map<std::string, std::string> programEnvironment(const fs::path& dataHome) {
    return {{"XDG_DATA_HOME", dataHome.string()},
            {"QRV_APP_GROUP_CONTAINER", ""},
            {"LSAN_OPTIONS", "suppressions=" + (repositoryRoot() / "scripts" / "lsan.supp").string()},
            {"TZ", "UTC"}};
}

// Forks `count` children that all wait for one start signal, then run body(i)
// and exit with what it returns. Returns the exit statuses (-1: killed).
inline std::vector<int> runTogether(int count, const std::function<int(int)>& body) {
    int gun[2];
    if (::pipe(gun) != 0) std::abort();
    std::fflush(nullptr);
    std::vector<pid_t> children;
    for (int index = 0; index < count; ++index) {
        const pid_t child = ::fork();
        if (child == 0) {
            ::close(gun[1]);
            char byte;
            while (::read(gun[0], &byte, 1) < 0 && errno == EINTR) {
            }
            int code = 97;
            try {
                code = body(index);
            } catch (...) {
                code = 98;
            }
            std::fflush(nullptr);
            ::_exit(code);
        }
        children.push_back(child);
    }
    ::close(gun[0]);
    ::close(gun[1]);  // every child's read returns: they start together
    std::vector<int> statuses;
    for (const pid_t child : children) {
        int status = 0;
        while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
        }
        statuses.push_back(WIFEXITED(status) ? WEXITSTATUS(status) : -1);
    }
    return statuses;
}

}  // namespace qrv::reliability
