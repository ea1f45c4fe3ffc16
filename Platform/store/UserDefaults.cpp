#include "Platform/store/UserDefaults.hpp"

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <iostream>
#include <map>
#include <mutex>
#include <utility>

#include "Platform/store/PropertyList.hpp"

namespace qrv::platform {

namespace fs = std::filesystem;

namespace {

std::string errnoText(int error) { return std::strerror(error); }

std::string nonEmptyEnv(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? std::string(value) : std::string();
}

// Threads of this process are serialised per file with a mutex; processes with
// the flock. (flock alone would do, but the mutex is what thread checkers see.)
std::mutex& threadMutexFor(const fs::path& file) {
    static std::mutex registryMutex;
    static std::map<std::string, std::unique_ptr<std::mutex>> registry;
    std::error_code error;
    fs::path absolute = fs::absolute(file, error);
    const std::string key = (error ? file : absolute).lexically_normal().string();
    std::lock_guard guard(registryMutex);
    auto& slot = registry[key];
    if (!slot) {
        slot = std::make_unique<std::mutex>();
    }
    return *slot;
}

class FileDescriptor {
public:
    explicit FileDescriptor(int fd = -1) noexcept : fd_(fd) {}
    FileDescriptor(FileDescriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&&) = delete;
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() {
        if (fd_ >= 0) {
            ::close(fd_);
        }
    }
    int get() const noexcept { return fd_; }
    int release() noexcept { return std::exchange(fd_, -1); }

private:
    int fd_;
};

// Exclusive across threads (mutex) and processes (flock on the sidecar file),
// held for one read-modify-write.
class StoreLock {
public:
    StoreLock(const fs::path& file, const fs::path& lockFile)
        : threadLock_(threadMutexFor(file)), fd_(openLockFile(file, lockFile)) {
        while (::flock(fd_.get(), LOCK_EX) != 0) {
            if (errno != EINTR) {
                throw UserDefaultsError("cannot lock " + lockFile.string() + ": " + errnoText(errno));
            }
        }
    }
    // Closing the descriptor releases the flock.

private:
    static int openLockFile(const fs::path& file, const fs::path& lockFile) {
        std::error_code error;
        if (file.has_parent_path()) {
            fs::create_directories(file.parent_path(), error);
        }
        if (error) {
            throw UserDefaultsError("cannot create the directory of " + file.string() + ": " + error.message());
        }
        const int fd = ::open(lockFile.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
        if (fd < 0) {
            throw UserDefaultsError("cannot open lock file " + lockFile.string() + ": " + errnoText(errno));
        }
        return fd;
    }

    std::unique_lock<std::mutex> threadLock_;
    FileDescriptor fd_;
};

struct FileContents {
    enum class Status { present, missing, failed };
    Status status = Status::missing;
    std::vector<std::uint8_t> bytes;
    std::string error;
};

FileContents readWholeFile(const fs::path& file) {
    FileContents result;
    FileDescriptor fd(::open(file.c_str(), O_RDONLY | O_CLOEXEC));
    if (fd.get() < 0) {
        if (errno == ENOENT || errno == ENOTDIR) {
            return result;
        }
        result.status = FileContents::Status::failed;
        result.error = errnoText(errno);
        return result;
    }
    struct stat info {};
    if (::fstat(fd.get(), &info) != 0) {
        result.status = FileContents::Status::failed;
        result.error = errnoText(errno);
        return result;
    }
    if (!S_ISREG(info.st_mode)) {
        result.status = FileContents::Status::failed;
        result.error = "not a regular file";
        return result;
    }
    result.bytes.reserve(static_cast<std::size_t>(info.st_size));
    std::uint8_t buffer[65536];
    for (;;) {
        const ssize_t count = ::read(fd.get(), buffer, sizeof buffer);
        if (count < 0) {
            if (errno == EINTR) {
                continue;
            }
            result.status = FileContents::Status::failed;
            result.error = errnoText(errno);
            result.bytes.clear();
            return result;
        }
        if (count == 0) {
            break;
        }
        result.bytes.insert(result.bytes.end(), buffer, buffer + count);
    }
    result.status = FileContents::Status::present;
    return result;
}

// The parsed top-level dictionary, or the reason the bytes are not one.
struct Parsed {
    std::optional<PropertyListValue::Dictionary> dictionary;
    std::string problem;
};

Parsed parseStore(const std::vector<std::uint8_t>& bytes) {
    if (bytes.empty()) {
        return {PropertyListValue::Dictionary{}, {}};
    }
    try {
        PropertyListValue root = PropertyList::decode(bytes);
        if (auto* dictionary = root.dictionaryValue()) {
            return {std::move(*dictionary), {}};
        }
        return {std::nullopt, "top level is " + std::string(root.typeName()) + ", not a dictionary"};
    } catch (const PropertyListError& error) {
        return {std::nullopt, error.what()};
    }
}

std::string utcStamp() {
    const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::tm parts{};
    ::gmtime_r(&now, &parts);
    char text[32];
    std::strftime(text, sizeof text, "%Y%m%dT%H%M%SZ", &parts);
    return text;
}

// Renames the unreadable file to "<file>.corrupt-<UTC stamp>" without replacing
// an earlier one. Returns the new path, or throws.
fs::path moveAside(const fs::path& file, const std::string& problem) {
    const std::string base = file.string() + ".corrupt-" + utcStamp();
    for (int attempt = 1; attempt <= 1000; ++attempt) {
        const std::string target = attempt == 1 ? base : base + "-" + std::to_string(attempt);
        if (::renameat2(AT_FDCWD, file.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0) {
            std::cerr << file.string() << " is not a readable property list (" << problem << "); moved aside to "
                      << target << '\n';
            return target;
        }
        if (errno == EEXIST) {
            continue;
        }
        if (errno == EINVAL) {
            // The file system cannot refuse to replace; check by hand instead.
            std::error_code error;
            if (fs::exists(target, error)) {
                continue;
            }
            if (::rename(file.c_str(), target.c_str()) == 0) {
                std::cerr << file.string() << " is not a readable property list (" << problem
                          << "); moved aside to " << target << '\n';
                return target;
            }
        }
        throw UserDefaultsError(file.string() + " is not a readable property list (" + problem +
                                ") and cannot be moved aside: " + errnoText(errno));
    }
    throw UserDefaultsError(file.string() + " is not a readable property list and every aside name is taken");
}

void writeAll(int fd, const std::vector<std::uint8_t>& bytes, const fs::path& file) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t count = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (count < 0) {
            if (errno == EINTR) {
                continue;
            }
            throw UserDefaultsError("cannot write " + file.string() + ": " + errnoText(errno));
        }
        done += static_cast<std::size_t>(count);
    }
}

bool isUsableSuiteName(std::string_view name) {
    return !name.empty() && name != "." && name != ".." && name.find('/') == std::string_view::npos &&
           name.find('\0') == std::string_view::npos;
}

// True when a file can be created in directory: what every write needs.
bool canCreateFilesIn(const fs::path& directory) {
    std::string probe = (directory / ".write-probe-XXXXXX").string();
    const int fd = ::mkostemp(probe.data(), O_CLOEXEC);
    if (fd < 0) {
        return false;
    }
    ::close(fd);
    ::unlink(probe.c_str());
    return true;
}

// NSString-style truth of a text: optional blanks, an optional sign and zeros, then
// Y, y, T, t or a digit 1-9.
bool textTruth(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size() && (text[at] == ' ' || text[at] == '\t' || text[at] == '\n' || text[at] == '\r' ||
                                text[at] == '\v' || text[at] == '\f')) {
        ++at;
    }
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) {
        ++at;
    }
    while (at < text.size() && text[at] == '0') {
        ++at;
    }
    if (at >= text.size()) {
        return false;
    }
    const char first = text[at];
    return first == 'Y' || first == 'y' || first == 'T' || first == 't' || (first >= '1' && first <= '9');
}

}  // namespace

// ---- locations ---------------------------------------------------------------

fs::path quorvaneDataDirectory() {
    const std::string xdg = nonEmptyEnv("XDG_DATA_HOME");
    if (!xdg.empty() && fs::path(xdg).is_absolute()) {
        return fs::path(xdg) / "quorvane";
    }
    std::string home = nonEmptyEnv("HOME");
    if (home.empty()) {
        struct passwd entry {};
        struct passwd* found = nullptr;
        std::vector<char> buffer(16384);
        if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found != nullptr &&
            found->pw_dir != nullptr) {
            home = found->pw_dir;
        }
    }
    return fs::path(home.empty() ? "." : home) / ".local" / "share" / "quorvane";
}

fs::path appGroupContainerDirectory() {
    const std::string chosen = nonEmptyEnv(kAppGroupContainerVariable);
    if (!chosen.empty()) {
        return fs::path(chosen);
    }
    return quorvaneDataDirectory() / "app-group";
}

fs::path suitePreferencesPath(const fs::path& containerDir, std::string_view suiteName) {
    return containerDir / "Library" / "Preferences" / (std::string(suiteName) + ".plist");
}

std::string currentProgramName() {
    std::error_code error;
    const fs::path executable = fs::read_symlink("/proc/self/exe", error);
    std::string name = error ? std::string() : executable.filename().string();
    constexpr std::string_view deleted = " (deleted)";
    if (name.size() > deleted.size() && name.ends_with(deleted)) {
        name.resize(name.size() - deleted.size());
    }
    if (name.empty()) {
        name = program_invocation_short_name;
    }
    return name.empty() ? std::string("unknown") : name;
}

fs::path standardDefaultsPath() {
    return quorvaneDataDirectory() / "standard" / (currentProgramName() + ".plist");
}

// ---- opening -----------------------------------------------------------------

UserDefaults::UserDefaults(fs::path file) : file_(std::move(file)), lockFile_(file_.string() + ".lock") {}

std::shared_ptr<UserDefaults> UserDefaults::suite(std::string_view name) {
    return openSuite(name, appGroupContainerDirectory());
}

std::shared_ptr<UserDefaults> UserDefaults::openSuite(std::string_view name, const fs::path& containerDir) {
    if (!isUsableSuiteName(name) || containerDir.empty()) {
        return nullptr;
    }
    const fs::path file = suitePreferencesPath(containerDir, name);
    const fs::path preferences = file.parent_path();
    std::error_code error;
    fs::create_directories(preferences, error);
    if (error || !fs::is_directory(preferences, error) || !canCreateFilesIn(preferences)) {
        return nullptr;
    }
    return std::make_shared<UserDefaults>(file);
}

std::shared_ptr<UserDefaults> UserDefaults::standard() { return atPath(standardDefaultsPath()); }

std::shared_ptr<UserDefaults> UserDefaults::atPath(fs::path file) {
    return std::make_shared<UserDefaults>(std::move(file));
}

// ---- reading -----------------------------------------------------------------

UserDefaults::Dictionary UserDefaults::readUnlocked() const {
    FileContents contents = readWholeFile(file_);
    if (contents.status == FileContents::Status::missing) {
        return {};
    }
    if (contents.status == FileContents::Status::failed) {
        std::cerr << "cannot read " << file_.string() << ": " << contents.error << '\n';
        return {};
    }
    Parsed parsed = parseStore(contents.bytes);
    if (parsed.dictionary) {
        return std::move(*parsed.dictionary);
    }
    // Unreadable: set it aside under the lock (another process may be doing the
    // same, or may already have replaced it with a good file).
    try {
        StoreLock lock(file_, lockFile_);
        return readForWrite();
    } catch (const UserDefaultsError& error) {
        std::cerr << error.what() << '\n';
        return {};
    }
}

UserDefaults::Dictionary UserDefaults::readForWrite() const {
    FileContents contents = readWholeFile(file_);
    if (contents.status == FileContents::Status::missing) {
        return {};
    }
    if (contents.status == FileContents::Status::failed) {
        throw UserDefaultsError("cannot read " + file_.string() + ": " + contents.error);
    }
    Parsed parsed = parseStore(contents.bytes);
    if (parsed.dictionary) {
        return std::move(*parsed.dictionary);
    }
    moveAside(file_, parsed.problem);
    return {};
}

std::optional<UserDefaults::Value> UserDefaults::object(std::string_view key) const {
    Dictionary contents = readUnlocked();
    auto found = contents.find(key);
    if (found == contents.end()) {
        return std::nullopt;
    }
    return std::move(found->second);
}

std::optional<UserDefaults::Data> UserDefaults::data(std::string_view key) const {
    std::optional<Value> value = object(key);
    if (!value) {
        return std::nullopt;
    }
    if (auto* bytes = value->get<Data>()) {
        return std::move(*bytes);
    }
    return std::nullopt;
}

std::optional<std::string> UserDefaults::string(std::string_view key) const {
    std::optional<Value> value = object(key);
    if (!value) {
        return std::nullopt;
    }
    if (auto* text = value->get<std::string>()) {
        return std::move(*text);
    }
    return std::nullopt;
}

bool UserDefaults::boolValue(std::string_view key) const {
    const std::optional<Value> value = object(key);
    if (!value) {
        return false;
    }
    if (const bool* flag = value->booleanValue()) {
        return *flag;
    }
    if (const std::int64_t* number = value->integerValue()) {
        return *number != 0;
    }
    if (const double* real = value->realValue()) {
        return *real != 0.0;
    }
    if (const std::string* text = value->stringValue()) {
        return textTruth(*text);
    }
    return false;
}

UserDefaults::Dictionary UserDefaults::dictionaryRepresentation() const { return readUnlocked(); }

// ---- writing -----------------------------------------------------------------

void UserDefaults::writeLocked(const Dictionary& contents) const {
    std::vector<std::uint8_t> bytes;
    try {
        bytes = PropertyList::encode(PropertyListValue(contents), PropertyList::Format::binary);
    } catch (const PropertyListError& error) {
        throw UserDefaultsError("cannot store value in " + file_.string() + ": " + error.what());
    }
    std::string temporary = file_.string() + ".XXXXXX";
    FileDescriptor fd(::mkostemp(temporary.data(), O_CLOEXEC));
    if (fd.get() < 0) {
        throw UserDefaultsError("cannot create a temporary file beside " + file_.string() + ": " + errnoText(errno));
    }
    try {
        writeAll(fd.get(), bytes, file_);
        // mkostemp makes the file 0600 and rename keeps the mode.
        if (::fchmod(fd.get(), 0644) != 0) {
            throw UserDefaultsError("cannot set the mode of " + temporary + ": " + errnoText(errno));
        }
        if (::fsync(fd.get()) != 0) {
            throw UserDefaultsError("cannot flush " + temporary + ": " + errnoText(errno));
        }
        if (::close(fd.release()) != 0) {
            throw UserDefaultsError("cannot close " + temporary + ": " + errnoText(errno));
        }
        if (::rename(temporary.c_str(), file_.c_str()) != 0) {
            throw UserDefaultsError("cannot replace " + file_.string() + ": " + errnoText(errno));
        }
    } catch (...) {
        ::unlink(temporary.c_str());
        throw;
    }
    // Make the rename itself durable; a failure here loses nothing already visible.
    FileDescriptor directory(::open(file_.parent_path().empty() ? "." : file_.parent_path().c_str(),
                                    O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory.get() >= 0) {
        ::fsync(directory.get());
    }
}

fs::path UserDefaults::keepBeside(std::string_view label, const Data& bytes) const {
    std::error_code error;
    if (!file_.parent_path().empty()) fs::create_directories(file_.parent_path(), error);
    const std::string base = file_.string() + "." + std::string(label) + "-" + utcStamp();
    for (int attempt = 1; attempt <= 1000; ++attempt) {
        const std::string target = attempt == 1 ? base : base + "-" + std::to_string(attempt);
        FileDescriptor fd(::open(target.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644));
        if (fd.get() < 0) {
            if (errno == EEXIST) continue;
            throw UserDefaultsError("cannot create " + target + ": " + errnoText(errno));
        }
        try {
            writeAll(fd.get(), bytes, target);
            if (::fsync(fd.get()) != 0)
                throw UserDefaultsError("cannot flush " + target + ": " + errnoText(errno));
        } catch (...) {
            ::unlink(target.c_str());
            throw;
        }
        return target;
    }
    throw UserDefaultsError("every name for keeping " + std::string(label) + " beside " + file_.string() +
                            " is taken");
}

bool UserDefaults::modify(const std::function<bool(Dictionary&)>& change) {
    StoreLock lock(file_, lockFile_);
    Dictionary contents = readForWrite();
    if (!change(contents)) {
        return false;
    }
    writeLocked(contents);
    return true;
}

void UserDefaults::set(std::string_view key, Value value) {
    modify([&](Dictionary& contents) {
        auto found = contents.find(key);
        if (found != contents.end()) {
            // Flags are set again on every read attempt; leave the file alone then.
            if (found->second == value) {
                return false;
            }
            found->second = std::move(value);
        } else {
            contents.emplace(std::string(key), std::move(value));
        }
        return true;
    });
}

void UserDefaults::removeObject(std::string_view key) {
    modify([&](Dictionary& contents) {
        auto found = contents.find(key);
        if (found == contents.end()) {
            return false;
        }
        contents.erase(found);
        return true;
    });
}

std::optional<UserDefaults::Value> UserDefaults::update(std::string_view key, const Updater& fn) {
    std::optional<Value> replacement;
    modify([&](Dictionary& contents) {
        auto found = contents.find(key);
        std::optional<Value> current;
        if (found != contents.end()) {
            current = std::move(found->second);
        }
        replacement = fn(std::move(current));
        if (!replacement) {
            if (found == contents.end()) {
                return false;
            }
            contents.erase(found);
        } else if (found != contents.end()) {
            found->second = *replacement;
        } else {
            contents.emplace(std::string(key), *replacement);
        }
        return true;
    });
    return replacement;
}

}  // namespace qrv::platform
