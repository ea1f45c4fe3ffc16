#include "QRVUnitSystem/UnitSystemLoader.hpp"

#include <dlfcn.h>

#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <system_error>

namespace qrv::units {
namespace {

namespace fs = std::filesystem;

// The install's directory for the library, relative to the program's own
// directory; set by the build from the install layout, so the prefix can move.
#ifndef QRV_UNIT_LIBDIR_FROM_BINDIR
#define QRV_UNIT_LIBDIR_FROM_BINDIR "../lib/quorvane-widgets"
#endif

struct LoaderState {
    std::mutex mutex;
    bool attempted = false;
    std::optional<std::string> onlyPath;
    std::shared_ptr<const UnitSystemFunctions> loaded;
    std::string status = "not loaded yet";
};

// Never destroyed: operations may still run from other statics' destructors.
LoaderState& state() {
    static auto* s = new LoaderState;
    return *s;
}

std::string candidateIn(const std::string& fileOrDirectory) {
    std::error_code ec;
    if (fs::is_directory(fileOrDirectory, ec))
        return (fs::path(fileOrDirectory) / kUnitSystemFileName).string();
    return fileOrDirectory;
}

std::vector<std::string> searchPaths(const std::optional<std::string>& onlyPath) {
    if (onlyPath) return {candidateIn(*onlyPath)};
    if (const char* env = std::getenv(kUnitSystemPathVariable); env != nullptr && *env != '\0')
        return {candidateIn(env)};
    std::vector<std::string> paths;
    std::error_code ec;
    const auto exe = fs::read_symlink("/proc/self/exe", ec);
    if (!ec) {
        paths.push_back((exe.parent_path() / kUnitSystemFileName).string());
        paths.push_back((exe.parent_path() / QRV_UNIT_LIBDIR_FROM_BINDIR / kUnitSystemFileName)
                            .lexically_normal()
                            .string());
    }
    return paths;
}

template <typename Fn>
bool lookUp(void* handle, const char* name, Fn& out) {
    out = reinterpret_cast<Fn>(dlsym(handle, name));
    return out != nullptr;
}

// Loads one candidate; on failure says why in `why`.
std::shared_ptr<const UnitSystemFunctions> tryLoad(const std::string& path, std::string& why) {
    std::error_code ec;
    if (!fs::exists(path, ec)) {
        why = path + ": not found";
        return nullptr;
    }
    void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
        const char* err = dlerror();
        why = path + ": " + (err != nullptr ? err : "cannot be loaded");
        return nullptr;
    }
    auto functions = std::make_shared<UnitSystemFunctions>();
    functions->handle = handle;  // closed by the destructor from here on
    functions->path = path;
    QRVUnitSystemABIVersionFn version = nullptr;
    if (!lookUp(handle, "QRVUnitSystemABIVersion", version) || version() != QRV_UNIT_SYSTEM_ABI_VERSION) {
        why =
            path + ": not a unit system of interface version " + std::to_string(QRV_UNIT_SYSTEM_ABI_VERSION);
        return nullptr;
    }
    if (!lookUp(handle, "QRVUnitIsKnownType", functions->isKnownType) ||
        !lookUp(handle, "QRVUnitDefaultDecimalPlaces", functions->defaultDecimalPlaces) ||
        !lookUp(handle, "QRVUnitName", functions->name) ||
        !lookUp(handle, "QRVUnitValueConvert", functions->convert) ||
        !lookUp(handle, "QRVUnitValueFormat", functions->format) ||
        !lookUp(handle, "QRVUnitValueFormatRounded", functions->formatRounded)) {
        why = path + ": a unit system function is missing";
        return nullptr;
    }
    return functions;
}

// Caller holds the mutex.
void loadLocked(LoaderState& s) {
    s.attempted = true;
    s.loaded = nullptr;
    std::string reasons;
    for (const auto& path : searchPaths(s.onlyPath)) {
        std::string why;
        if (auto functions = tryLoad(path, why)) {
            s.status = "loaded from " + path;
            s.loaded = std::move(functions);
            return;
        }
        reasons += (reasons.empty() ? "" : "; ") + why;
    }
    s.status = "unavailable (" + reasons + ")";
}

}  // namespace

UnitSystemFunctions::~UnitSystemFunctions() {
    if (handle != nullptr) dlclose(handle);
}

std::shared_ptr<const UnitSystemFunctions> unitSystem() {
    auto& s = state();
    std::lock_guard lock(s.mutex);
    if (!s.attempted) loadLocked(s);
    return s.loaded;
}

bool isUnitSystemAvailable() { return unitSystem() != nullptr; }

std::string unitSystemStatus() {
    auto& s = state();
    std::lock_guard lock(s.mutex);
    if (!s.attempted) loadLocked(s);
    return s.status;
}

std::vector<std::string> unitSystemSearchPaths() {
    auto& s = state();
    std::lock_guard lock(s.mutex);
    return searchPaths(s.onlyPath);
}

void reloadUnitSystem(std::optional<std::string> onlyPath) {
    auto& s = state();
    std::lock_guard lock(s.mutex);
    s.onlyPath = std::move(onlyPath);
    loadLocked(s);
}

void unloadUnitSystem() {
    auto& s = state();
    std::lock_guard lock(s.mutex);
    s.attempted = true;
    s.loaded = nullptr;
    s.status = "unavailable (unloaded)";
}

}  // namespace qrv::units
