#pragma once
// Scratch directories, files and child processes for the store tests.
#include <sys/wait.h>
#include <unistd.h>

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
        if (::mkdtemp(pattern.data()) == nullptr) std::abort();
        path_ = pattern;
    }
    ~ScratchDirectory() {
        namespace fs = std::filesystem;
        std::error_code error;
        // Tests make parts read-only; give write back so everything can go.
        fs::permissions(path_, fs::perms::owner_all, fs::perm_options::add, error);
        for (auto it = fs::recursive_directory_iterator(path_, error);
             !error && it != fs::recursive_directory_iterator(); it.increment(error))
            fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, error);
        fs::remove_all(path_, error);
    }
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

// A memory file system where there is one: tests of locking need no disk flushes.
inline std::filesystem::path memoryBackedTemporaryDirectory() {
    return ::access("/dev/shm", W_OK) == 0 ? "/dev/shm" : std::filesystem::temp_directory_path();
}

// Runs body in a forked child and returns its exit status (-1 if it did not exit
// normally). The child never returns into the test framework.
inline int runInChild(const std::function<int()>& body) {
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child == 0) {
        int code = 99;
        try {
            code = body();
        } catch (...) {
        }
        std::fflush(nullptr);
        ::_exit(code);
    }
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child || !WIFEXITED(status)) return -1;
    return WEXITSTATUS(status);
}

inline std::vector<std::uint8_t> readBytes(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return std::vector<std::uint8_t>(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline void writeBytes(const std::filesystem::path& file, const std::string& bytes) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
}

}  // namespace qrv::test
