#include "Widget/Calories/WidgetStatView.hpp"

#include <array>

#include "QRVUICatalog/Colors/QRVColor.hpp"
#include "QRVUICatalog/Fonts/QRVFont.hpp"

namespace qrv::widget {

using namespace qrv::platform;

namespace {

// Whitespace beyond ASCII that localized titles may hold (no-break spaces
// between words are common in French and Russian texts), as UTF-8.
constexpr std::array<std::string_view, 17> kUnicodeSpaces{
    "\u0085", "\u00A0", "\u1680", "\u2000", "\u2001", "\u2002", "\u2003", "\u2004", "\u2005",
    "\u2006", "\u2007", "\u2008", "\u2009", "\u200A", "\u2028", "\u2029", "\u202F"};
constexpr std::array<std::string_view, 2> kMoreUnicodeSpaces{"\u205F", "\u3000"};

bool isAsciiSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

// The byte length of a whitespace character starting at `text`, or 0.
std::size_t whitespaceLength(std::string_view text) {
    if (isAsciiSpace(text.front())) return 1;
    for (auto space : kUnicodeSpaces)
        if (text.starts_with(space)) return space.size();
    for (auto space : kMoreUnicodeSpaces)
        if (text.starts_with(space)) return space.size();
    return 0;
}

}  // namespace

std::string WidgetStatView::valueAccessibilityIdentifier(std::string_view title) {
    std::string compact;
    while (!title.empty()) {
        if (std::size_t skip = whitespaceLength(title)) {
            title.remove_prefix(skip);
            continue;
        }
        compact += title.front();
        title.remove_prefix(1);
    }
    return "EnergyStatsView_" + compact + "_value";
}

View WidgetStatView::body() const {
    std::vector<View> row;
    row.push_back(
        Image(icon).resizable().tinted(catalog::QRVColor::neutralsSecondary()).frame(kIconSize, kIconSize));
    if (displaysTitle)
        row.push_back(Text(title)
                          .font(catalog::font(catalog::QRVFont::body14Regular, false))
                          .foregroundColor(catalog::QRVColor::neutralsSecondary())
                          .lineLimit(1)
                          .minimumScaleFactor(0.8));
    row.push_back(Spacer(kSpacing));
    // The figure is what the row is for: it keeps its full size and one line,
    // and only shrinks when even the title has given way.
    row.push_back(Text(value)
                      .font(catalog::font(catalog::QRVFont::body14Bold, false))
                      .foregroundColor(catalog::QRVColor::neutralsPrimary())
                      .lineLimit(1)
                      .minimumScaleFactor(0.6)
                      .accessibilityIdentifier(valueAccessibilityIdentifier(title)));
    return HStack(std::move(row), VerticalAlignment::center, kSpacing);
}

}  // namespace qrv::widget
