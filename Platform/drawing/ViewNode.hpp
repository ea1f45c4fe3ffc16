#pragma once
// The nodes behind View values. Layout and recording read them; code that
// builds views needs only View.hpp.
#include "Platform/drawing/View.hpp"

#include <variant>

namespace qrv::platform {

struct TextNode {
    std::string text{};
};
struct ShapeNode {
    ShapeGeometry geometry{};
    std::optional<StrokeStyle> stroke{};  // unset: filled
    std::optional<Color> color{};         // unset: the foreground colour
};
struct ColorNode {
    Color color{};
};
struct ImageNode {
    Image::Options options{};
};
enum class StackAxis { vertical, horizontal, depth };
struct StackNode {
    StackAxis axis = StackAxis::vertical;
    Alignment alignment{};
    std::optional<double> spacing{};
    std::vector<View> children{};
};
struct SpacerNode {
    std::optional<double> minLength{};
};
struct DividerNode {};
struct EmptyNode {};
struct GeometryReaderNode {
    std::function<View(Size)> content;
};
struct EnvironmentReaderNode {
    std::function<View(const Environment&)> content;
};
struct LinkNode {
    std::string url{};
    View label{};
};
struct ButtonNode {
    IntentInvocation intent{};
    View label{};
};
struct FrameNode {
    View child{};
    std::variant<FixedFrame, FlexibleFrame> frame{};
};
struct FixedSizeNode {
    View child{};
    bool horizontal = true, vertical = true;
};
struct PaddingNode {
    View child{};
    EdgeInsets insets{};
};
enum class LayerKind { background, overlay, mask };
struct LayerNode {
    View child{};
    View layer{};
    LayerKind kind = LayerKind::background;
    Alignment alignment{};
    Edges ignoresSafeAreaEdges = Edges::none();
};
struct ContainerBackgroundNode {
    View child{};
    View background{};
};
struct EnvironmentNode {
    View child{};
    std::function<void(Environment&)> change;
};

struct OpacityEffect {
    double alpha = 1;
};
struct TransformEffect {
    enum class Kind { rotation, scale, offset };
    Kind kind = Kind::rotation;
    double angle = 0;       // radians, for a rotation
    double sx = 1, sy = 1;  // for a scale; the distances of an offset
    UnitPoint anchor{};

    // The transform about the origin (the anchor is moved there first).
    AffineTransform linear() const {
        switch (kind) {
            case Kind::rotation: return AffineTransform::rotation(angle);
            case Kind::scale: return AffineTransform::scaling(sx, sy);
            case Kind::offset: return AffineTransform::translation(sx, sy);
        }
        return {};
    }
};
struct AccessibilityIdentifierEffect {
    std::string identifier{};
};
struct WidgetURLEffect {
    std::string url{};
};
struct FramePreferenceEffect {
    std::string key{};
};
// widgetAccentable() and removableBackground(): the subtree belongs to a group.
struct WidgetGroupEffect {
    WidgetGroup group = WidgetGroup::accent;
};
struct EffectNode {
    View child{};
    std::variant<OpacityEffect, TransformEffect, AccessibilityIdentifierEffect, WidgetURLEffect,
                 FramePreferenceEffect, WidgetGroupEffect>
        effect{};
};

struct ViewNode {
    std::variant<EmptyNode, TextNode, ShapeNode, ColorNode, ImageNode, StackNode, SpacerNode, DividerNode,
                 GeometryReaderNode, EnvironmentReaderNode, LinkNode, ButtonNode, FrameNode, FixedSizeNode, PaddingNode,
                 LayerNode, ContainerBackgroundNode, EnvironmentNode, EffectNode>
        content{};
};

}  // namespace qrv::platform
