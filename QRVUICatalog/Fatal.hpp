#pragma once
// Missing design assets are build defects, not runtime conditions: the program
// stops with a message instead of drawing with a wrong colour.
#include <string_view>

namespace qrv::catalog {

[[noreturn]] void fatalError(std::string_view message);

}  // namespace qrv::catalog
