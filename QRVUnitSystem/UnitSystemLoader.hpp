#pragma once
// Finds and loads libQRVUnitSystem.so at run time, as the widget loads the unit
// framework on the phone. Where it looks:
//   - QRV_UNIT_SYSTEM_PATH, when set and not empty, is the only place looked:
//     a file is loaded as it is, a directory is searched for
//     libQRVUnitSystem.so. Point it at a path that does not exist
//     (QRV_UNIT_SYSTEM_PATH=/nonexistent) to run without the library.
//   - otherwise the program's own directory (/proc/self/exe), as in the build
//     tree, then the install's library directory found from there
//     (bin/../lib/quorvane-widgets), as in an installed prefix.
// A library that is missing, fails to load, lacks a function or speaks another
// interface version counts as unavailable: every unit operation then answers
// nothing and callers fall back. The first use loads; the answer is kept for
// the life of the process unless reloaded.
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "QRVUnitSystem/Library/QRVUnitSystemABI.hpp"

namespace qrv::units {

inline constexpr const char* kUnitSystemFileName = "libQRVUnitSystem.so";
inline constexpr const char* kUnitSystemPathVariable = "QRV_UNIT_SYSTEM_PATH";

// The loaded library's functions. Holding the pointer keeps the library mapped,
// so an unload during a call cannot pull the code away from under it.
struct UnitSystemFunctions {
    QRVUnitIsKnownTypeFn isKnownType = nullptr;
    QRVUnitDefaultDecimalPlacesFn defaultDecimalPlaces = nullptr;
    QRVUnitNameFn name = nullptr;
    QRVUnitValueConvertFn convert = nullptr;
    QRVUnitValueFormatFn format = nullptr;
    QRVUnitValueFormatRoundedFn formatRounded = nullptr;
    std::string path;
    void* handle = nullptr;

    UnitSystemFunctions() = default;
    UnitSystemFunctions(const UnitSystemFunctions&) = delete;
    UnitSystemFunctions& operator=(const UnitSystemFunctions&) = delete;
    ~UnitSystemFunctions();
};

// The loaded library, loading it on first use; null when unavailable.
std::shared_ptr<const UnitSystemFunctions> unitSystem();

bool isUnitSystemAvailable();

// Where the library was loaded from, or why it could not be (one line).
std::string unitSystemStatus();

// The candidate files, in the order they are tried (reads the environment now).
std::vector<std::string> unitSystemSearchPaths();

// Forgets the loaded library and searches again. With `onlyPath`, that file or
// directory is the only place looked (tests use it to load a copy or to force
// the library's absence without touching the environment).
void reloadUnitSystem(std::optional<std::string> onlyPath = std::nullopt);

// Drops the library: every operation answers nothing until reloadUnitSystem().
void unloadUnitSystem();

}  // namespace qrv::units
