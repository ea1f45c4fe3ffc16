#include "Platform/coding/JSONDecoder.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <simdjson.h>
#include <type_traits>

#include "Platform/coding/FloatDescription.hpp"

namespace qrv::platform {

namespace dom = simdjson::dom;
using json_detail::ElementStorage;
using json_detail::kRootNode;
using json_detail::PathNode;
using json_detail::PathStep;

namespace {

template <class T>
ElementStorage store(const T& value) {
    static_assert(sizeof(T) <= sizeof(ElementStorage) && alignof(T) <= alignof(ElementStorage));
    static_assert(std::is_trivially_copyable_v<T>);
    ElementStorage storage;
    std::memcpy(storage.bytes.data(), &value, sizeof(T));
    return storage;
}

template <class T>
T load(const ElementStorage& storage) {
    T value;
    std::memcpy(&value, storage.bytes.data(), sizeof(T));
    return value;
}

constexpr std::string_view kNotValidJSON = "The given data was not valid JSON.";

[[noreturn]] void fail(DecodingErrorKind kind, std::vector<CodingKey> path, std::string message,
                       std::string underlying = {}) {
    throw DecodingFailure(DecodingError{kind, std::move(path), std::move(message), std::move(underlying)});
}

bool digitsBeforeExponentAreZero(std::string_view token) {
    for (char c : token) {
        if (c == 'e' || c == 'E') break;
        if (c >= '1' && c <= '9') return false;
    }
    return true;
}

// The integer part of a decimal number token, truncated towards zero, or nothing
// when it does not fit in 64 bits.
std::optional<std::int64_t> truncatedInteger(std::string_view token) {
    std::size_t i = 0;
    bool negative = i < token.size() && token[i] == '-';
    if (negative) ++i;
    std::string digits;
    long exponent = 0;
    for (; i < token.size() && token[i] >= '0' && token[i] <= '9'; ++i) digits += token[i];
    if (i < token.size() && token[i] == '.') {
        for (++i; i < token.size() && token[i] >= '0' && token[i] <= '9'; ++i) {
            digits += token[i];
            --exponent;
        }
    }
    if (i < token.size() && (token[i] == 'e' || token[i] == 'E')) {
        ++i;
        bool negativeExponent = i < token.size() && token[i] == '-';
        if (i < token.size() && (token[i] == '-' || token[i] == '+')) ++i;
        long e = 0;
        for (; i < token.size() && token[i] >= '0' && token[i] <= '9'; ++i) e = std::min(e * 10 + (token[i] - '0'), 100000L);
        exponent += negativeExponent ? -e : e;
    }
    if (exponent < 0) {
        auto drop = static_cast<std::size_t>(-exponent);
        digits.resize(drop >= digits.size() ? 0 : digits.size() - drop);
        exponent = 0;
    }
    std::uint64_t value = 0;
    for (char c : digits) {
        if (__builtin_mul_overflow(value, 10u, &value) ||
            __builtin_add_overflow(value, static_cast<unsigned>(c - '0'), &value))
            return std::nullopt;
    }
    for (long e = 0; e < exponent && value != 0; ++e)
        if (__builtin_mul_overflow(value, 10u, &value)) return std::nullopt;
    constexpr std::uint64_t kMaxPositive = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (negative) {
        if (value > kMaxPositive + 1) return std::nullopt;
        return value == kMaxPositive + 1 ? std::numeric_limits<std::int64_t>::min()
                                         : -static_cast<std::int64_t>(value);
    }
    if (value > kMaxPositive) return std::nullopt;
    return static_cast<std::int64_t>(value);
}

// Integer literals too long for 64 bits, written again in exponent form with
// the same digits ("123...9" -> "1.23...9e22"); nothing when there are none.
std::optional<std::string> rewriteLongIntegers(std::string_view text) {
    std::string out;
    bool changed = false;
    std::size_t i = 0;
    while (i < text.size()) {
        char c = text[i];
        if (c == '"') {
            std::size_t j = i + 1;
            while (j < text.size() && text[j] != '"') j += text[j] == '\\' ? 2 : 1;
            j = std::min(j + 1, text.size());
            out.append(text, i, j - i);
            i = j;
            continue;
        }
        if (c == '-' || (c >= '0' && c <= '9')) {
            std::size_t j = i;
            while (j < text.size() && std::strchr("+-.eE0123456789", text[j]) != nullptr && text[j] != '\0') ++j;
            std::string_view token = text.substr(i, j - i);
            bool negative = token.front() == '-';
            std::string_view digits = negative ? token.substr(1) : token;
            bool integer = !digits.empty() && digits.find_first_not_of("0123456789") == std::string_view::npos;
            if (integer && digits.size() > 19 && digits.front() != '0') {
                if (negative) out += '-';
                out += digits.front();
                out += '.';
                out.append(digits.substr(1));
                out += 'e';
                out += std::to_string(digits.size() - 1);
                changed = true;
            } else {
                out.append(token);
            }
            i = j;
            continue;
        }
        out += c;
        ++i;
    }
    if (!changed) return std::nullopt;
    return out;
}

// Where each number of a (valid) document sits in its text, by path. Built only
// when a number's text is needed, which the app's own documents never require.
class SourceIndex {
public:
    explicit SourceIndex(std::string_view text) : text_(text) { root_ = value(); }

    std::optional<std::string_view> numberAt(const std::vector<PathStep>& path) const {
        std::uint32_t node = root_;
        for (const auto& step : path) {
            const Node& n = nodes_[node];
            if (step.index >= 0) {
                if (n.kind != '[' || static_cast<std::size_t>(step.index) >= n.children.size()) return std::nullopt;
                node = n.children[static_cast<std::size_t>(step.index)];
            } else {
                if (n.kind != '{') return std::nullopt;
                std::size_t k = 0;
                while (k < n.keys.size() && n.keys[k] != step.key) ++k;  // first occurrence
                if (k == n.keys.size()) return std::nullopt;
                node = n.children[k];
            }
        }
        if (nodes_[node].kind != '0') return std::nullopt;
        return nodes_[node].token;
    }

private:
    struct Node {
        char kind = 0;  // '{', '[', '"', '0' (number), 'l' (literal)
        std::string_view token;
        std::vector<std::uint32_t> children;
        std::vector<std::string> keys;
    };

    void space() {
        while (pos_ < text_.size() && (text_[pos_] == ' ' || text_[pos_] == '\n' || text_[pos_] == '\r' ||
                                       text_[pos_] == '\t'))
            ++pos_;
    }
    char peek() const { return pos_ < text_.size() ? text_[pos_] : '\0'; }

    unsigned hex4() {
        unsigned v = 0;
        for (int k = 0; k < 4 && pos_ < text_.size(); ++k, ++pos_) {
            char c = text_[pos_];
            v = v * 16 + static_cast<unsigned>(c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10);
        }
        return v;
    }

    static void appendUTF8(std::string& out, unsigned cp) {
        if (cp < 0x80) {
            out += static_cast<char>(cp);
        } else if (cp < 0x800) {
            out += static_cast<char>(0xC0 | (cp >> 6));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        } else if (cp < 0x10000) {
            out += static_cast<char>(0xE0 | (cp >> 12));
            out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | (cp >> 18));
            out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        }
    }

    std::string string() {
        std::string out;
        ++pos_;  // opening quote
        while (pos_ < text_.size() && text_[pos_] != '"') {
            char c = text_[pos_++];
            if (c != '\\') {
                out += c;
                continue;
            }
            char e = peek();
            ++pos_;
            switch (e) {
                case 'b': out += '\b'; break;
                case 'f': out += '\f'; break;
                case 'n': out += '\n'; break;
                case 'r': out += '\r'; break;
                case 't': out += '\t'; break;
                case 'u': {
                    unsigned cp = hex4();
                    if (cp >= 0xD800 && cp < 0xDC00 && peek() == '\\' && pos_ + 1 < text_.size() &&
                        text_[pos_ + 1] == 'u') {
                        pos_ += 2;
                        unsigned low = hex4();
                        cp = 0x10000 + ((cp - 0xD800) << 10) + (low - 0xDC00);
                    }
                    appendUTF8(out, cp);
                    break;
                }
                default: out += e; break;
            }
        }
        ++pos_;  // closing quote
        return out;
    }

    std::uint32_t value() {
        space();
        auto id = static_cast<std::uint32_t>(nodes_.size());
        nodes_.emplace_back();
        char c = peek();
        if (c == '{' || c == '[') {
            nodes_[id].kind = c;
            ++pos_;
            space();
            char close = c == '{' ? '}' : ']';
            while (peek() != close && pos_ < text_.size()) {
                if (c == '{') {
                    std::string key = string();
                    space();
                    ++pos_;  // ':'
                    auto child = value();
                    nodes_[id].keys.push_back(std::move(key));
                    nodes_[id].children.push_back(child);
                } else {
                    auto child = value();
                    nodes_[id].children.push_back(child);
                }
                space();
                if (peek() == ',') ++pos_;
                space();
            }
            ++pos_;
        } else if (c == '"') {
            nodes_[id].kind = '"';
            string();
        } else if (c == 't' || c == 'n') {
            nodes_[id].kind = 'l';
            pos_ += 4;
        } else if (c == 'f') {
            nodes_[id].kind = 'l';
            pos_ += 5;
        } else {
            std::size_t start = pos_;
            while (pos_ < text_.size() && std::strchr("+-.eE0123456789", text_[pos_]) != nullptr &&
                   text_[pos_] != '\0')
                ++pos_;
            nodes_[id].kind = '0';
            nodes_[id].token = text_.substr(start, pos_ - start);
        }
        return id;
    }

    std::string_view text_;
    std::size_t pos_ = 0;
    std::vector<Node> nodes_;
    std::uint32_t root_ = 0;
};

std::string_view describeKind(JSONKind kind) {
    switch (kind) {
        case JSONKind::null: return "null";
        case JSONKind::boolean: return "bool";
        case JSONKind::number: return "number";
        case JSONKind::string: return "a string";
        case JSONKind::array: return "an array";
        case JSONKind::object: return "a dictionary";
    }
    return "unknown";
}

}  // namespace

class JSONDocumentContext {
public:
    explicit JSONDocumentContext(std::string_view text) : text_(text) {}

    PathNode addNode(PathNode parent, const std::optional<PathStep>& step) {
        nodes_.push_back(Node{parent, step});
        return static_cast<PathNode>(nodes_.size() - 1);
    }

    // The steps from the root down to `node`, then `last` if given.
    std::vector<PathStep> steps(PathNode node, const std::optional<PathStep>& last) const {
        std::vector<PathStep> path;
        if (last) path.push_back(*last);
        for (; node != kRootNode; node = nodes_[node].parent)
            if (nodes_[node].step) path.push_back(*nodes_[node].step);
        std::reverse(path.begin(), path.end());
        return path;
    }

    std::vector<CodingKey> codingPath(PathNode node, const std::optional<PathStep>& last) const {
        std::vector<CodingKey> keys;
        for (const auto& step : steps(node, last))
            keys.push_back(step.index >= 0 ? CodingKey::index(static_cast<int>(step.index)) : CodingKey::key(step.key));
        return keys;
    }

    std::optional<std::string_view> numberToken(PathNode node, const std::optional<PathStep>& last) {
        if (!index_) index_ = std::make_unique<SourceIndex>(text_);
        return index_->numberAt(steps(node, last));
    }

    // Whether "-0" occurs anywhere in the text: without it, no integer zero can be negative.
    bool mayHaveNegativeZero() {
        if (!negativeZero_) negativeZero_ = text_.find("-0") != std::string_view::npos;
        return *negativeZero_;
    }

private:
    struct Node {
        PathNode parent;
        std::optional<PathStep> step;
    };
    std::string_view text_;
    std::vector<Node> nodes_;
    std::unique_ptr<SourceIndex> index_;
    std::optional<bool> negativeZero_;
};

// JSONValue

JSONKind JSONValue::kind() const {
    switch (load<dom::element>(element_).type()) {
        case dom::element_type::ARRAY: return JSONKind::array;
        case dom::element_type::OBJECT: return JSONKind::object;
        case dom::element_type::INT64:
        case dom::element_type::UINT64:
        case dom::element_type::DOUBLE: return JSONKind::number;
        case dom::element_type::STRING: return JSONKind::string;
        case dom::element_type::BOOL: return JSONKind::boolean;
        case dom::element_type::NULL_VALUE: return JSONKind::null;
    }
    return JSONKind::null;
}

void JSONValue::failTypeMismatch(std::string_view expected) const {
    fail(DecodingErrorKind::typeMismatch, codingPath(),
         "Expected to decode " + std::string(expected) + " but found " + std::string(describeKind(kind())) +
             " instead.");
}

void JSONValue::failNull(std::string_view type) const {
    fail(DecodingErrorKind::valueNotFound, codingPath(),
         "Cannot get value of type " + std::string(type) + " -- found null value instead");
}

void JSONValue::failDataCorrupted(std::string message) const {
    fail(DecodingErrorKind::dataCorrupted, codingPath(), std::move(message));
}

void JSONValue::failNotRepresentable(std::string_view number, std::string_view type) const {
    // The platform reports these from its scanner, at the top level; the path
    // survives in the detail.
    DecodingError where{DecodingErrorKind::dataCorrupted, codingPath(), {}, {}};
    fail(DecodingErrorKind::dataCorrupted, {}, std::string(kNotValidJSON),
         "Number " + std::string(number) + " at " + where.pathText() + " is not representable as " +
             std::string(type) + ".");
}

std::vector<CodingKey> JSONValue::codingPath() const { return context_->codingPath(parent_, step_); }

std::optional<std::string_view> JSONValue::sourceToken() const { return context_->numberToken(parent_, step_); }

std::string JSONValue::numberText(double parsed) const {
    if (auto token = sourceToken()) return std::string(*token);
    return doubleDescription(parsed);
}

bool JSONValue::integerZeroIsNegative() const {
    if (!context_->mayHaveNegativeZero()) return false;
    auto token = sourceToken();
    return token && !token->empty() && token->front() == '-';
}

void JSONValue::checkZeroIsTrue(std::string_view type) const {
    auto token = sourceToken();
    if (token && !digitsBeforeExponentAreZero(*token)) failNotRepresentable(*token, type);
}

bool JSONValue::decodeBool() const {
    auto element = load<dom::element>(element_);
    if (element.type() != dom::element_type::BOOL) failTypeMismatch("Bool");  // null too
    return element.get_bool().value_unsafe();
}

std::string JSONValue::decodeString() const {
    auto element = load<dom::element>(element_);
    if (element.type() == dom::element_type::NULL_VALUE) failNull("String");
    if (element.type() != dom::element_type::STRING) failTypeMismatch("String");
    return std::string(element.get_string().value_unsafe());
}

double JSONValue::decodeDouble() const {
    auto element = load<dom::element>(element_);
    switch (element.type()) {
        case dom::element_type::INT64: {
            auto i = element.get_int64().value_unsafe();
            if (i == 0 && integerZeroIsNegative()) return -0.0;
            return static_cast<double>(i);
        }
        case dom::element_type::UINT64: return static_cast<double>(element.get_uint64().value_unsafe());
        case dom::element_type::DOUBLE: {
            double d = element.get_double().value_unsafe();
            if (d == 0) checkZeroIsTrue("Double");
            return d;
        }
        case dom::element_type::NULL_VALUE: failNull("Double");
        default: failTypeMismatch("Double");
    }
}

Date JSONValue::decodeDate() const {
    auto element = load<dom::element>(element_);
    if (element.type() == dom::element_type::NULL_VALUE) failNull("Date");
    if (!element.is_number()) failTypeMismatch("Double");
    return Date{decodeDouble()};
}

float JSONValue::decodeFloat() const {
    auto element = load<dom::element>(element_);
    switch (element.type()) {
        case dom::element_type::INT64: {
            auto i = element.get_int64().value_unsafe();
            if (i == 0 && integerZeroIsNegative()) return -0.0f;
            return static_cast<float>(i);  // one rounding from the exact integer
        }
        case dom::element_type::UINT64: return static_cast<float>(element.get_uint64().value_unsafe());
        case dom::element_type::DOUBLE: break;
        case dom::element_type::NULL_VALUE: failNull("Float");
        default: failTypeMismatch("Float");
    }
    const double d = element.get_double().value_unsafe();
    if (d == 0) {
        checkZeroIsTrue("Float");
        return static_cast<float>(d);
    }
    // From the text, for the one case the double cannot settle.
    auto fromText = [&]() -> std::optional<float> {
        auto token = sourceToken();
        if (!token) return std::nullopt;
        float f = 0;
        auto [end, ec] = std::from_chars(token->data(), token->data() + token->size(), f);
        if (ec == std::errc::result_out_of_range) failNotRepresentable(*token, "Float");  // overflow or underflow
        if (ec != std::errc{} || end != token->data() + token->size()) return std::nullopt;
        return f;
    };
    // Halfway between FLT_MAX and the next power of two: from here on a float is infinite.
    constexpr double overflow = 340282356779733661637539395458142568448.0;  // 2^128 - 2^103
    const double magnitude = std::fabs(d);
    if (magnitude > overflow) failNotRepresentable(numberText(d), "Float");
    if (magnitude == overflow) {
        if (auto f = fromText()) return *f;
        failNotRepresentable(numberText(d), "Float");  // ties to even: infinity
    }
    if (magnitude > std::numeric_limits<float>::max())
        return std::copysign(std::numeric_limits<float>::max(), static_cast<float>(std::copysign(1.0, d)));
    float f = static_cast<float>(d);
    if (static_cast<double>(f) != d) {
        float lo = static_cast<double>(f) < d ? f : std::nextafter(f, -std::numeric_limits<float>::infinity());
        float hi = std::nextafter(lo, std::numeric_limits<float>::infinity());
        double midpoint = (static_cast<double>(lo) + static_cast<double>(hi)) / 2;
        if (d == midpoint) {
            if (auto exact = fromText()) f = *exact;
        }
    }
    if (f == 0) failNotRepresentable(numberText(d), "Float");  // nonzero digits, underflow
    return f;
}

std::int64_t JSONValue::decodeInt() const {
    auto element = load<dom::element>(element_);
    switch (element.type()) {
        case dom::element_type::INT64: return element.get_int64().value_unsafe();
        case dom::element_type::UINT64:
            failNotRepresentable(std::to_string(element.get_uint64().value_unsafe()), "Int");
        case dom::element_type::DOUBLE: break;
        case dom::element_type::NULL_VALUE: failNull("Int");
        default: failTypeMismatch("Int");
    }
    const double d = element.get_double().value_unsafe();
    if (d == 0) {
        checkZeroIsTrue("Int");
        return 0;
    }
    // Only integral values inside Int's range, as Int(exactly:) allows.
    constexpr double kTwo63 = 9223372036854775808.0;
    if (!(d >= -kTwo63 && d < kTwo63) || d != std::trunc(d)) {
        failNotRepresentable(numberText(d), "Int");
    }
    if (std::fabs(d) < 9007199254740992.0) return static_cast<std::int64_t>(d);
    // Beyond 2^53 the platform reads the text again as a decimal and truncates it.
    if (auto token = sourceToken()) {
        if (auto exact = truncatedInteger(*token)) return *exact;
        failNotRepresentable(*token, "Int");
    }
    return static_cast<std::int64_t>(d);
}

KeyedDecodingContainer JSONValue::keyedContainer() const {
    auto element = load<dom::element>(element_);
    if (element.type() == dom::element_type::NULL_VALUE)
        fail(DecodingErrorKind::valueNotFound, codingPath(), "Cannot get keyed decoding container -- found null value instead");
    if (element.type() != dom::element_type::OBJECT) failTypeMismatch("Dictionary<String, Any>");
    return KeyedDecodingContainer(context_, store(element.get_object().value_unsafe()),
                                  context_->addNode(parent_, step_));
}

UnkeyedDecodingContainer JSONValue::unkeyedContainer() const {
    auto element = load<dom::element>(element_);
    if (element.type() == dom::element_type::NULL_VALUE)
        fail(DecodingErrorKind::valueNotFound, codingPath(),
             "Cannot get unkeyed decoding container -- found null value instead");
    if (element.type() != dom::element_type::ARRAY) failTypeMismatch("Array<Any>");
    return UnkeyedDecodingContainer(context_, store(element.get_array().value_unsafe()),
                                    context_->addNode(parent_, step_));
}

// Containers

std::optional<JSONValue> KeyedDecodingContainer::find(std::string_view key) const {
    for (auto field : load<dom::object>(object_)) {
        if (field.key == key) return JSONValue(context_, store(field.value), node_, PathStep{field.key, -1});
    }
    return std::nullopt;
}

bool KeyedDecodingContainer::contains(std::string_view key) const { return find(key).has_value(); }

JSONValue KeyedDecodingContainer::operator[](std::string_view key) const {
    if (auto value = find(key)) return *value;
    fail(DecodingErrorKind::keyNotFound, codingPath(), "No value associated with key \"" + std::string(key) + "\".");
}

std::vector<std::string> KeyedDecodingContainer::allKeys() const {
    std::vector<std::string> keys;
    for (auto field : load<dom::object>(object_)) {
        if (std::find(keys.begin(), keys.end(), field.key) == keys.end()) keys.emplace_back(field.key);
    }
    return keys;
}

std::vector<CodingKey> KeyedDecodingContainer::codingPath() const { return context_->codingPath(node_, std::nullopt); }

std::vector<CodingKey> UnkeyedDecodingContainer::codingPath() const {
    return context_->codingPath(node_, std::nullopt);
}

UnkeyedDecodingContainer::UnkeyedDecodingContainer(JSONDocumentContext* context, ElementStorage array, PathNode node)
    : context_(context), node_(node) {
    auto a = load<dom::array>(array);
    count_ = a.size();
    iterator_ = store(a.begin());
}

JSONValue UnkeyedDecodingContainer::next() {
    auto position = PathStep{{}, static_cast<std::int64_t>(index_)};
    if (isAtEnd()) fail(DecodingErrorKind::valueNotFound, context_->codingPath(node_, position), "Unkeyed container is at end.");
    auto it = load<dom::array::iterator>(iterator_);
    dom::element element = *it;
    ++it;
    iterator_ = store(it);
    ++index_;
    return JSONValue(context_, store(element), node_, position);
}

// Decoder

struct JSONDecoder::Parser {
    dom::parser parser;
};

JSONDecoder::JSONDecoder() : parser_(std::make_unique<Parser>()) {}
JSONDecoder::~JSONDecoder() = default;

std::optional<DecodingError> JSONDecoder::visit(std::span<const std::uint8_t> bytes,
                                                const std::function<void(const JSONValue&)>& decodeRoot) {
    simdjson::padded_string text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    simdjson::padded_string rewritten;
    std::string_view parsed{text.data(), text.size()};
    dom::element root;
    auto error = parser_->parser.parse(text).get(root);
    if (error == simdjson::NUMBER_ERROR) {
        if (auto again = rewriteLongIntegers(parsed)) {
            rewritten = simdjson::padded_string(*again);
            parsed = std::string_view{rewritten.data(), rewritten.size()};
            error = parser_->parser.parse(rewritten).get(root);
        }
    }
    if (error)
        return DecodingError{DecodingErrorKind::dataCorrupted, {}, std::string(kNotValidJSON),
                             simdjson::error_message(error)};
    JSONDocumentContext context(parsed);
    try {
        decodeRoot(JSONValue(&context, store(root), kRootNode, std::nullopt));
    } catch (const DecodingFailure& failure) {
        return failure.error();
    }
    return std::nullopt;
}

}  // namespace qrv::platform
