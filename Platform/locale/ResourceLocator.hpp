#pragma once
// Where a program's resources are: the stand-in for the platform's bundle
// paths. In the build tree they sit next to the programs (the build copies them
// there); an installed program finds them in share/quorvane-widgets under its
// own prefix. Both are found from the program's location, so an install can be
// moved anywhere.
#include <filesystem>
#include <optional>
#include <vector>

namespace qrv::platform {

// Environment variable naming the program's resource directory explicitly.
inline constexpr const char* kResourceDirectoryVariable = "QRV_RESOURCE_DIR";

// The directory holding the running executable.
std::optional<std::filesystem::path> executableDirectory();

// The program's resource directory: $QRV_RESOURCE_DIR when set and not empty;
// otherwise "Resources" beside the executable (the build tree) when that is a
// directory, else the install's data directory when that is one, else
// "Resources" beside the executable.
std::optional<std::filesystem::path> programResourceDirectory();

// The directory of the executable or shared library that contains the given
// code address (the library's own resources live beside it).
std::optional<std::filesystem::path> directoryOfImageContaining(const void* address);

// The directories searched for the program's own resource files, in order:
// the resource directory, then the executable's directory.
std::vector<std::filesystem::path> programResourceSearchPath();

}  // namespace qrv::platform
