#pragma once
// Decoding errors in the platform decoder's terms: a kind, the coding path of
// the value that failed and a message. Decoders report them as a value
// (DecodingResult); inside the decoding layer they travel as DecodingFailure.
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace qrv::platform {

// One step of a coding path: an object key, or a position in an array.
struct CodingKey {
    std::string stringValue;
    std::optional<int> intValue;

    static CodingKey key(std::string_view name) { return CodingKey{std::string(name), std::nullopt}; }
    static CodingKey index(int position) {
        return CodingKey{"Index " + std::to_string(position), position};
    }
    friend bool operator==(const CodingKey&, const CodingKey&) = default;
};

enum class DecodingErrorKind { dataCorrupted, keyNotFound, typeMismatch, valueNotFound };

std::string_view name(DecodingErrorKind kind);

struct DecodingError {
    DecodingErrorKind kind = DecodingErrorKind::dataCorrupted;
    // Where the failing value sits. For keyNotFound, the object that lacks the key.
    std::vector<CodingKey> codingPath;
    std::string debugDescription;
    // Finer detail the platform keeps as an underlying error (empty when none).
    std::string underlyingError;

    // "values[1].title", or "(top level)".
    std::string pathText() const;
    // One line for people: kind, path, message and detail.
    std::string describe() const;
};

class DecodingFailure : public std::runtime_error {
public:
    explicit DecodingFailure(DecodingError error);
    const DecodingError& error() const { return error_; }

private:
    DecodingError error_;
};

// The outcome of decoding a T: the value or the error.
template <class T>
class DecodingResult {
public:
    DecodingResult(T value) : state_(std::in_place_index<0>, std::move(value)) {}  // NOLINT: implicit on purpose
    DecodingResult(DecodingError error) : state_(std::in_place_index<1>, std::move(error)) {}  // NOLINT

    bool hasValue() const { return state_.index() == 0; }
    explicit operator bool() const { return hasValue(); }

    const T& value() const& { return std::get<0>(state_); }
    T&& value() && { return std::get<0>(std::move(state_)); }
    const DecodingError& error() const { return std::get<1>(state_); }

    std::optional<T> toOptional() && {
        if (!hasValue()) return std::nullopt;
        return std::get<0>(std::move(state_));
    }

private:
    std::variant<T, DecodingError> state_;
};

}  // namespace qrv::platform
