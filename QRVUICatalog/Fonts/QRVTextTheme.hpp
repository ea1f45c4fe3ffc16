#pragma once
// Applies a theme's font and colour to a text. Built from a label theme (with
// an optional colour that replaces the theme's own) or from a free-form text
// theme.
#include <optional>

#include "Platform/drawing/Color.hpp"
#include "Platform/drawing/Font.hpp"
#include "Platform/drawing/View.hpp"
#include "QRVUICatalog/Fonts/QRVLabelTheme.hpp"
#include "QRVUICatalog/Fonts/TextTheme.hpp"

namespace qrv::catalog {

// What a themed text is drawn with.
struct TextStyle {
    platform::Font font;
    platform::Color color;
    double lineHeight = 0;
    friend bool operator==(const TextStyle&, const TextStyle&) = default;
};

class QRVTextTheme {
  public:
    explicit QRVTextTheme(QRVLabelTheme labelTheme,
                          std::optional<platform::Color> foregroundColor = std::nullopt);
    explicit QRVTextTheme(const TextTheme& textTheme);

    const platform::Font& font() const { return style_.font; }
    const platform::Color& themeColor() const { return style_.color; }
    const TextStyle& style() const { return style_; }

    // The content with the theme's font and foreground colour.
    [[nodiscard]] platform::View apply(const platform::View& content) const;

  private:
    TextStyle style_;
};

// A text (or any content) in a type style: the style's font, grown on the
// tablet when asked.
[[nodiscard]] platform::View font(const platform::View& content, QRVFont style, bool largerForIpad);

}  // namespace qrv::catalog
