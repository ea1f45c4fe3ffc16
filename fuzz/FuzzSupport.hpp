#pragma once
// What every fuzz target shares: a check that stops the run with a readable
// reason (libFuzzer then saves the input), and byte views of the input.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string_view>

namespace qrv::fuzz {

[[noreturn]] inline void fail(const char* what, const char* file, int line) {
    std::fprintf(stderr, "fuzz invariant broken at %s:%d: %s\n", file, line, what);
    std::abort();
}

inline std::span<const std::uint8_t> bytes(const std::uint8_t* data, std::size_t size) {
    return {data, size};
}

inline std::string_view text(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

}  // namespace qrv::fuzz

// Not assert(): the fuzz build defines NDEBUG, and these must hold there.
#define QRV_FUZZ_CHECK(condition)                                        \
    do {                                                                 \
        if (!(condition)) ::qrv::fuzz::fail(#condition, __FILE__, __LINE__); \
    } while (false)
