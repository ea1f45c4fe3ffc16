#pragma once
// A TextMeasurer with no fonts behind it: every character (code point) is
// 0.6 × the font size wide; a line is 1.2 × the size high (ascent 1.0,
// descent 0.2). Layout with it is exact and the same on every machine, which
// is what layout and display-list tests want.
#include "Platform/drawing/Layout.hpp"

namespace qrv::platform {

class FixedAdvanceTextMeasurer final : public TextMeasurer {
public:
    static constexpr double kAdvance = 0.6;
    static constexpr double kAscent = 1.0;
    static constexpr double kDescent = 0.2;

    TextMetrics measure(std::string_view text, const Font& font) const override {
        double count = 0;
        for (char c : text)
            if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) count += 1;
        return {count * kAdvance * font.size, kAscent * font.size, kDescent * font.size};
    }
};

// Every icon the same natural size, for tests.
class FixedImageSizer final : public ImageSizer {
public:
    explicit FixedImageSizer(Size every) : size_(every) {}
    std::optional<Size> naturalSize(std::string_view) const override { return size_; }

private:
    Size size_;
};

}  // namespace qrv::platform
