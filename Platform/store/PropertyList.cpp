#include "Platform/store/PropertyList.hpp"

#include <plist/plist.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <utility>

namespace qrv::platform {

namespace {

// Owns one libplist node tree (or nothing). Child nodes handed to a container
// are released first, since the container then frees them.
class PlistNode {
public:
    PlistNode() = default;
    explicit PlistNode(plist_t node) noexcept : node_(node) {}
    PlistNode(PlistNode&& other) noexcept : node_(std::exchange(other.node_, nullptr)) {}
    PlistNode& operator=(PlistNode&& other) noexcept {
        if (this != &other) {
            reset();
            node_ = std::exchange(other.node_, nullptr);
        }
        return *this;
    }
    PlistNode(const PlistNode&) = delete;
    PlistNode& operator=(const PlistNode&) = delete;
    ~PlistNode() { reset(); }

    plist_t get() const noexcept { return node_; }
    plist_t release() noexcept { return std::exchange(node_, nullptr); }
    explicit operator bool() const noexcept { return node_ != nullptr; }

private:
    void reset() noexcept {
        if (node_ != nullptr) {
            plist_free(node_);
            node_ = nullptr;
        }
    }
    plist_t node_ = nullptr;
};

// Buffers and iterators that libplist hands out with malloc.
struct MallocFree {
    void operator()(void* pointer) const noexcept { std::free(pointer); }
};
using MallocString = std::unique_ptr<char, MallocFree>;
using MallocIterator = std::unique_ptr<void, MallocFree>;

// Deeper than anything a real store holds; stops hostile files from exhausting the stack.
constexpr int kMaxDepth = 512;

// Iterators, not indexed access: plist_array_get_item walks the list from the start.
template <class Visit>
void forEachArrayItem(plist_t array, Visit&& visit) {
    plist_array_iter rawIter = nullptr;
    plist_array_new_iter(array, &rawIter);
    MallocIterator iter(rawIter);
    for (;;) {
        plist_t item = nullptr;
        plist_array_next_item(array, iter.get(), &item);
        if (item == nullptr) {
            break;
        }
        visit(item);
    }
}

template <class Visit>
void forEachDictItem(plist_t dict, Visit&& visit) {
    plist_dict_iter rawIter = nullptr;
    plist_dict_new_iter(dict, &rawIter);
    MallocIterator iter(rawIter);
    for (;;) {
        char* rawKey = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(dict, iter.get(), &rawKey, &item);
        MallocString key(rawKey);
        if (item == nullptr) {
            break;
        }
        visit(std::string(key ? key.get() : ""), item);
    }
}

void requireNoNul(std::string_view text, const char* what) {
    if (text.find('\0') != std::string_view::npos) {
        throw PropertyListError(std::string("a property-list ") + what + " cannot contain a NUL character");
    }
}

// libplist writes binary strings as UTF-16 converted from UTF-8, and bytes that
// are not UTF-8 come out truncated or as a different text. So nothing that is
// not UTF-8 is written, and what is read is made UTF-8 on the way in.
bool isUTF8(std::string_view text) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto length = static_cast<std::int32_t>(text.size());
    for (std::int32_t at = 0; at < length;) {
        UChar32 scalar = 0;
        U8_NEXT(bytes, at, length, scalar);
        if (scalar < 0) {
            return false;
        }
    }
    return true;
}

void requireText(std::string_view text, const char* what) {
    requireNoNul(text, what);
    if (!isUTF8(text)) {
        throw PropertyListError(std::string("a property-list ") + what + " must be UTF-8 text");
    }
}

// Each ill-formed sequence becomes U+FFFD, as text decoders do, so a stray
// byte in someone else's value costs that character, not the whole file.
std::string asUTF8(std::string text) {
    if (isUTF8(text)) {
        return text;
    }
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto length = static_cast<std::int32_t>(text.size());
    std::string repaired;
    repaired.reserve(text.size() + 8);
    for (std::int32_t at = 0; at < length;) {
        const std::int32_t start = at;
        UChar32 scalar = 0;
        U8_NEXT(bytes, at, length, scalar);
        if (scalar < 0) {
            repaired += "\xEF\xBF\xBD";
        } else {
            repaired.append(text, static_cast<std::size_t>(start), static_cast<std::size_t>(at - start));
        }
    }
    return repaired;
}

// Dates go through a one-object binary property list of our own making, in both
// directions. libplist keeps a date as the file's 64-bit real, but its date
// calls pass whole seconds and microseconds as 32-bit numbers: dates after
// January 2069 or before December 1932 come back as December 1932, a
// microsecond is lost in rounding, and an instant in the last second before
// 2001 loses its sign.
constexpr std::uint8_t kDateMarker = 0x33;
constexpr std::size_t kTrailerSize = 32;

std::uint64_t readBigEndian(const std::uint8_t* at, std::size_t size) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < size; ++i) {
        value = (value << 8) | at[i];
    }
    return value;
}

PlistNode makeDateNode(double seconds) {
    // "bplist00", the date object, a one-entry offset table, the trailer.
    std::array<std::uint8_t, 8 + 9 + 1 + kTrailerSize> file{};
    std::memcpy(file.data(), "bplist00", 8);
    file[8] = kDateMarker;
    const auto bits = std::bit_cast<std::uint64_t>(seconds);
    for (std::size_t i = 0; i < 8; ++i) {
        file[9 + i] = static_cast<std::uint8_t>(bits >> (56 - 8 * i));
    }
    file[17] = 8;  // the date's offset
    std::uint8_t* trailer = file.data() + 18;
    trailer[6] = 1;    // offset size
    trailer[7] = 1;    // reference size
    trailer[15] = 1;   // one object; the top object is object 0
    trailer[31] = 17;  // where the offset table starts
    plist_t node = nullptr;
    plist_from_bin(reinterpret_cast<const char*>(file.data()), static_cast<std::uint32_t>(file.size()), &node);
    if (node == nullptr || plist_get_node_type(node) != PLIST_DATE) {
        if (node != nullptr) {
            plist_free(node);
        }
        throw PropertyListError("libplist could not hold the date " + std::to_string(seconds));
    }
    return PlistNode(node);
}

double readDate(plist_t node) {
    char* raw = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(node, &raw, &length);
    MallocString buffer(raw);
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(buffer.get());
    if (bytes == nullptr || length < 8 + 9 + kTrailerSize) {
        throw PropertyListError("libplist could not hand back a date");
    }
    const std::uint8_t* trailer = bytes + length - kTrailerSize;
    const std::size_t offsetSize = trailer[6];
    const std::uint64_t top = readBigEndian(trailer + 16, 8);
    const std::uint64_t table = readBigEndian(trailer + 24, 8);
    const std::uint64_t tableEnd = length - kTrailerSize;
    if (offsetSize < 1 || offsetSize > 8 || table > tableEnd || top >= (tableEnd - table) / offsetSize) {
        throw PropertyListError("libplist could not hand back a date");
    }
    const std::uint64_t at = readBigEndian(bytes + table + top * offsetSize, offsetSize);
    if (at >= tableEnd || tableEnd - at < 9 || bytes[at] != kDateMarker) {
        throw PropertyListError("libplist could not hand back a date");
    }
    return std::bit_cast<double>(readBigEndian(bytes + at + 1, 8));
}

// The XML form spells a date as a whole-second UTC time with a four-digit year.
constexpr double kFirstXMLDate = -63113904000.0;  // 0001-01-01T00:00:00Z
constexpr double kLastXMLDate = 252423993599.0;   // 9999-12-31T23:59:59Z

PlistNode toNode(const PropertyListValue& value, PropertyList::Format format, int depth) {
    if (depth > kMaxDepth) {
        throw PropertyListError("property list nests too deeply to be written");
    }
    using Type = PropertyListValue::Type;
    switch (value.type()) {
        case Type::data: {
            const auto& bytes = *value.dataValue();
            static const char empty = 0;
            const char* start = bytes.empty() ? &empty : reinterpret_cast<const char*>(bytes.data());
            return PlistNode(plist_new_data(start, bytes.size()));
        }
        case Type::boolean:
            return PlistNode(plist_new_bool(*value.booleanValue() ? 1 : 0));
        case Type::integer:
            // Stored as the unsigned bit pattern; the binary writer emits negative
            // numbers as 8-byte signed integers and the XML writer as signed text.
            return PlistNode(plist_new_uint(static_cast<std::uint64_t>(*value.integerValue())));
        case Type::real:
            return PlistNode(plist_new_real(*value.realValue()));
        case Type::string: {
            const auto& text = *value.stringValue();
            requireText(text, "string");
            return PlistNode(plist_new_string(text.c_str()));
        }
        case Type::date: {
            const double seconds = value.dateValue()->timeIntervalSinceReferenceDate;
            if (format == PropertyList::Format::xml && !(seconds >= kFirstXMLDate && seconds <= kLastXMLDate)) {
                throw PropertyListError("date outside the years 1 to 9999 an XML property list can spell: " +
                                        std::to_string(seconds));
            }
            return makeDateNode(seconds);
        }
        case Type::array: {
            PlistNode array(plist_new_array());
            for (const auto& item : *value.arrayValue()) {
                PlistNode child = toNode(item, format, depth + 1);
                plist_array_append_item(array.get(), child.release());
            }
            return array;
        }
        case Type::dictionary: {
            PlistNode dict(plist_new_dict());
            for (const auto& [key, item] : *value.dictionaryValue()) {
                requireText(key, "key");
                PlistNode child = toNode(item, format, depth + 1);
                plist_dict_set_item(dict.get(), key.c_str(), child.release());
            }
            return dict;
        }
    }
    throw PropertyListError("unknown property-list value kind");
}

PropertyListValue fromNode(plist_t node, int depth) {
    if (depth > kMaxDepth) {
        throw PropertyListError("property list nests too deeply");
    }
    switch (plist_get_node_type(node)) {
        case PLIST_BOOLEAN: {
            std::uint8_t flag = 0;
            plist_get_bool_val(node, &flag);
            return PropertyListValue(flag != 0);
        }
        case PLIST_UINT:
        case PLIST_UID: {
            std::uint64_t number = 0;
            if (plist_get_node_type(node) == PLIST_UID) {
                plist_get_uid_val(node, &number);
            } else {
                plist_get_uint_val(node, &number);
            }
            return PropertyListValue(static_cast<std::int64_t>(number));
        }
        case PLIST_REAL: {
            double number = 0;
            plist_get_real_val(node, &number);
            return PropertyListValue(number);
        }
        case PLIST_STRING:
        case PLIST_KEY: {
            if (plist_get_node_type(node) == PLIST_STRING) {
                std::uint64_t length = 0;
                const char* text = plist_get_string_ptr(node, &length);
                return PropertyListValue(text == nullptr ? std::string() : asUTF8(std::string(text, length)));
            }
            char* raw = nullptr;
            plist_get_key_val(node, &raw);
            MallocString text(raw);
            return PropertyListValue(asUTF8(std::string(text ? text.get() : "")));
        }
        case PLIST_DATE:
            return PropertyListValue(Date{readDate(node)});
        case PLIST_DATA: {
            std::uint64_t length = 0;
            const auto* start = reinterpret_cast<const std::uint8_t*>(plist_get_data_ptr(node, &length));
            return PropertyListValue(start == nullptr ? PropertyListValue::Data{}
                                                      : PropertyListValue::Data(start, start + length));
        }
        case PLIST_ARRAY: {
            PropertyListValue::Array items;
            items.reserve(plist_array_get_size(node));
            forEachArrayItem(node, [&](plist_t item) { items.push_back(fromNode(item, depth + 1)); });
            return PropertyListValue(std::move(items));
        }
        case PLIST_DICT: {
            PropertyListValue::Dictionary entries;
            forEachDictItem(node, [&](std::string key, plist_t item) {
                // Two keys that differ only in malformed bytes become one; the later wins.
                entries.insert_or_assign(asUTF8(std::move(key)), fromNode(item, depth + 1));
            });
            return PropertyListValue(std::move(entries));
        }
        case PLIST_NONE:
            break;
    }
    throw PropertyListError("property list holds a value of unknown kind");
}

// libplist keeps strings as C strings and stops the process (an assertion) when
// one it parsed holds a NUL character. Such files are refused before parsing.
bool binaryStringsHoldNul(std::span<const std::uint8_t> bytes) {
    if (bytes.size() < 8 + kTrailerSize) {
        return false;  // too short to parse at all; libplist says so
    }
    const std::uint8_t* trailer = bytes.data() + bytes.size() - kTrailerSize;
    const std::size_t offsetSize = trailer[6];
    const std::uint64_t objectCount = readBigEndian(trailer + 8, 8);
    const std::uint64_t tableStart = readBigEndian(trailer + 24, 8);
    const std::size_t end = bytes.size() - kTrailerSize;
    if (offsetSize < 1 || offsetSize > 8 || tableStart > end || objectCount > (end - tableStart) / offsetSize) {
        return false;  // malformed: left to libplist to refuse
    }
    for (std::uint64_t object = 0; object < objectCount; ++object) {
        const std::uint64_t at = readBigEndian(bytes.data() + tableStart + object * offsetSize, offsetSize);
        if (at >= end) {
            continue;
        }
        const std::uint8_t marker = bytes[at];
        const int kind = marker >> 4;
        if (kind != 0x5 && kind != 0x6) {
            continue;  // only ASCII (5) and UTF-16 (6) strings
        }
        std::uint64_t length = marker & 0x0f;
        std::uint64_t start = at + 1;
        if (length == 0x0f) {
            if (start >= end || (bytes[start] >> 4) != 0x1) {
                continue;
            }
            const std::size_t lengthSize = std::size_t{1} << (bytes[start] & 0x0f);
            if (lengthSize > 8 || start + 1 + lengthSize > end) {
                continue;
            }
            length = readBigEndian(bytes.data() + start + 1, lengthSize);
            start += 1 + lengthSize;
        }
        const std::uint64_t unit = kind == 0x5 ? 1 : 2;
        if (length > (end - start) / unit) {
            continue;
        }
        for (std::uint64_t i = 0; i < length; ++i) {
            const std::uint8_t* character = bytes.data() + start + i * unit;
            if (character[0] == 0 && (unit == 1 || character[1] == 0)) {
                return true;
            }
        }
    }
    return false;
}

bool xmlTextHoldsNul(std::span<const std::uint8_t> bytes) {
    if (std::find(bytes.begin(), bytes.end(), std::uint8_t{0}) != bytes.end()) {
        return true;
    }
    // Character references to U+0000: &#0; &#000; &#x0; &#X00;
    for (std::size_t at = 0; at + 3 < bytes.size(); ++at) {
        if (bytes[at] != '&' || bytes[at + 1] != '#') {
            continue;
        }
        std::size_t next = at + 2;
        if (next < bytes.size() && (bytes[next] == 'x' || bytes[next] == 'X')) {
            ++next;
        }
        const std::size_t digits = next;
        while (next < bytes.size() && bytes[next] == '0') {
            ++next;
        }
        if (next > digits && next < bytes.size() && bytes[next] == ';') {
            return true;
        }
    }
    return false;
}

}  // namespace

namespace PropertyList {

std::vector<std::uint8_t> encode(const PropertyListValue& value, Format format) {
    PlistNode root = toNode(value, format, 0);
    char* raw = nullptr;
    std::uint32_t length = 0;
    if (format == Format::binary) {
        plist_to_bin(root.get(), &raw, &length);
    } else {
        plist_to_xml(root.get(), &raw, &length);
    }
    MallocString buffer(raw);
    if (!buffer) {
        throw PropertyListError("libplist could not serialise the property list");
    }
    const auto* start = reinterpret_cast<const std::uint8_t*>(buffer.get());
    return std::vector<std::uint8_t>(start, start + length);
}

PropertyListValue decode(std::span<const std::uint8_t> bytes) {
    if (bytes.empty()) {
        throw PropertyListError("empty input is not a property list");
    }
    if (bytes.size() > std::numeric_limits<std::uint32_t>::max()) {
        throw PropertyListError("property list too large");
    }
    const char* start = reinterpret_cast<const char*>(bytes.data());
    const bool binary = plist_is_binary(start, static_cast<std::uint32_t>(bytes.size())) != 0;
    if (binary ? binaryStringsHoldNul(bytes) : xmlTextHoldsNul(bytes)) {
        throw PropertyListError("property list holds a string with a NUL character");
    }
    plist_t raw = nullptr;
    plist_from_memory(reinterpret_cast<const char*>(bytes.data()), static_cast<std::uint32_t>(bytes.size()),
                      &raw);
    PlistNode root(raw);
    if (!root) {
        throw PropertyListError("not a binary or XML property list");
    }
    return fromNode(root.get(), 0);
}

}  // namespace PropertyList

}  // namespace qrv::platform
