#pragma once
// A free-form text theme: any size, a step of the ten-step weight scale, any
// colour. For text that no label theme covers.
#include <optional>

#include "Platform/drawing/Color.hpp"
#include "Platform/drawing/Font.hpp"

namespace qrv::catalog {

// The raw value is the step's position (0-9), not the number in its name.
enum class TextWeight : int { _100 = 0, _200, _300, _400, _500, _600, _700, _800, _900, _950 };

std::optional<TextWeight> textWeightFromRawValue(int rawValue);

// _100 ultra-light ... _800 heavy; _900 and _950 are both black, as there is no
// heavier system weight.
platform::FontWeight platformWeight(TextWeight weight);

class TextTheme {
  public:
    static TextTheme custom(double size, TextWeight weight, platform::Color color) {
        return TextTheme(size, weight, std::move(color));
    }

    platform::Font font() const;
    const platform::Color& color() const { return color_; }
    double size() const { return size_; }
    TextWeight weight() const { return weight_; }

    friend bool operator==(const TextTheme&, const TextTheme&) = default;

  private:
    TextTheme(double size, TextWeight weight, platform::Color color)
        : size_(size), weight_(weight), color_(std::move(color)) {}

    double size_;
    TextWeight weight_;
    platform::Color color_;
};

}  // namespace qrv::catalog
