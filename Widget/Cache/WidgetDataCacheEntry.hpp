#pragma once
// What the three cached records have in common. They are plain values (copied
// into timelines, compared field by field, never shared), so the common part is
// a concept rather than a base class: no virtual calls, no slicing, and the
// records stay aggregates that can be written as {date, isLoggedIn, ...}. Code
// that must hold "any record" uses a variant of the three.
#include <concepts>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "Platform/coding/DecodingError.hpp"
#include "Platform/time/Date.hpp"

namespace qrv::widget {

template <class T>
concept WidgetDataCacheEntry =
    std::regular<T> && std::same_as<decltype(T::date), platform::Date> && std::same_as<decltype(T::isLoggedIn), bool> &&
    requires(T entry, const T constEntry, std::span<const std::uint8_t> data) {
        // The moment the figures belong to, which is also the timeline entry's date,
        // and whether the app has a signed-in user; both readable and writable.
        entry.date = platform::Date{};
        entry.isLoggedIn = false;
        { T::decode(data) } -> std::same_as<std::optional<T>>;
        { T::decodeResult(data) } -> std::same_as<platform::DecodingResult<T>>;
        { constEntry.encode() } -> std::same_as<std::string>;
        { T::sample() } -> std::same_as<const T&>;
    };

}  // namespace qrv::widget
