#pragma once
// A user-defaults store kept in one property-list file, shared between processes.
//
// Every read goes to the file, so a value another process wrote is seen at once.
// Every write replaces the file atomically (temporary file, fsync, rename) while
// holding an exclusive lock on a sidecar "<file>.lock", so read-modify-write of a
// key through update() loses nothing when processes or threads overlap.
// A file that does not parse is moved aside with a time-stamp suffix and the store
// starts empty; it is never overwritten in place.
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/store/PropertyListValue.hpp"

namespace qrv::platform {

// A write could not be carried out (disk full, permission, unreadable or
// unmovable store file). The file on disk is left as it was.
class UserDefaultsError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Environment variable naming the app-group container directory.
inline constexpr const char* kAppGroupContainerVariable = "QRV_APP_GROUP_CONTAINER";

// ${XDG_DATA_HOME:-$HOME/.local/share}/quorvane
std::filesystem::path quorvaneDataDirectory();
// $QRV_APP_GROUP_CONTAINER when set and not empty, else <data>/quorvane/app-group.
std::filesystem::path appGroupContainerDirectory();
// <container>/Library/Preferences/<suite>.plist
std::filesystem::path suitePreferencesPath(const std::filesystem::path& containerDir, std::string_view suiteName);
// The running program's name, from /proc/self/exe.
std::string currentProgramName();
// <data>/quorvane/standard/<program>.plist
std::filesystem::path standardDefaultsPath();

class UserDefaults {
public:
    using Value = PropertyListValue;
    using Dictionary = PropertyListValue::Dictionary;
    using Data = PropertyListValue::Data;
    using Updater = std::function<std::optional<Value>(std::optional<Value>)>;

    // The suite in the app-group container from appGroupContainerDirectory().
    // Null when the name is unusable or the container cannot be created or written.
    static std::shared_ptr<UserDefaults> suite(std::string_view name);
    // The suite in an explicitly chosen container (the host's --container).
    static std::shared_ptr<UserDefaults> openSuite(std::string_view name, const std::filesystem::path& containerDir);
    // The process's own defaults at standardDefaultsPath(); never refused.
    static std::shared_ptr<UserDefaults> standard();
    // A store in an arbitrary file; its directory is created on the first write.
    static std::shared_ptr<UserDefaults> atPath(std::filesystem::path file);

    const std::filesystem::path& filePath() const { return file_; }

    // Reads never throw: a file that cannot be read reads as empty (one line on
    // standard error unless it is simply missing).
    std::optional<Value> object(std::string_view key) const;
    // The bytes under key; nothing when the key is missing or holds another kind.
    std::optional<Data> data(std::string_view key) const;
    std::optional<std::string> string(std::string_view key) const;
    // True for true, a non-zero number, or text starting like "YES", "true" or a
    // non-zero digit; false otherwise and when missing.
    bool boolValue(std::string_view key) const;
    Dictionary dictionaryRepresentation() const;

    // Writes throw UserDefaultsError when the file cannot be replaced. Setting the
    // value a key already holds, or removing a missing key, leaves the file untouched.
    void set(std::string_view key, Value value);
    void removeObject(std::string_view key);
    // Atomic read-modify-write of one key across threads and processes: fn gets the
    // current value and returns the new one (nothing removes the key). If fn throws,
    // nothing is written. Returns what fn returned. fn runs under the store's lock
    // and must not use this store itself.
    std::optional<Value> update(std::string_view key, const Updater& fn);

    // Keeps `bytes` in a new file beside the store file,
    // "<file>.<label>-<UTC stamp>", never replacing an earlier one (so a value
    // about to be replaced is not lost). Returns its path; throws
    // UserDefaultsError when it cannot be written.
    std::filesystem::path keepBeside(std::string_view label, const Data& bytes) const;

    explicit UserDefaults(std::filesystem::path file);

private:
    Dictionary readUnlocked() const;
    Dictionary readForWrite() const;
    void writeLocked(const Dictionary& contents) const;
    // Under the lock: read, let change edit the contents, write if it returns true.
    bool modify(const std::function<bool(Dictionary&)>& change);

    std::filesystem::path file_;
    std::filesystem::path lockFile_;
};

}  // namespace qrv::platform
