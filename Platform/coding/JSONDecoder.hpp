#pragma once
// Strict, typed reading of JSON, with the rules of the platform's default JSON
// decoder: every value read must be there and of the right JSON type, null is
// never a value, unknown keys are simply not read, and numbers convert only when
// they fit.
//
// Why simdjson (DOM API) underneath: it checks the whole document before
// anything is read and picks the fastest kernel for the CPU at run time. On a
// 700 KB list of 10,000 small objects (the widget's own water log at its
// largest) it parses in about 1 ms where nlohmann needs 15-20 ms, and the
// widget pays that on every tap; reading the list into records through this
// layer comes to about 2 ms (bench/bench_json.cpp). It only reads JSON;
// JSONWriter writes it.
//
// Rules kept on top of simdjson:
// - A key that occurs twice in one object: the first occurrence is the value
//   (simdjson's lookup finds the first; we scan the same way).
// - Numbers. simdjson hands over an int64, a uint64 or a correctly rounded
//   double; the original text is not kept. Where that is not enough to decide
//   as the platform does, the number's text is found again in the source (a
//   small index of the document, built only when first needed):
//     * a double that came out as zero: the platform rejects underflow
//       ("1e-400"), so a zero is accepted only when its digits are all zeros;
//     * the integer literal "-0" keeps its sign for Double, Float and Date;
//     * Float is read at single precision straight from the decimal text. The
//       double simdjson gives is the nearest double to the text, and no float
//       or float midpoint lies strictly between the two, so rounding that
//       double to float is exact except when the double is itself a midpoint
//       between two floats; only then the text is parsed as binary32. A result
//       that overflows to infinity, or underflows to zero from nonzero digits,
//       fails; subnormals are accepted;
//     * Int: integers, and non-integral notation with an integral value ("1.0",
//       "1e2"); above 2^53 the text is truncated as a decimal, as the platform
//       does.
//   A number that does not fit fails as the platform reports it: dataCorrupted
//   at the top level with "The given data was not valid JSON.", the number and
//   its path in the underlying detail.
// - Integer literals beyond 64 bits, which simdjson refuses, are rewritten to
//   exponent form (same value) and the document parsed again, so that a Double
//   may hold 100000000000000000000000 as on the platform. A number beyond the
//   double range anywhere in the document ("1e400") makes it undecodable, even
//   under a key nobody reads.
//
// Values and containers are views into the document being decoded: use them
// inside the callback given to JSONDecoder::decode, never after it returns.
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/coding/DecodingError.hpp"
#include "Platform/time/Date.hpp"

namespace qrv::platform {

class JSONDocumentContext;
class KeyedDecodingContainer;
class UnkeyedDecodingContainer;

namespace json_detail {
// Room for a simdjson DOM element or array iterator, kept opaque here so that
// users do not compile simdjson's header.
struct alignas(8) ElementStorage {
    std::array<std::byte, 16> bytes{};
};
// One step of a path: an object key (pointing into the document) or an array position.
struct PathStep {
    std::string_view key;
    std::int64_t index = -1;  // >= 0 for an array position
};
// Containers record where they sit in the decoding's own list of path nodes,
// so values stay small and a path is only spelled out when something fails.
using PathNode = std::uint32_t;
inline constexpr PathNode kRootNode = 0xFFFFFFFFu;
}  // namespace json_detail

enum class JSONKind { null, boolean, number, string, array, object };

class JSONValue {
public:
    JSONKind kind() const;
    bool isNull() const { return kind() == JSONKind::null; }

    bool decodeBool() const;
    std::int64_t decodeInt() const;
    double decodeDouble() const;
    float decodeFloat() const;
    std::string decodeString() const;
    // Seconds since 2001-01-01 00:00:00 UTC; any JSON number.
    Date decodeDate() const;

    KeyedDecodingContainer keyedContainer() const;
    UnkeyedDecodingContainer unkeyedContainer() const;

    std::vector<CodingKey> codingPath() const;

    // Fails the decoding with an error at this value, e.g. for an enumeration
    // raw value that names no case.
    [[noreturn]] void failDataCorrupted(std::string message) const;

private:
    friend class JSONDocumentContext;
    friend class JSONDecoder;
    friend class KeyedDecodingContainer;
    friend class UnkeyedDecodingContainer;
    JSONValue(JSONDocumentContext* context, json_detail::ElementStorage element, json_detail::PathNode parent,
              std::optional<json_detail::PathStep> step)
        : context_(context), element_(element), parent_(parent), step_(step) {}

    [[noreturn]] void failNotRepresentable(std::string_view number, std::string_view type) const;
    [[noreturn]] void failTypeMismatch(std::string_view expected) const;
    [[noreturn]] void failNull(std::string_view type) const;
    std::optional<std::string_view> sourceToken() const;
    // The number as written, for messages (its parsed value when the text cannot be found).
    std::string numberText(double parsed) const;
    bool integerZeroIsNegative() const;
    void checkZeroIsTrue(std::string_view type) const;

    JSONDocumentContext* context_;
    json_detail::ElementStorage element_;
    json_detail::PathNode parent_;                // the container this value was read from
    std::optional<json_detail::PathStep> step_;  // its key or position there; none for the root
};

class KeyedDecodingContainer {
public:
    bool contains(std::string_view key) const;
    // The value under `key` (its first occurrence); keyNotFound when absent.
    JSONValue operator[](std::string_view key) const;
    std::optional<JSONValue> find(std::string_view key) const;
    std::vector<std::string> allKeys() const;

    bool decodeBool(std::string_view key) const { return (*this)[key].decodeBool(); }
    std::int64_t decodeInt(std::string_view key) const { return (*this)[key].decodeInt(); }
    double decodeDouble(std::string_view key) const { return (*this)[key].decodeDouble(); }
    float decodeFloat(std::string_view key) const { return (*this)[key].decodeFloat(); }
    std::string decodeString(std::string_view key) const { return (*this)[key].decodeString(); }
    Date decodeDate(std::string_view key) const { return (*this)[key].decodeDate(); }

    std::vector<CodingKey> codingPath() const;

private:
    friend class JSONValue;
    KeyedDecodingContainer(JSONDocumentContext* context, json_detail::ElementStorage object, json_detail::PathNode node)
        : context_(context), object_(object), node_(node) {}
    JSONDocumentContext* context_;
    json_detail::ElementStorage object_;
    json_detail::PathNode node_;
};

class UnkeyedDecodingContainer {
public:
    std::size_t count() const { return count_; }
    std::size_t currentIndex() const { return index_; }
    bool isAtEnd() const { return index_ >= count_; }
    // The next element; valueNotFound once the array is used up.
    JSONValue next();

    std::vector<CodingKey> codingPath() const;

private:
    friend class JSONValue;
    UnkeyedDecodingContainer(JSONDocumentContext* context, json_detail::ElementStorage array,
                             json_detail::PathNode node);
    JSONDocumentContext* context_;
    json_detail::ElementStorage iterator_;
    json_detail::PathNode node_;
    std::size_t count_ = 0;
    std::size_t index_ = 0;
};

// Parses and hands the root to a decoding function. Keeps its parser's buffers
// between documents; one decoder serves one thread at a time.
class JSONDecoder {
public:
    JSONDecoder();
    ~JSONDecoder();
    JSONDecoder(const JSONDecoder&) = delete;
    JSONDecoder& operator=(const JSONDecoder&) = delete;

    // Runs `decodeRoot(root)` on the parsed document; any DecodingFailure it
    // raises, and any invalid JSON, becomes the error.
    template <class T, class F>
    DecodingResult<T> decode(std::span<const std::uint8_t> bytes, F&& decodeRoot) {
        std::optional<T> out;
        auto error = visit(bytes, [&](const JSONValue& root) { out.emplace(decodeRoot(root)); });
        if (error) return std::move(*error);
        return std::move(*out);
    }

    std::optional<DecodingError> visit(std::span<const std::uint8_t> bytes,
                                       const std::function<void(const JSONValue&)>& decodeRoot);

private:
    struct Parser;
    std::unique_ptr<Parser> parser_;
};

// A fresh decoder for one document, as the platform's decoders are used.
template <class T, class F>
DecodingResult<T> decodeJSON(std::span<const std::uint8_t> bytes, F&& decodeRoot) {
    JSONDecoder decoder;
    return decoder.decode<T>(bytes, std::forward<F>(decodeRoot));
}

inline std::span<const std::uint8_t> bytesOf(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

}  // namespace qrv::platform
