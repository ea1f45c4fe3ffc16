#include "Platform/coding/JSONWriter.hpp"

#include <cmath>

#include "Platform/coding/FloatDescription.hpp"

namespace qrv::platform {

void JSONWriter::beforeValue() {
    if (levels_.empty()) {
        if (!out_.empty()) throw std::logic_error("JSONWriter: a document holds one top-level value");
        return;
    }
    auto& level = levels_.back();
    if (level.object) {
        if (!keyPending_) throw std::logic_error("JSONWriter: a value inside an object needs a key first");
        keyPending_ = false;
        return;
    }
    if (!level.empty) out_ += ',';
    level.empty = false;
}

JSONWriter& JSONWriter::key(std::string_view name) {
    if (levels_.empty() || !levels_.back().object || keyPending_)
        throw std::logic_error("JSONWriter: a key belongs inside an object, before its value");
    auto& level = levels_.back();
    if (!level.empty) out_ += ',';
    level.empty = false;
    appendQuoted(out_, name);
    out_ += ':';
    keyPending_ = true;
    return *this;
}

JSONWriter& JSONWriter::beginObject() {
    beforeValue();
    out_ += '{';
    levels_.push_back(Level{true, true});
    return *this;
}

JSONWriter& JSONWriter::endObject() {
    if (levels_.empty() || !levels_.back().object || keyPending_)
        throw std::logic_error("JSONWriter: no object to close");
    levels_.pop_back();
    out_ += '}';
    return *this;
}

JSONWriter& JSONWriter::beginArray() {
    beforeValue();
    out_ += '[';
    levels_.push_back(Level{false, true});
    return *this;
}

JSONWriter& JSONWriter::endArray() {
    if (levels_.empty() || levels_.back().object) throw std::logic_error("JSONWriter: no array to close");
    levels_.pop_back();
    out_ += ']';
    return *this;
}

JSONWriter& JSONWriter::string(std::string_view text) {
    beforeValue();
    appendQuoted(out_, text);
    return *this;
}

JSONWriter& JSONWriter::boolean(bool value) {
    beforeValue();
    out_ += value ? "true" : "false";
    return *this;
}

JSONWriter& JSONWriter::integer(std::int64_t value) {
    beforeValue();
    out_ += std::to_string(value);
    return *this;
}

JSONWriter& JSONWriter::number(double value) {
    if (!std::isfinite(value))
        throw EncodingError("Unable to encode Double." + std::string(std::isnan(value) ? "nan" : "infinity") +
                            " directly in JSON.");
    beforeValue();
    out_ += jsonNumberText(value);
    return *this;
}

JSONWriter& JSONWriter::number(float value) {
    if (!std::isfinite(value))
        throw EncodingError("Unable to encode Float." + std::string(std::isnan(value) ? "nan" : "infinity") +
                            " directly in JSON.");
    beforeValue();
    out_ += jsonNumberText(value);
    return *this;
}

JSONWriter& JSONWriter::date(Date value) { return number(value.timeIntervalSinceReferenceDate); }

JSONWriter& JSONWriter::null() {
    beforeValue();
    out_ += "null";
    return *this;
}

void JSONWriter::appendQuoted(std::string& out, std::string_view text) {
    static constexpr char kHex[] = "0123456789abcdef";
    out += '"';
    for (char ch : text) {
        auto c = static_cast<unsigned char>(ch);
        switch (c) {
            case '"': out += "\\\""; break;
            case '\\': out += "\\\\"; break;
            case '/': out += "\\/"; break;
            case '\b': out += "\\b"; break;
            case '\f': out += "\\f"; break;
            case '\n': out += "\\n"; break;
            case '\r': out += "\\r"; break;
            case '\t': out += "\\t"; break;
            default:
                if (c < 0x20) {
                    out += "\\u00";
                    out += kHex[c >> 4];
                    out += kHex[c & 0xF];
                } else {
                    out += ch;
                }
        }
    }
    out += '"';
}

}  // namespace qrv::platform
