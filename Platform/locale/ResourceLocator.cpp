#include "Platform/locale/ResourceLocator.hpp"

#include <dlfcn.h>

#include <cstdlib>
#include <system_error>

// Set by the build from the install layout; relative, so the prefix can move.
#ifndef QRV_DATADIR_FROM_BINDIR
#define QRV_DATADIR_FROM_BINDIR "../share/quorvane-widgets"
#endif

namespace qrv::platform {

std::optional<std::filesystem::path> executableDirectory() {
    std::error_code error;
    const auto exe = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error || exe.empty()) return std::nullopt;
    return exe.parent_path();
}

std::optional<std::filesystem::path> programResourceDirectory() {
    if (const char* value = std::getenv(kResourceDirectoryVariable); value != nullptr && *value != '\0') {
        return std::filesystem::path(value);
    }
    const auto exe = executableDirectory();
    if (!exe) return std::nullopt;
    std::error_code error;
    const auto beside = *exe / "Resources";
    if (std::filesystem::is_directory(beside, error)) return beside;
    const auto installed = (*exe / QRV_DATADIR_FROM_BINDIR).lexically_normal();
    if (std::filesystem::is_directory(installed, error)) return installed;
    return beside;
}

std::optional<std::filesystem::path> directoryOfImageContaining(const void* address) {
    Dl_info info{};
    if (dladdr(address, &info) == 0 || info.dli_fname == nullptr || *info.dli_fname == '\0')
        return std::nullopt;
    std::error_code error;
    auto path = std::filesystem::canonical(info.dli_fname, error);
    if (error) path = std::filesystem::absolute(info.dli_fname, error);
    if (error) return std::nullopt;
    return path.parent_path();
}

std::vector<std::filesystem::path> programResourceSearchPath() {
    std::vector<std::filesystem::path> dirs;
    if (auto resources = programResourceDirectory()) dirs.push_back(*resources);
    if (auto exe = executableDirectory()) dirs.push_back(*exe);
    return dirs;
}

}  // namespace qrv::platform
