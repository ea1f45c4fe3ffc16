#pragma once
// Runs the built qrv-widgets in a child process with its own container, time
// zone and data directory, and hands back what it printed and how it ended.
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "Platform/coding/JSONDecoder.hpp"
#include "Platform/store/UserDefaults.hpp"
#include "tests/Widget/Cache/ReaderTestSupport.hpp"

extern char** environ;

namespace qrv::test {

struct HostRun {
    int exitCode = -1;
    std::string out, err;
};

inline std::string slurp(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

class HostWorld {
  public:
    ScratchFolder folder;
    std::filesystem::path container = folder.path() / "container";
    // Set for the child on top of the test's own environment.
    std::map<std::string, std::string> environment{{"TZ", "America/New_York"}};

    HostWorld() { std::filesystem::create_directories(container); }

    std::shared_ptr<platform::UserDefaults> store() const {
        return platform::UserDefaults::openSuite("group.com.qrv.widgets", container);
    }

    void put(std::string_view key, const std::string& json) const {
        store()->set(key, platform::PropertyListValue::Data(json.begin(), json.end()));
    }

    // qrv-widgets ARGS; "--container" is added when `withContainer`.
    HostRun run(std::vector<std::string> args, bool withContainer = true) const {
        args.insert(args.begin(), (std::filesystem::path(QRV_BIN_DIR) / "qrv-widgets").string());
        if (withContainer) args.insert(args.end(), {"--container", container.string()});
        auto variables = environment;
        variables["XDG_DATA_HOME"] = (folder.path() / "data").string();
        variables["QRV_BIN_DIR"] = QRV_BIN_DIR;
        std::vector<std::string> envText;
        for (char** entry = environ; *entry; ++entry) {
            const std::string text(*entry), name = text.substr(0, text.find('='));
            if (!variables.count(name) && name != "QRV_APP_GROUP_CONTAINER") envText.push_back(text);
        }
        for (const auto& [name, value] : variables) envText.push_back(name + "=" + value);
        std::vector<char*> argv, envp;
        for (auto& arg : args) argv.push_back(arg.data());
        for (auto& text : envText) envp.push_back(text.data());
        argv.push_back(nullptr);
        envp.push_back(nullptr);

        const auto out = folder.path() / "run.out", err = folder.path() / "run.err";
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, 1, out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        posix_spawn_file_actions_addopen(&actions, 2, err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        pid_t pid = -1;
        int status = 0;
        HostRun result;
        if (posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), envp.data()) == 0 &&
            waitpid(pid, &status, 0) == pid && WIFEXITED(status))
            result.exitCode = WEXITSTATUS(status);
        posix_spawn_file_actions_destroy(&actions);
        result.out = slurp(out);
        result.err = slurp(err);
        return result;
    }
};

// Standard output split into lines.
inline std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

}  // namespace qrv::test
