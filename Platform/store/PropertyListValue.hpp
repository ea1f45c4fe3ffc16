#pragma once
// One property-list value: the kinds of value the shared store can hold
// (data, boolean, integer, real, string, date, array, dictionary).
// A plain value type: copies are deep, equality compares kind and content.
#include <compare>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

#include "Platform/time/Date.hpp"

namespace qrv::platform {

class PropertyListValue {
public:
    using Data = std::vector<std::uint8_t>;
    using Array = std::vector<PropertyListValue>;
    using Dictionary = std::map<std::string, PropertyListValue, std::less<>>;

    enum class Type { data, boolean, integer, real, string, date, array, dictionary };

    // The alternatives are listed in the order of Type.
    using Storage = std::variant<Data, bool, std::int64_t, double, std::string, Date, Array, Dictionary>;

    PropertyListValue(Data value) : storage_(std::move(value)) {}
    PropertyListValue(bool value) : storage_(value) {}
    template <class Integer>
        requires(std::is_integral_v<Integer> && !std::is_same_v<Integer, bool> && !std::is_same_v<Integer, char>)
    PropertyListValue(Integer value) : storage_(static_cast<std::int64_t>(value)) {}
    PropertyListValue(double value) : storage_(value) {}
    PropertyListValue(std::string value) : storage_(std::move(value)) {}
    PropertyListValue(std::string_view value) : storage_(std::string(value)) {}
    PropertyListValue(const char* value) : storage_(std::string(value)) {}
    PropertyListValue(Date value) : storage_(value) {}
    PropertyListValue(Array value) : storage_(std::move(value)) {}
    PropertyListValue(Dictionary value) : storage_(std::move(value)) {}

    Type type() const { return static_cast<Type>(storage_.index()); }
    // Name of the kind for messages: "data", "boolean", "integer", "real", "string",
    // "date", "array", "dictionary".
    std::string_view typeName() const { return typeName(type()); }
    static std::string_view typeName(Type type);

    // The value when it is of kind T, else null. T is one of the Storage alternatives.
    template <class T>
    const T* get() const {
        return std::get_if<T>(&storage_);
    }
    template <class T>
    T* get() {
        return std::get_if<T>(&storage_);
    }

    const Data* dataValue() const { return get<Data>(); }
    const bool* booleanValue() const { return get<bool>(); }
    const std::int64_t* integerValue() const { return get<std::int64_t>(); }
    const double* realValue() const { return get<double>(); }
    const std::string* stringValue() const { return get<std::string>(); }
    const Date* dateValue() const { return get<Date>(); }
    const Array* arrayValue() const { return get<Array>(); }
    const Dictionary* dictionaryValue() const { return get<Dictionary>(); }
    Array* arrayValue() { return get<Array>(); }
    Dictionary* dictionaryValue() { return get<Dictionary>(); }

    const Storage& storage() const { return storage_; }

    friend bool operator==(const PropertyListValue&, const PropertyListValue&) = default;

private:
    Storage storage_;
};

}  // namespace qrv::platform
