#include "Platform/store/PropertyListValue.hpp"

namespace qrv::platform {

std::string_view PropertyListValue::typeName(Type type) {
    switch (type) {
        case Type::data: return "data";
        case Type::boolean: return "boolean";
        case Type::integer: return "integer";
        case Type::real: return "real";
        case Type::string: return "string";
        case Type::date: return "date";
        case Type::array: return "array";
        case Type::dictionary: return "dictionary";
    }
    return "unknown";
}

}  // namespace qrv::platform
