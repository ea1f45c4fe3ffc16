#pragma once
// The drawing layer: how a widget's picture is described, laid out and painted.
//
//   View tree  ──layout()──▶  LayoutTree  ──record()──▶  DisplayList  ──Painter──▶  PNG / SVG
//   (this file)               (Layout.hpp)               (DisplayList.hpp,           (CairoPainter.hpp)
//                                                          Recorder.hpp)
//
// 1. Views are immutable values written declaratively, the way the phone's UI
//    toolkit reads:  VStack({Text("Water").font(f), Spacer()}, HorizontalAlignment::leading, 4)
//                        .padding(8).background(color)
//    Every modifier returns a new View wrapping the old one; nothing is shared
//    mutably, so views can be built anywhere and copied freely.
// 2. Layout follows the proposal model: a parent proposes a size, the child
//    answers with the size it wants, the parent places it. Stacks share space
//    by flexibility (least flexible children first; spacers and frames with an
//    infinite maximum take what is left). Text is measured through the
//    TextMeasurer interface and shrinks down to its minimum scale factor before
//    it truncates with "…". The environment (colour scheme, widget family,
//    font, foreground colour, ...) flows down the tree.
// 3. Recording turns the laid-out tree into a DisplayList: draw ops as values
//    in absolute coordinates, plus hit regions (links, intent buttons, the
//    widget URL), every text drawn and every accessibility identifier with
//    their rectangles. A printer writes it as stable text for golden tests.
// 4. The Painter (the only code that talks to Cairo, Pango and librsvg) plays
//    a display list onto a PNG or SVG surface, resolving colours with the
//    colour scheme. Its Pango text measurer is the one layout uses, so the
//    measured and the painted text agree.
//
// Errors: building views, layout and recording never fail (bad geometry is
// clamped); only the painter's file and library work returns RenderResult.
//
// Units are points; y grows downwards; angles follow Geometry.hpp.
#include "Platform/drawing/Color.hpp"
#include "Platform/drawing/Font.hpp"
#include "Platform/drawing/Geometry.hpp"
#include "Platform/drawing/Path.hpp"
#include "Platform/timeline/WidgetFamily.hpp"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qrv::platform {

struct ViewNode;
class Shape;

// ---------------------------------------------------------------------------
// Small vocabulary
// ---------------------------------------------------------------------------

enum class HorizontalAlignment { leading, center, trailing };

// Which way the writing runs. Right to left mirrors placement (see
// Environment::layoutDirection); what a view draws inside its frame is kept.
enum class LayoutDirection { leftToRight, rightToLeft };
enum class VerticalAlignment { top, center, bottom };

struct Alignment {
    HorizontalAlignment horizontal = HorizontalAlignment::center;
    VerticalAlignment vertical = VerticalAlignment::center;

    static const Alignment center, leading, trailing, top, bottom, topLeading, topTrailing, bottomLeading,
        bottomTrailing;
    friend bool operator==(const Alignment&, const Alignment&) = default;
};
inline constexpr Alignment Alignment::center{};
inline constexpr Alignment Alignment::leading{HorizontalAlignment::leading, VerticalAlignment::center};
inline constexpr Alignment Alignment::trailing{HorizontalAlignment::trailing, VerticalAlignment::center};
inline constexpr Alignment Alignment::top{HorizontalAlignment::center, VerticalAlignment::top};
inline constexpr Alignment Alignment::bottom{HorizontalAlignment::center, VerticalAlignment::bottom};
inline constexpr Alignment Alignment::topLeading{HorizontalAlignment::leading, VerticalAlignment::top};
inline constexpr Alignment Alignment::topTrailing{HorizontalAlignment::trailing, VerticalAlignment::top};
inline constexpr Alignment Alignment::bottomLeading{HorizontalAlignment::leading, VerticalAlignment::bottom};
inline constexpr Alignment Alignment::bottomTrailing{HorizontalAlignment::trailing, VerticalAlignment::bottom};

// A set of rectangle edges.
class Edges {
public:
    static constexpr Edges none() { return Edges(0); }
    static constexpr Edges top() { return Edges(1); }
    static constexpr Edges leading() { return Edges(2); }
    static constexpr Edges bottom() { return Edges(4); }
    static constexpr Edges trailing() { return Edges(8); }
    static constexpr Edges horizontal() { return Edges(2 | 8); }
    static constexpr Edges vertical() { return Edges(1 | 4); }
    static constexpr Edges all() { return Edges(15); }

    constexpr bool contains(Edges e) const { return (bits_ & e.bits_) == e.bits_; }
    friend constexpr Edges operator|(Edges a, Edges b) { return Edges(a.bits_ | b.bits_); }
    friend bool operator==(const Edges&, const Edges&) = default;

private:
    constexpr explicit Edges(std::uint8_t bits) : bits_(bits) {}
    std::uint8_t bits_;
};

// frame(width:height:alignment:): a fixed size in either dimension (an unset
// dimension takes the child's).
struct FixedFrame {
    std::optional<double> width{}, height{};
    Alignment alignment = Alignment::center;
};

// frame(minWidth:idealWidth:maxWidth:...): bounds on what the child gets and
// answers. `infinity` as a maximum makes the frame take all it is offered.
struct FlexibleFrame {
    std::optional<double> minWidth{}, idealWidth{}, maxWidth{};
    std::optional<double> minHeight{}, idealHeight{}, maxHeight{};
    Alignment alignment = Alignment::center;
};

enum class ButtonStyle { plain, bordered, borderedProminent };
enum class ImageRenderingMode { original, template_ };

// How the platform draws the widget where it is shown: as designed (the home
// screen), in two flat colours (the tinted home screen: an accent group and a
// default group) or as a monochrome version over a blurred material (the lock
// screen, StandBy in low light).
enum class WidgetRenderingMode { fullColor, accented, vibrant };
// How an image is drawn in the accented mode: as it is; its luminance as the
// alpha of the default group's colour; the same in the accent colour; or as a
// silhouette in the accent colour (as widgetAccentable() does).
enum class WidgetAccentedRenderingMode { fullColor, desaturated, accentedDesaturated, accented };
// The groups the platform colours apart: views marked widgetAccentable(), the
// widget's container background, and everything else.
enum class WidgetGroup { default_, accent, containerBackground };

// What a button runs: an intent by name with its parameters in order.
struct IntentInvocation {
    std::string intent{};
    std::vector<std::string> parameters{};
    friend bool operator==(const IntentInvocation&, const IntentInvocation&) = default;
};

// Values that flow down the tree. Modifiers such as font() and
// foregroundColor() change them for a subtree.
struct Environment {
    ColorScheme colorScheme = ColorScheme::light;
    WidgetFamily widgetFamily = WidgetFamily::systemSmall;
    Font font = Font::system(17);
    std::optional<Color> foregroundColor{};  // unset: the primary label colour
    std::optional<int> lineLimit{};          // unset: as many lines as fit
    double minimumScaleFactor = 1;
    std::optional<Color> tint{};  // unset: the accent colour
    ButtonStyle buttonStyle = ButtonStyle::plain;
    // Where the widget is shown: the rendering mode the platform applies to
    // the recorded picture, and whether the container background is drawn
    // (false where the platform removes it: vibrant, StandBy, the pad's lock
    // screen). Views may read both to adapt, never to imitate the mode.
    WidgetRenderingMode widgetRenderingMode = WidgetRenderingMode::fullColor;
    bool showsWidgetContainerBackground = true;
    // From the locale, as the platform sets it. Right to left mirrors what
    // "leading" and "trailing" mean: an HStack runs from the right edge,
    // leading alignments, paddings, safe-area edges and the lines of a text
    // go to the right, a geometry reader's content sits at its top-right
    // corner and the content margins swap sides. Shapes, paths, images,
    // strokes and explicit effects (rotation, scale, offset) are drawn as
    // given, so a ring still starts at twelve o'clock and runs clockwise.
    // Text runs in its own script's direction; a line without letters (only
    // digits and signs) takes this direction.
    LayoutDirection layoutDirection = LayoutDirection::leftToRight;

    Color foreground() const { return foregroundColor.value_or(primaryColor()); }
    Color resolvedTint() const { return tint.value_or(accentColor()); }

    // The platform's own colours.
    static Color primaryColor();    // label text: black, white in the dark
    static Color accentColor();     // buttons and links
    static Color separatorColor();  // dividers
};

// ---------------------------------------------------------------------------
// View: a value holding an immutable node. Modifiers wrap it.
// ---------------------------------------------------------------------------

class View {
public:
    View();  // an empty view
    View(const Color& color);  // NOLINT: a colour is a view filling what it is offered
    explicit View(std::shared_ptr<const ViewNode> node) : node_(std::move(node)) {}

    // Layout.
    [[nodiscard]] View frame(std::optional<double> width, std::optional<double> height,
                             Alignment alignment = Alignment::center) const;
    [[nodiscard]] View frame(const FixedFrame& f) const;
    [[nodiscard]] View frame(const FlexibleFrame& f) const;
    [[nodiscard]] View padding(double length = kDefaultPadding) const;
    [[nodiscard]] View padding(Edges edges, double length = kDefaultPadding) const;
    [[nodiscard]] View padding(EdgeInsets insets) const;
    // Takes its ideal size on the chosen axes whatever it is offered (a text
    // that must not wrap, a divider that must not stretch).
    [[nodiscard]] View fixedSize(bool horizontal = true, bool vertical = true) const;

    // Layers: sized by this view, drawn behind (background), in front
    // (overlay). A colour layer ignores the safe-area edges given: where this
    // view touches the content margins, the colour runs on to the widget's edge.
    [[nodiscard]] View background(const View& layer, Alignment alignment = Alignment::center) const;
    [[nodiscard]] View background(const Color& color, Edges ignoresSafeAreaEdges = Edges::all()) const;
    [[nodiscard]] View overlay(const View& layer, Alignment alignment = Alignment::center) const;
    [[nodiscard]] View overlay(const Color& color, Edges ignoresSafeAreaEdges = Edges::all()) const;
    // Shows this view only where `mask` is opaque.
    [[nodiscard]] View mask(const View& mask, Alignment alignment = Alignment::center) const;
    // The widget's removable background, drawn under everything, edge to edge.
    [[nodiscard]] View containerBackground(const View& background) const;
    // A colour background (as background(color, edges)) that the platform
    // treats as the widget's container background: removed where the platform
    // removes it, replaced by its material in the accented mode. For widgets
    // whose background is painted per part rather than behind everything.
    [[nodiscard]] View removableBackground(const Color& color,
                                           Edges ignoresSafeAreaEdges = Edges::all()) const;
    // Clipping: to the frame, to a shape in the frame, to a rounded frame.
    [[nodiscard]] View clipped() const;
    [[nodiscard]] View clipShape(const Shape& shape) const;
    [[nodiscard]] View cornerRadius(double radius) const;

    // Environment.
    [[nodiscard]] View foregroundColor(const Color& color) const;
    [[nodiscard]] View foregroundStyle(const Color& color) const { return foregroundColor(color); }
    [[nodiscard]] View font(const Font& font) const;
    [[nodiscard]] View lineLimit(std::optional<int> lines) const;
    [[nodiscard]] View minimumScaleFactor(double factor) const;
    [[nodiscard]] View tint(const Color& color) const;
    [[nodiscard]] View buttonStyle(ButtonStyle style) const;
    [[nodiscard]] View colorScheme(ColorScheme scheme) const;
    [[nodiscard]] View widgetFamily(WidgetFamily family) const;
    [[nodiscard]] View environment(std::function<void(Environment&)> change) const;

    // Effects that change drawing, not layout.
    [[nodiscard]] View rotationEffect(Angle angle, UnitPoint anchor = UnitPoint::center()) const;
    [[nodiscard]] View scaleEffect(double scale, UnitPoint anchor = UnitPoint::center()) const;
    // A scale of -1 on one axis mirrors the view.
    [[nodiscard]] View scaleEffect(double x, double y, UnitPoint anchor = UnitPoint::center()) const;
    [[nodiscard]] View opacity(double alpha) const;
    // Drawn moved by (x, y); its place in the layout does not change.
    [[nodiscard]] View offset(double x, double y) const;

    // Identification and taps.
    [[nodiscard]] View accessibilityIdentifier(std::string identifier) const;
    // Where a tap on the widget leads; with several, the last one drawn wins.
    [[nodiscard]] View widgetURL(std::string url) const;
    // Reports this view's laid-out frame (widget coordinates) under `key` in
    // LayoutTree::preferences: how code that built a view learns where a part
    // of it ended up (measured heights, positions of marks) before it builds
    // the next version.
    [[nodiscard]] View framePreference(std::string key) const;

    // Rendering modes. Puts this view and its subviews into the accent group
    // (or, with false, back into the default group): in the accented mode the
    // group is drawn in the accent colour.
    [[nodiscard]] View widgetAccentable(bool accentable = true) const;

    const std::shared_ptr<const ViewNode>& node() const { return node_; }

    // The platform's default padding.
    static constexpr double kDefaultPadding = 16;

private:
    std::shared_ptr<const ViewNode> node_{};
};

// ---------------------------------------------------------------------------
// Leaves and containers. Each is a View; some add their own modifiers.
// ---------------------------------------------------------------------------

// A run of text in the environment's font and foreground colour. It wraps at
// spaces when offered less width than it needs (up to the line limit), then
// shrinks to the minimum scale factor, then truncates its last line with "…".
struct Text : View {
    explicit Text(std::string text);
};

struct VStack : View {
    explicit VStack(std::vector<View> children, HorizontalAlignment alignment = HorizontalAlignment::center,
                    std::optional<double> spacing = std::nullopt);
};
struct HStack : View {
    explicit HStack(std::vector<View> children, VerticalAlignment alignment = VerticalAlignment::center,
                    std::optional<double> spacing = std::nullopt);
};
// Children on top of each other, the first one at the back.
struct ZStack : View {
    explicit ZStack(std::vector<View> children, Alignment alignment = Alignment::center);
};

// Takes the space left along its stack's axis, at least `minLength` (the
// stack's spacing when unset); no spacing is added next to a spacer.
struct Spacer : View {
    explicit Spacer(std::optional<double> minLength = std::nullopt);
};

// A 1-point line across a VStack (or anywhere else), down an HStack.
struct Divider : View {
    Divider();
};

struct EmptyView : View {
    EmptyView() = default;
};

// Takes all it is offered and builds its content for that size; the content
// is placed at the top-leading corner.
struct GeometryReader : View {
    explicit GeometryReader(std::function<View(Size)> content);
};

// Builds its content from the environment it is laid out in (to read the
// widget family or the colour scheme).
struct EnvironmentReader : View {
    explicit EnvironmentReader(std::function<View(const Environment&)> content);
};

// Opens `url` when tapped; draws its label.
struct Link : View {
    Link(std::string url, View label);
};

// Runs an intent when tapped. Drawn by the environment's buttonStyle and tint:
// plain draws the label as it is; bordered puts it on a tint-washed rounded
// rectangle in the tint colour; borderedProminent on a tint-filled one in white.
struct Button : View {
    Button(IntentInvocation intent, View label);
};

// An icon by asset name. Not resizable, it has the icon's natural size;
// resizable, it stretches to what it is offered.
class Image : public View {
public:
    explicit Image(std::string name);
    [[nodiscard]] Image resizable() const;
    // Template images are drawn as a silhouette in the foreground colour.
    [[nodiscard]] Image renderingMode(ImageRenderingMode mode) const;
    // A silhouette in this colour, whatever the foreground colour.
    [[nodiscard]] Image tinted(const Color& color) const;
    // How the image is drawn in the accented mode (desaturated by default).
    [[nodiscard]] Image widgetAccentedRenderingMode(WidgetAccentedRenderingMode mode) const;

    struct Options {
        std::string name{};
        bool resizable = false;
        ImageRenderingMode mode = ImageRenderingMode::original;
        std::optional<Color> tint{};
        WidgetAccentedRenderingMode accentedMode = WidgetAccentedRenderingMode::desaturated;
    };
    const Options& options() const { return options_; }

private:
    explicit Image(Options options);
    Options options_{};
};

// ---------------------------------------------------------------------------
// Shapes: outlines that fill their frame. As views they are filled with the
// foreground colour; trim, rotation and scale act on the outline itself (so a
// later stroke follows them); fill and stroke turn the shape into a view.
// ---------------------------------------------------------------------------

enum class ShapeKind { rectangle, roundedRectangle, circle, ellipse, capsule, custom };

struct ShapeGeometry {
    ShapeKind kind = ShapeKind::rectangle;
    double cornerRadius = 0;
    std::function<Path(const Rect&)> custom{};
    double trimFrom = 0, trimTo = 1;
    // Rotations and scales about unit anchors of the frame, applied in order
    // after the trim.
    struct AnchoredTransform {
        AffineTransform transform{};  // about the anchor
        UnitPoint anchor{};
    };
    std::vector<AnchoredTransform> transforms{};

    // The outline in `frame`. A circle is the largest one centred in the frame
    // and starts at three o'clock, running clockwise.
    Path path(const Rect& frame) const;
};

class Shape : public View {
public:
    // Keeps the part between two fractions of the outline's length.
    [[nodiscard]] Shape trim(double from, double to) const;
    [[nodiscard]] Shape rotation(Angle angle, UnitPoint anchor = UnitPoint::center()) const;
    [[nodiscard]] Shape scale(double x, double y, UnitPoint anchor = UnitPoint::center()) const;

    [[nodiscard]] View fill(const Color& color) const;
    [[nodiscard]] View stroke(const Color& color, const StrokeStyle& style) const;
    [[nodiscard]] View stroke(const Color& color, double lineWidth = 1) const;
    // Stroked in the foreground colour.
    [[nodiscard]] View stroke(const StrokeStyle& style) const;

    const ShapeGeometry& geometry() const { return geometry_; }

protected:
    explicit Shape(ShapeGeometry geometry);

private:
    ShapeGeometry geometry_{};
};

struct Rectangle : Shape {
    Rectangle();
};
struct RoundedRectangle : Shape {
    explicit RoundedRectangle(double cornerRadius);
};
struct Circle : Shape {
    Circle();
};
struct Ellipse : Shape {
    Ellipse();
};
struct Capsule : Shape {
    Capsule();
};
// Any outline, built for the frame it is laid out in.
struct PathShape : Shape {
    explicit PathShape(std::function<Path(const Rect&)> build);
};

}  // namespace qrv::platform
