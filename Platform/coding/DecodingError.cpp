#include "Platform/coding/DecodingError.hpp"

namespace qrv::platform {

std::string_view name(DecodingErrorKind kind) {
    switch (kind) {
        case DecodingErrorKind::dataCorrupted: return "dataCorrupted";
        case DecodingErrorKind::keyNotFound: return "keyNotFound";
        case DecodingErrorKind::typeMismatch: return "typeMismatch";
        case DecodingErrorKind::valueNotFound: return "valueNotFound";
    }
    return "unknown";
}

std::string DecodingError::pathText() const {
    if (codingPath.empty()) return "(top level)";
    std::string text;
    for (const auto& key : codingPath) {
        if (key.intValue) {
            text += '[' + std::to_string(*key.intValue) + ']';
        } else {
            if (!text.empty()) text += '.';
            text += key.stringValue;
        }
    }
    return text;
}

std::string DecodingError::describe() const {
    std::string text = std::string(name(kind)) + " at " + pathText() + ": " + debugDescription;
    if (!underlyingError.empty()) text += " (" + underlyingError + ")";
    return text;
}

DecodingFailure::DecodingFailure(DecodingError error) : std::runtime_error(error.describe()), error_(std::move(error)) {}

}  // namespace qrv::platform
