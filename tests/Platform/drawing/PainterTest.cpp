// Pixel smoke tests on tiny surfaces, PNG and SVG output, and the Pango
// measurer. Shapes only, except the text smoke test.
#include "Platform/drawing/CairoPainter.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include <unistd.h>

namespace qrv::platform {
namespace {

const Color kRed = Color::fixed({1, 0, 0, 1}, "red");
const Color kRedOrBlue{{1, 0, 0, 1}, {0, 0, 1, 1}, "redOrBlue"};

std::filesystem::path iconDirectory() {
    static const std::filesystem::path dir = [] {
        auto d = std::filesystem::temp_directory_path() / ("qrv-drawing-icons-" + std::to_string(::getpid()));
        std::filesystem::create_directories(d);
        std::ofstream(d / "Square.svg") << R"(<svg xmlns="http://www.w3.org/2000/svg" width="10" height="10">)"
                                        << R"(<rect width="10" height="10" fill="black"/></svg>)";
        std::ofstream(d / "Broken.svg") << "<svg this is not";
        return d;
    }();
    return dir;
}

const Painter& painter() {
    static const Painter p(iconDirectory());
    return p;
}

Raster draw(const View& view, Size size, double scale = 1, ColorScheme scheme = ColorScheme::light) {
    RenderOptions options;
    options.size = size;
    options.colorScheme = scheme;
    auto raster = painter().rasterize(painter().record(view, options), scale, scheme);
    EXPECT_TRUE(raster.ok()) << raster.error();
    return raster.ok() ? raster.value() : Raster{};
}

// Pixels whose premultiplied channels differ by more than `tolerance` (of 255).
int differingPixels(const Raster& a, const Raster& b, int tolerance) {
    if (a.width != b.width || a.height != b.height) return -1;
    int count = 0;
    for (std::size_t i = 0; i < a.rgba.size(); i += 4) {
        for (std::size_t c = 0; c < 4; ++c) {
            int pa = c == 3 ? a.rgba[i + 3] : a.rgba[i + c] * a.rgba[i + 3] / 255;
            int pb = c == 3 ? b.rgba[i + 3] : b.rgba[i + c] * b.rgba[i + 3] / 255;
            if (std::abs(pa - pb) > tolerance) {
                ++count;
                break;
            }
        }
    }
    return count;
}

int paintedPixels(const Raster& r) {
    int n = 0;
    for (std::size_t i = 3; i < r.rgba.size(); i += 4) n += r.rgba[i] > 0;
    return n;
}

TEST(Painter, ReferencePairsPaintTheSamePixels) {
    const StrokeStyle flat{.lineWidth = 6};
    const StrokeStyle round{.lineWidth = 8, .lineCap = LineCap::round};
    struct Pair {
        const char* name;
        View test, reference;
        int tolerance;  // clipping and stroking anti-alias edges a little differently
    };
    const Pair pairs[] = {
        {"a full-trim arc turned to twelve o'clock is the plain circle",
         Circle().trim(0, 1).rotation(Angle::degrees(-90)).stroke(kRed, flat).frame(40, 40),
         Circle().stroke(kRed, flat).frame(40, 40), 2},
        // The masked rectangle covers the whole widget: the stroke reaches
        // beyond the circle's frame and a mask never shows more than its content.
        {"a stroke-outline clip paints what the stroke paints",
         Rectangle().fill(kRed).mask(Circle().trim(0.1, 0.35).stroke(Color::black(), round).frame(40, 40)),
         Circle().trim(0.1, 0.35).stroke(kRed, round).frame(40, 40), 16},
        {"the clip follows a mirror and a rotation inside the mask",
         Rectangle().fill(kRed).mask(Circle()
                                         .trim(0, 0.3)
                                         .stroke(Color::black(), round)
                                         .scaleEffect(1, -1)
                                         .rotationEffect(Angle::degrees(-90))
                                         .frame(40, 40)),
         Circle().trim(0, 0.3).stroke(kRed, round).scaleEffect(1, -1).rotationEffect(Angle::degrees(-90)).frame(40, 40),
         48},
        {"a mirrored trim is the same arc drawn counter-clockwise",
         Circle().trim(0, 0.25).stroke(kRed, flat).scaleEffect(-1, 1).frame(40, 40),
         PathShape([](const Rect& r) {
             return Path().addArc(r.center(), r.width() / 2, Angle::degrees(180), Angle::degrees(90), false);
         }).stroke(kRed, flat).frame(40, 40),
         2},
    };
    for (const auto& p : pairs) {
        SCOPED_TRACE(p.name);
        Raster a = draw(p.test, {50, 50}, 2);
        Raster b = draw(p.reference, {50, 50}, 2);
        EXPECT_GT(paintedPixels(b), 100);
        EXPECT_EQ(differingPixels(a, b, p.tolerance), 0);
    }
}

TEST(Painter, ColoursGroupsAndMasksAtSampledPixels) {
    const View square = Rectangle().fill(kRedOrBlue).frame(10, 10);
    Raster light = draw(square, {10, 10});
    Raster dark = draw(square, {10, 10}, 1, ColorScheme::dark);
    EXPECT_EQ(light.pixel(5, 5), (Rgba{1, 0, 0, 1}));
    EXPECT_EQ(dark.pixel(5, 5), (Rgba{0, 0, 1, 1}));

    Raster faded = draw(square.opacity(0.5), {10, 10});
    EXPECT_NEAR(faded.pixel(5, 5).alpha, 0.5, 0.01);
    Raster masked = draw(Rectangle().fill(kRed).mask(Circle().fill(Color::black().opacity(0.5))).frame(10, 10), {10, 10});
    EXPECT_NEAR(masked.pixel(5, 5).alpha, 0.5, 0.01);
    EXPECT_EQ(masked.pixel(0, 0).alpha, 0);  // outside the circle

    // A half trim of a circle turned to twelve o'clock covers the right half only.
    Raster half = draw(Circle().trim(0, 0.5).rotation(Angle::degrees(-90)).stroke(kRed, 4).frame(20, 20), {20, 20});
    EXPECT_EQ(half.pixel(19, 10).alpha, 1);
    EXPECT_EQ(half.pixel(0, 10).alpha, 0);
}

TEST(Painter, PNGAtThreeTimesDecodesToTheRasterAndSVGIsInPoints) {
    const View view = HStack({Rectangle().fill(kRed), Circle().fill(kRedOrBlue)}, VerticalAlignment::center, 0);
    auto png = renderPNG(view, {20, 10}, 3, ColorScheme::dark);
    ASSERT_TRUE(png.ok()) << png.error();
    auto decoded = decodePNG(png.value());
    ASSERT_TRUE(decoded.ok()) << decoded.error();
    EXPECT_EQ(decoded.value().width, 60);
    EXPECT_EQ(decoded.value().height, 30);
    EXPECT_EQ(decoded.value(), draw(view, {20, 10}, 3, ColorScheme::dark));

    for (double bad : {0.0, 0.5, 3.5, std::nan("")}) {
        auto refused = renderPNG(view, {20, 10}, bad, ColorScheme::light);
        EXPECT_FALSE(refused.ok());
    }
    EXPECT_FALSE(renderPNG(view, {0, 10}, 1, ColorScheme::light).ok());
    EXPECT_FALSE(decodePNG({1, 2, 3}).ok());

    // The SVG is a whole document measured in points.
    auto svg = renderSVG(Circle().stroke(kRed, 2).frame(20, 20), {30, 30}, ColorScheme::light);
    ASSERT_TRUE(svg.ok()) << svg.error();
    const std::string& s = svg.value();
    EXPECT_EQ(s.rfind("<?xml", 0), 0U);
    EXPECT_NE(s.find("<svg"), std::string::npos);
    EXPECT_NE(s.find("width=\"30pt\""), std::string::npos);
    EXPECT_NE(s.find("</svg>"), std::string::npos);
}

TEST(Painter, PangoMeasuresProportionallyAndDrawsWhereItMeasured) {
    const TextMeasurer& m = painter().textMeasurer();
    TextMetrics small = m.measure("Quorvane 1,234", Font::system(17));
    TextMetrics large = m.measure("Quorvane 1,234", Font::system(34));
    ASSERT_GT(small.width, 0);
    EXPECT_NEAR(large.width / small.width, 2, 0.01);
    EXPECT_GT(small.lineHeight(), 17);
    EXPECT_LT(m.measure("i", Font::system(17)).width, m.measure("W", Font::system(17)).width);
    EXPECT_GT(m.measure("abc", Font::system(17, FontWeight::bold)).width, m.measure("abc", Font::system(17)).width);

    RenderOptions options;
    options.size = {120, 40};
    DisplayList list = painter().record(Text("Hello").font(Font::system(20)).foregroundColor(kRed), options);
    ASSERT_EQ(list.texts.size(), 1U);
    const Rect r = list.texts[0].rect;
    auto raster = painter().rasterize(list, 2, ColorScheme::light);
    ASSERT_TRUE(raster.ok());
    int inside = 0, outside = 0;
    for (int y = 0; y < raster.value().height; ++y)
        for (int x = 0; x < raster.value().width; ++x) {
            if (raster.value().pixel(x, y).alpha == 0) continue;
            Point p{(x + 0.5) / 2, (y + 0.5) / 2};
            (r.insetBy(-1, -1).contains(p) ? inside : outside) += 1;
        }
    EXPECT_GT(inside, 50);
    EXPECT_EQ(outside, 0);
}

TEST(Painter, IconsHaveNaturalSizesAreTintedAndMissingOnesAreReportedOnce) {
    EXPECT_EQ(painter().imageSizer().naturalSize("Square"), (Size{10, 10}));
    Raster tinted = draw(Image("Square").tinted(kRed), {20, 20});
    EXPECT_EQ(tinted.pixel(10, 10), (Rgba{1, 0, 0, 1}));
    EXPECT_EQ(tinted.pixel(2, 2).alpha, 0);  // a 10x10 icon centred in 20x20
    Raster plain = draw(Image("Square").resizable(), {20, 20});
    EXPECT_EQ(plain.pixel(2, 2), (Rgba{0, 0, 0, 1}));
    // Drawn by its luminance (a desaturated icon), the black square shows nothing.
    DisplayList byLuminance{{20, 20}, {op::DrawImage{"Square", {{5, 5}, {10, 10}}, kRed, true}}};
    EXPECT_EQ(painter().rasterize(byLuminance, 2, ColorScheme::light).value().pixel(20, 20).alpha, 0);

    testing::internal::CaptureStderr();
    Raster missing = draw(HStack({Image("Nowhere").resizable(), Image("Nowhere").resizable(), Image("Broken")}), {20, 20});
    std::string err = testing::internal::GetCapturedStderr();
    EXPECT_EQ(paintedPixels(missing), 0);
    EXPECT_NE(err.find("no icon \"Broken\""), std::string::npos) << err;
    const std::string report = "no icon \"Nowhere\"";
    EXPECT_NE(err.find(report), std::string::npos) << err;
    EXPECT_EQ(err.find(report), err.rfind(report)) << err;
}

}  // namespace
}  // namespace qrv::platform
