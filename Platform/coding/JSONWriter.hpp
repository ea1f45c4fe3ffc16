#pragma once
// Writes JSON exactly as the platform's default JSON encoder does: compact (no
// spaces or newlines), '/' escaped as "\/", control characters as \b \f \n \r \t
// or lowercase \u00xx, everything else as raw UTF-8, and numbers as their
// shortest round-trip text without a trailing ".0" (Float printed as a Float).
// A date is its seconds since 2001 as a number. Keys come out in the order they
// are written; the platform leaves order unspecified, so callers pick a fixed one.
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/time/Date.hpp"

namespace qrv::platform {

// NaN or an infinity, which JSON cannot carry.
class EncodingError : public std::invalid_argument {
public:
    using std::invalid_argument::invalid_argument;
};

class JSONWriter {
public:
    JSONWriter& beginObject();
    JSONWriter& endObject();
    JSONWriter& beginArray();
    JSONWriter& endArray();
    // The key of the next value inside an object.
    JSONWriter& key(std::string_view name);

    JSONWriter& string(std::string_view text);
    JSONWriter& boolean(bool value);
    JSONWriter& integer(std::int64_t value);
    JSONWriter& number(double value);  // throws EncodingError when not finite
    JSONWriter& number(float value);   // throws EncodingError when not finite
    JSONWriter& date(Date value);
    JSONWriter& null();

    const std::string& text() const { return out_; }
    std::string take() && { return std::move(out_); }

    // `text` escaped and quoted.
    static void appendQuoted(std::string& out, std::string_view text);

private:
    void beforeValue();

    struct Level {
        bool object = false;
        bool empty = true;
    };
    std::string out_;
    std::vector<Level> levels_;
    bool keyPending_ = false;
};

}  // namespace qrv::platform
