#pragma once
// Property-list values compared as a reader sees them, not by their encoding:
// libplist's binary writer finds equal data objects to share by their address,
// so two equal blobs may or may not become one object, and the bytes of one
// value can differ between runs. Reals and dates compare by bits, except that
// any NaN matches any NaN.
#include <bit>
#include <cmath>
#include <cstdint>

#include "Platform/store/PropertyListValue.hpp"

namespace qrv::fuzz {

inline bool sameNumber(double a, double b) {
    return (std::isnan(a) && std::isnan(b)) || std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

inline bool sameValue(const platform::PropertyListValue& a, const platform::PropertyListValue& b) {
    if (a.type() != b.type()) return false;
    if (const auto* real = a.realValue()) return sameNumber(*real, *b.realValue());
    if (const auto* date = a.dateValue())
        return sameNumber(date->timeIntervalSinceReferenceDate, b.dateValue()->timeIntervalSinceReferenceDate);
    if (const auto* array = a.arrayValue()) {
        const auto& other = *b.arrayValue();
        if (array->size() != other.size()) return false;
        for (std::size_t i = 0; i < array->size(); ++i)
            if (!sameValue((*array)[i], other[i])) return false;
        return true;
    }
    if (const auto* dictionary = a.dictionaryValue()) {
        const auto& other = *b.dictionaryValue();
        if (dictionary->size() != other.size()) return false;
        for (auto left = dictionary->begin(), right = other.begin(); left != dictionary->end(); ++left, ++right)
            if (left->first != right->first || !sameValue(left->second, right->second)) return false;
        return true;
    }
    return a == b;
}

}  // namespace qrv::fuzz
