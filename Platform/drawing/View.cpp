#include "Platform/drawing/View.hpp"

#include "Platform/drawing/ViewNode.hpp"

#include <cmath>

namespace qrv::platform {
namespace {

template <class T>
std::shared_ptr<const ViewNode> make(T content) {
    return std::make_shared<const ViewNode>(ViewNode{std::move(content)});
}

View withEnvironment(const View& child, std::function<void(Environment&)> change) {
    return View(make(EnvironmentNode{child, std::move(change)}));
}

View withEffect(const View& child, decltype(EffectNode::effect) effect) {
    return View(make(EffectNode{child, std::move(effect)}));
}

Rgba rgb(int r, int g, int b, double a = 1) { return {r / 255.0, g / 255.0, b / 255.0, a}; }

// Views never fail: a length or factor that is not a number becomes `fallback`.
double finiteOr(double v, double fallback) { return std::isnan(v) ? fallback : v; }
std::optional<double> length(std::optional<double> v) {
    if (v && std::isnan(*v)) return std::nullopt;
    return v;
}

}  // namespace

Color Environment::primaryColor() { return Color{rgb(0, 0, 0), rgb(255, 255, 255), "primary"}; }
Color Environment::accentColor() { return Color{rgb(0, 122, 255), rgb(10, 132, 255), "accent"}; }
Color Environment::separatorColor() { return Color{rgb(60, 60, 67, 0.29), rgb(84, 84, 88, 0.6), "separator"}; }

// --- View -------------------------------------------------------------------

View::View() : node_(make(EmptyNode{})) {}
View::View(const Color& color) : node_(make(ColorNode{color})) {}

View View::frame(std::optional<double> width, std::optional<double> height, Alignment alignment) const {
    return frame(FixedFrame{width, height, alignment});
}
View View::frame(const FixedFrame& f) const {
    FixedFrame clean = f;
    if (clean.width) clean.width = std::max(0.0, *clean.width);
    if (clean.height) clean.height = std::max(0.0, *clean.height);
    return View(make(FrameNode{*this, clean}));
}
View View::frame(const FlexibleFrame& f) const {
    FlexibleFrame clean = f;
    for (auto* v : {&clean.minWidth, &clean.idealWidth, &clean.maxWidth, &clean.minHeight, &clean.idealHeight,
                    &clean.maxHeight})
        *v = length(*v);
    return View(make(FrameNode{*this, clean}));
}

View View::fixedSize(bool horizontal, bool vertical) const {
    return View(make(FixedSizeNode{*this, horizontal, vertical}));
}

View View::padding(double length) const { return padding(EdgeInsets::all(length)); }
View View::padding(Edges edges, double length) const {
    EdgeInsets e;
    if (edges.contains(Edges::top())) e.top = length;
    if (edges.contains(Edges::leading())) e.leading = length;
    if (edges.contains(Edges::bottom())) e.bottom = length;
    if (edges.contains(Edges::trailing())) e.trailing = length;
    return padding(e);
}
View View::padding(EdgeInsets insets) const {
    insets = {finiteOr(insets.top, 0), finiteOr(insets.leading, 0), finiteOr(insets.bottom, 0),
              finiteOr(insets.trailing, 0)};
    return View(make(PaddingNode{*this, insets}));
}

View View::background(const View& layer, Alignment alignment) const {
    return View(make(LayerNode{*this, layer, LayerKind::background, alignment, Edges::none()}));
}
View View::background(const Color& color, Edges ignores) const {
    return View(make(LayerNode{*this, View(color), LayerKind::background, Alignment::center, ignores}));
}
View View::overlay(const View& layer, Alignment alignment) const {
    return View(make(LayerNode{*this, layer, LayerKind::overlay, alignment, Edges::none()}));
}
View View::overlay(const Color& color, Edges ignores) const {
    return View(make(LayerNode{*this, View(color), LayerKind::overlay, Alignment::center, ignores}));
}
View View::mask(const View& maskView, Alignment alignment) const {
    return View(make(LayerNode{*this, maskView, LayerKind::mask, alignment, Edges::none()}));
}
View View::containerBackground(const View& background) const {
    return View(make(ContainerBackgroundNode{*this, background}));
}
View View::removableBackground(const Color& color, Edges ignores) const {
    View layer = withEffect(View(color), WidgetGroupEffect{WidgetGroup::containerBackground});
    return View(make(LayerNode{*this, layer, LayerKind::background, Alignment::center, ignores}));
}

View View::clipped() const { return mask(Rectangle().fill(Color::black())); }
View View::clipShape(const Shape& shape) const { return mask(shape.fill(Color::black())); }
View View::cornerRadius(double radius) const { return clipShape(RoundedRectangle(radius)); }

View View::foregroundColor(const Color& color) const {
    return withEnvironment(*this, [color](Environment& e) { e.foregroundColor = color; });
}
View View::font(const Font& f) const {
    return withEnvironment(*this, [f](Environment& e) { e.font = f; });
}
View View::lineLimit(std::optional<int> lines) const {
    if (lines) lines = std::max(1, *lines);
    return withEnvironment(*this, [lines](Environment& e) { e.lineLimit = lines; });
}
View View::minimumScaleFactor(double factor) const {
    factor = std::clamp(finiteOr(factor, 1), 0.01, 1.0);
    return withEnvironment(*this, [factor](Environment& e) { e.minimumScaleFactor = factor; });
}
View View::tint(const Color& color) const {
    return withEnvironment(*this, [color](Environment& e) { e.tint = color; });
}
View View::buttonStyle(ButtonStyle style) const {
    return withEnvironment(*this, [style](Environment& e) { e.buttonStyle = style; });
}
View View::colorScheme(ColorScheme scheme) const {
    return withEnvironment(*this, [scheme](Environment& e) { e.colorScheme = scheme; });
}
View View::widgetFamily(WidgetFamily family) const {
    return withEnvironment(*this, [family](Environment& e) { e.widgetFamily = family; });
}
View View::environment(std::function<void(Environment&)> change) const {
    return withEnvironment(*this, std::move(change));
}

View View::rotationEffect(Angle angle, UnitPoint anchor) const {
    return withEffect(*this, TransformEffect{TransformEffect::Kind::rotation, finiteOr(angle.radians, 0), 1, 1, anchor});
}
View View::scaleEffect(double s, UnitPoint anchor) const { return scaleEffect(s, s, anchor); }
View View::scaleEffect(double x, double y, UnitPoint anchor) const {
    return withEffect(*this, TransformEffect{TransformEffect::Kind::scale, 0, finiteOr(x, 1), finiteOr(y, 1), anchor});
}
View View::offset(double x, double y) const {
    return withEffect(*this, TransformEffect{TransformEffect::Kind::offset, 0, finiteOr(x, 0), finiteOr(y, 0), {}});
}
View View::opacity(double alpha) const {
    return withEffect(*this, OpacityEffect{std::clamp(finiteOr(alpha, 1), 0.0, 1.0)});
}
View View::accessibilityIdentifier(std::string identifier) const {
    return withEffect(*this, AccessibilityIdentifierEffect{std::move(identifier)});
}
View View::widgetURL(std::string url) const { return withEffect(*this, WidgetURLEffect{std::move(url)}); }
View View::framePreference(std::string key) const {
    return withEffect(*this, FramePreferenceEffect{std::move(key)});
}
View View::widgetAccentable(bool accentable) const {
    return withEffect(*this, WidgetGroupEffect{accentable ? WidgetGroup::accent : WidgetGroup::default_});
}

// --- Leaves and containers --------------------------------------------------

Text::Text(std::string text) : View(make(TextNode{std::move(text)})) {}

VStack::VStack(std::vector<View> children, HorizontalAlignment alignment, std::optional<double> spacing)
    : View(make(StackNode{StackAxis::vertical, Alignment{alignment, VerticalAlignment::center}, spacing,
                          std::move(children)})) {}
HStack::HStack(std::vector<View> children, VerticalAlignment alignment, std::optional<double> spacing)
    : View(make(StackNode{StackAxis::horizontal, Alignment{HorizontalAlignment::center, alignment}, spacing,
                          std::move(children)})) {}
ZStack::ZStack(std::vector<View> children, Alignment alignment)
    : View(make(StackNode{StackAxis::depth, alignment, std::nullopt, std::move(children)})) {}

Spacer::Spacer(std::optional<double> minLength) : View(make(SpacerNode{length(minLength)})) {}
Divider::Divider() : View(make(DividerNode{})) {}
GeometryReader::GeometryReader(std::function<View(Size)> content)
    : View(make(GeometryReaderNode{std::move(content)})) {}
EnvironmentReader::EnvironmentReader(std::function<View(const Environment&)> content)
    : View(make(EnvironmentReaderNode{std::move(content)})) {}
Link::Link(std::string url, View label) : View(make(LinkNode{std::move(url), std::move(label)})) {}
Button::Button(IntentInvocation intent, View label)
    : View(make(ButtonNode{std::move(intent), std::move(label)})) {}

Image::Image(std::string name) : Image(Options{.name = std::move(name)}) {}
Image::Image(Options options) : View(make(ImageNode{options})), options_(std::move(options)) {}
Image Image::resizable() const {
    Options s = options_;
    s.resizable = true;
    return Image(std::move(s));
}
Image Image::renderingMode(ImageRenderingMode mode) const {
    Options s = options_;
    s.mode = mode;
    return Image(std::move(s));
}
Image Image::tinted(const Color& color) const {
    Options s = options_;
    s.tint = color;
    return Image(std::move(s));
}
Image Image::widgetAccentedRenderingMode(WidgetAccentedRenderingMode mode) const {
    Options s = options_;
    s.accentedMode = mode;
    return Image(std::move(s));
}

// --- Shapes -----------------------------------------------------------------

Path ShapeGeometry::path(const Rect& frame) const {
    Path p;
    switch (kind) {
        case ShapeKind::rectangle: p = Path::rect(frame); break;
        case ShapeKind::roundedRectangle: p = Path::roundedRect(frame, cornerRadius); break;
        case ShapeKind::capsule:
            p = Path::roundedRect(frame, std::min(frame.width(), frame.height()) / 2);
            break;
        case ShapeKind::ellipse: p = Path::ellipse(frame); break;
        case ShapeKind::circle: {
            double side = std::min(frame.width(), frame.height());
            p = Path::ellipse({{frame.midX() - side / 2, frame.midY() - side / 2}, {side, side}});
            break;
        }
        case ShapeKind::custom:
            if (custom) p = custom(frame);
            break;
    }
    p = p.trimmed(trimFrom, trimTo);
    for (const auto& t : transforms) {
        Point pivot = t.anchor.in(frame);
        p = p.transformed(AffineTransform::translation(-pivot.x, -pivot.y)
                              .then(t.transform)
                              .then(AffineTransform::translation(pivot.x, pivot.y)));
    }
    return p;
}

Shape::Shape(ShapeGeometry geometry)
    : View(make(ShapeNode{geometry, std::nullopt, std::nullopt})), geometry_(std::move(geometry)) {}

Shape Shape::trim(double from, double to) const {
    ShapeGeometry g = geometry_;
    // Trimming a trimmed shape keeps the part of the part, as the platform does.
    double span = g.trimTo - g.trimFrom;
    double f = std::clamp(finiteOr(from, 0), 0.0, 1.0), t = std::clamp(finiteOr(to, 0), 0.0, 1.0);
    g.trimFrom = geometry_.trimFrom + span * f;
    g.trimTo = geometry_.trimFrom + span * std::max(f, t);
    return Shape(std::move(g));
}
Shape Shape::rotation(Angle angle, UnitPoint anchor) const {
    ShapeGeometry g = geometry_;
    g.transforms.push_back({AffineTransform::rotation(finiteOr(angle.radians, 0)), anchor});
    return Shape(std::move(g));
}
Shape Shape::scale(double x, double y, UnitPoint anchor) const {
    ShapeGeometry g = geometry_;
    g.transforms.push_back({AffineTransform::scaling(finiteOr(x, 1), finiteOr(y, 1)), anchor});
    return Shape(std::move(g));
}
View Shape::fill(const Color& color) const { return View(make(ShapeNode{geometry_, std::nullopt, color})); }
View Shape::stroke(const Color& color, const StrokeStyle& style) const {
    return View(make(ShapeNode{geometry_, style, color}));
}
View Shape::stroke(const Color& color, double lineWidth) const {
    StrokeStyle style;
    style.lineWidth = lineWidth;
    return stroke(color, style);
}
View Shape::stroke(const StrokeStyle& style) const { return View(make(ShapeNode{geometry_, style, std::nullopt})); }

Rectangle::Rectangle() : Shape(ShapeGeometry{.kind = ShapeKind::rectangle}) {}
RoundedRectangle::RoundedRectangle(double cornerRadius)
    : Shape(ShapeGeometry{.kind = ShapeKind::roundedRectangle, .cornerRadius = std::max(0.0, finiteOr(cornerRadius, 0))}) {}
Circle::Circle() : Shape(ShapeGeometry{.kind = ShapeKind::circle}) {}
Ellipse::Ellipse() : Shape(ShapeGeometry{.kind = ShapeKind::ellipse}) {}
Capsule::Capsule() : Shape(ShapeGeometry{.kind = ShapeKind::capsule}) {}
PathShape::PathShape(std::function<Path(const Rect&)> build)
    : Shape(ShapeGeometry{.kind = ShapeKind::custom, .custom = std::move(build)}) {}

}  // namespace qrv::platform
