#pragma once
// Runs the built qrv-widgets in a child process with its own container, time
// zone and data directory, and hands back what it printed and how it ended.
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "Platform/coding/JSONDecoder.hpp"
#include "Platform/store/UserDefaults.hpp"
#include "tests/Widget/Cache/ReaderTestSupport.hpp"

extern char** environ;

namespace qrv::test {

struct HostRun {
    int exitCode = -1;
    std::string out;
    std::string err;
};

inline std::string slurp(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

class HostWorld {
  public:
    ScratchFolder folder;
    std::filesystem::path container = folder.path() / "container";
    std::string timeZone = "America/New_York";

    HostWorld() { std::filesystem::create_directories(container); }

    std::shared_ptr<platform::UserDefaults> store() const {
        return platform::UserDefaults::openSuite("group.com.qrv.widgets", container);
    }

    void put(std::string_view key, const std::string& json) const {
        store()->set(key, platform::PropertyListValue::Data(json.begin(), json.end()));
    }

    // qrv-widgets ARGS; "--container" is added when `withContainer`.
    HostRun run(std::vector<std::string> args, bool withContainer = true) const {
        const auto program = std::filesystem::path(QRV_BIN_DIR) / "qrv-widgets";
        args.insert(args.begin(), program.string());
        if (withContainer) {
            args.push_back("--container");
            args.push_back(container.string());
        }
        return finish(start(args, "run"));
    }

    // A program started with the world's environment; its output goes to files
    // named after `tag`.
    struct Started {
        pid_t pid = -1;
        std::filesystem::path out, err;
    };
    Started start(std::vector<std::string> argv, const std::string& tag) const {
        std::map<std::string, std::string> environment;
        for (char** entry = environ; *entry; ++entry) {
            std::string text(*entry);
            const auto equals = text.find('=');
            if (equals != std::string::npos) environment[text.substr(0, equals)] = text.substr(equals + 1);
        }
        environment["TZ"] = timeZone;
        environment["XDG_DATA_HOME"] = (folder.path() / "data").string();
        environment["QRV_BIN_DIR"] = QRV_BIN_DIR;
        environment.erase("QRV_APP_GROUP_CONTAINER");

        std::vector<std::string> envText;
        for (const auto& [name, value] : environment) envText.push_back(name + "=" + value);
        std::vector<char*> args, envp;
        for (auto& arg : argv) args.push_back(arg.data());
        args.push_back(nullptr);
        for (auto& text : envText) envp.push_back(text.data());
        envp.push_back(nullptr);

        Started started{-1, folder.path() / (tag + ".out"), folder.path() / (tag + ".err")};
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, 1, started.out.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                         0600);
        posix_spawn_file_actions_addopen(&actions, 2, started.err.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                         0600);
        if (posix_spawn(&started.pid, args[0], &actions, nullptr, args.data(), envp.data()) != 0)
            started.pid = -1;
        posix_spawn_file_actions_destroy(&actions);
        return started;
    }

    static HostRun finish(const Started& started) {
        HostRun result;
        int status = 0;
        if (started.pid > 0 && waitpid(started.pid, &status, 0) == started.pid && WIFEXITED(status))
            result.exitCode = WEXITSTATUS(status);
        result.out = slurp(started.out);
        result.err = slurp(started.err);
        return result;
    }
};

// Standard output split into lines.
inline std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        auto end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

}  // namespace qrv::test
