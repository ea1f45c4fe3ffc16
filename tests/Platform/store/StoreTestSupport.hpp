#pragma once
// Scratch directories, child processes and plistutil for the store tests.
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

namespace qrv::test {

class ScratchDirectory {
public:
    explicit ScratchDirectory(const std::filesystem::path& base = std::filesystem::temp_directory_path()) {
        std::string pattern = (base / "qrv-store-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) {
            std::perror("mkdtemp");
            std::abort();
        }
        path_ = pattern;
    }
    ~ScratchDirectory() {
        std::error_code error;
        // Tests make parts read-only; give write back so everything can go.
        for (auto it = std::filesystem::recursive_directory_iterator(path_, error);
             !error && it != std::filesystem::recursive_directory_iterator(); it.increment(error)) {
            std::filesystem::permissions(it->path(), std::filesystem::perms::owner_all,
                                         std::filesystem::perm_options::add, error);
        }
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all, std::filesystem::perm_options::add,
                                     error);
        std::filesystem::remove_all(path_, error);
    }
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

// A memory file system where there is one: tests of locking need no disk flushes.
inline std::filesystem::path memoryBackedTemporaryDirectory() {
    std::error_code error;
    if (std::filesystem::is_directory("/dev/shm", error) && ::access("/dev/shm", W_OK) == 0) {
        return "/dev/shm";
    }
    return std::filesystem::temp_directory_path();
}

// Runs body in a forked child and returns its exit status (-1 if it did not exit
// normally). The child never returns into the test framework.
inline int runInChild(const std::function<int()>& body) {
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child == 0) {
        int code = 98;
        try {
            code = body();
        } catch (...) {
            code = 99;
        }
        std::fflush(nullptr);
        ::_exit(code);
    }
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child || !WIFEXITED(status)) {
        return -1;
    }
    return WEXITSTATUS(status);
}

inline bool haveProgram(const char* name) {
    const std::string command = std::string("command -v ") + name + " >/dev/null 2>&1";
    return std::system(command.c_str()) == 0;
}

// Standard output of a shell command, and whether it exited with 0.
inline bool runShell(const std::string& command, std::string& output) {
    output.clear();
    FILE* pipe = ::popen(command.c_str(), "r");
    if (pipe == nullptr) {
        return false;
    }
    std::array<char, 4096> buffer{};
    std::size_t count = 0;
    while ((count = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0) {
        output.append(buffer.data(), count);
    }
    return ::pclose(pipe) == 0;
}

inline std::vector<std::uint8_t> readBytes(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return std::vector<std::uint8_t>(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline void writeBytes(const std::filesystem::path& file, const std::string& bytes) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out << bytes;
}

inline std::string shellQuote(const std::string& text) {
    std::string quoted = "'";
    for (char c : text) {
        if (c == '\'') {
            quoted += "'\\''";
        } else {
            quoted += c;
        }
    }
    return quoted + "'";
}

}  // namespace qrv::test
