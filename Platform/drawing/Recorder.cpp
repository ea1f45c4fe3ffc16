#include "Platform/drawing/Recorder.hpp"
#include "Platform/drawing/Overloaded.hpp"

#include "Platform/drawing/ViewNode.hpp"

namespace qrv::platform {
namespace {

bool opaque(const Color& c) { return c.light.alpha >= 1 && c.dark.alpha >= 1; }

// ---------------------------------------------------------------------------
// Masks that can be clips: opaque fills and strokes whose outline we can build.
// ---------------------------------------------------------------------------

struct ClipParts {
    std::vector<Path> outlines;  // stroke outlines, all wound clockwise
    std::vector<Path> fills;
    bool possible = true;
};

void collectClip(const LayoutNode& n, const AffineTransform& t, ClipParts& parts) {
    if (!parts.possible) return;
    auto fail = [&] { parts.possible = false; };
    auto children = [&](const AffineTransform& tt) {
        for (const auto& c : n.children) collectClip(c, tt, parts);
    };
    std::visit(Overloaded{
                   [&](const ShapeNode& s) {
                       Color c = s.color.value_or(n.environment.foreground());
                       if (!opaque(c)) return fail();
                       Path centre = s.geometry.path(n.frame);
                       if (!s.stroke) return parts.fills.push_back(centre.transformed(t));
                       if (!t.isSimilarity()) return fail();
                       StrokeStyle style = *s.stroke;
                       style.lineWidth *= std::sqrt(std::abs(t.determinant()));
                       auto outline = centre.transformed(t).strokeOutline(style);
                       if (!outline) return fail();
                       parts.outlines.push_back(std::move(*outline));
                   },
                   [&](const ColorNode& c) {
                       if (!opaque(c.color)) return fail();
                       parts.fills.push_back(Path::rect(n.frame).transformed(t));
                   },
                   [&](const StackNode&) { children(t); },
                   [&](const FrameNode&) { children(t); },
                   [&](const FixedSizeNode&) { children(t); },
                   [&](const PaddingNode&) { children(t); },
                   [&](const GeometryReaderNode&) { children(t); },
                   [&](const LinkNode&) { children(t); },
                   [&](const ButtonNode&) { children(t); },
                   [&](const SpacerNode&) {},
                   [&](const EmptyNode&) {},
                   [&](const LayerNode& l) {
                       if (l.kind == LayerKind::mask) return fail();
                       children(t);
                   },
                   [&](const EffectNode& e) {
                       std::visit(Overloaded{
                                      [&](const OpacityEffect& o) {
                                          if (o.alpha < 1) return fail();
                                          children(t);
                                      },
                                      [&](const TransformEffect& te) {
                                          Point pivot = te.anchor.in(n.frame);
                                          children(AffineTransform::translation(-pivot.x, -pivot.y)
                                                       .then(te.linear())
                                                       .then(AffineTransform::translation(pivot.x, pivot.y))
                                                       .then(t));
                                      },
                                      [&](const auto&) { children(t); },
                                  },
                                  e.effect);
                   },
                   [&](const auto&) { fail(); },
               },
               n.node->content);
}

// One clip path for the whole mask, or nothing when the mask needs a group:
// a single fill, or any number of stroke outlines (which share a winding, so
// the non-zero rule unites them).
std::optional<Path> clipFor(const LayoutNode& mask) {
    ClipParts parts;
    collectClip(mask, AffineTransform::identity(), parts);
    if (!parts.possible) return std::nullopt;
    if (parts.fills.size() == 1 && parts.outlines.empty()) return parts.fills[0];
    if (!parts.fills.empty()) return std::nullopt;
    Path all;
    for (const auto& o : parts.outlines) all.addPath(o);
    return all;
}

// ---------------------------------------------------------------------------
// The recorder
// ---------------------------------------------------------------------------

class Recorder {
public:
    Recorder(DisplayList& out, ColorScheme scheme) : out_(out), scheme_(scheme) {}

    void node(const LayoutNode& n) {
        std::visit(Overloaded{
                       [&](const TextNode& t) { text(n, t); },
                       [&](const ShapeNode& s) { shape(n, s); },
                       [&](const ColorNode& c) { fill(Path::rect(n.frame), paint(n, c.color)); },
                       [&](const DividerNode&) { fill(Path::rect(n.frame), paint(n, Environment::separatorColor())); },
                       [&](const ImageNode& i) {
                           std::optional<Color> tint = i.options.tint;
                           if (!tint && i.options.mode == ImageRenderingMode::template_) tint = n.environment.foreground();
                           if (tint) tint = paint(n, *tint);
                           // The accented mode reads how the image wants to be drawn.
                           auto accented = n.environment.widgetRenderingMode == WidgetRenderingMode::accented
                                               ? i.options.accentedMode
                                               : WidgetAccentedRenderingMode::desaturated;
                           if (!n.frame.isEmpty())
                               emit(op::DrawImage{i.options.name, n.frame, tint, false, accented});
                       },
                       [&](const LinkNode& l) {
                           region(n, LinkTarget{l.url});
                           children(n);
                       },
                       [&](const ButtonNode& b) {
                           region(n, b.intent);
                           children(n);
                       },
                       [&](const LayerNode& l) { layer(n, l); },
                       [&](const EffectNode& e) { effect(n, e); },
                       [&](const auto&) { children(n); },
                   },
                   n.node->content);
    }

private:
    void emit(DrawOp o) { out_.ops.push_back(std::move(o)); }
    void children(const LayoutNode& n) {
        for (const auto& c : n.children) node(c);
    }
    // A fill without area paints nothing; it is left out.
    void fill(Path p, Color c) {
        Rect b = p.bounds();
        if (!p.isEmpty() && b.width() > 0 && b.height() > 0)
            emit(op::FillPath{std::move(p), std::move(c), FillRule::nonZero});
    }
    // Colours keep both variants for the painter, unless a subtree asked for
    // a scheme of its own: then its colours are fixed in that scheme.
    Color paint(const LayoutNode& n, const Color& c) const {
        if (n.environment.colorScheme == scheme_) return c;
        return Color::fixed(c.resolved(n.environment.colorScheme), c.name);
    }
    Rect onScreen(const Rect& r) const { return ctm_.mapRect(r); }

    void region(const LayoutNode& n, std::variant<LinkTarget, IntentInvocation> target) {
        if (inMask_ == 0) out_.hitRegions.push_back({onScreen(n.frame), std::move(target)});
    }

    void text(const LayoutNode& n, const TextNode& t) {
        if (!n.text) return;
        const TextLayout& layout = *n.text;
        Color color = paint(n, n.environment.foreground());
        // Lines start at the leading edge: the right one, right to left.
        const LayoutDirection direction = n.environment.layoutDirection;
        std::string shown;
        for (std::size_t i = 0; i < layout.lines.size(); ++i) {
            const auto& line = layout.lines[i];
            double top = n.frame.minY() + layout.lineHeight * static_cast<double>(i);
            double x = direction == LayoutDirection::rightToLeft ? n.frame.maxX() - line.width : n.frame.minX();
            if (!line.text.empty())
                emit(op::DrawText{line.text, layout.font, color, {x, top}, top + layout.ascent, line.width, direction});
            shown += (i ? "\n" : "") + line.text;
        }
        if (inMask_ > 0) return;
        out_.texts.push_back(DrawnText{t.text, shown, onScreen(n.frame), identifiers_.empty() ? "" : identifiers_.back(),
                                       layout.font.size, layout.truncated});
    }

    void shape(const LayoutNode& n, const ShapeNode& s) {
        Path p = s.geometry.path(n.frame);
        if (p.isEmpty()) return;
        Color c = paint(n, s.color.value_or(n.environment.foreground()));
        if (!s.stroke) return fill(std::move(p), std::move(c));
        if (s.stroke->lineWidth > 0) emit(op::StrokePath{std::move(p), std::move(c), *s.stroke});
    }

    void layer(const LayoutNode& n, const LayerNode& l) {
        const LayoutNode& content = n.children[0];
        const LayoutNode& layerNode = n.children[1];
        switch (l.kind) {
            case LayerKind::background:
                node(layerNode);
                node(content);
                return;
            case LayerKind::overlay:
                node(content);
                node(layerNode);
                return;
            case LayerKind::mask:
                if (auto clip = clipFor(layerNode)) {
                    emit(op::Save{});
                    emit(op::ClipPath{std::move(*clip), FillRule::nonZero});
                    node(content);
                    emit(op::Restore{});
                } else {
                    emit(op::PushGroup{});
                    node(content);
                    emit(op::PushMask{});
                    ++inMask_;
                    node(layerNode);
                    --inMask_;
                    emit(op::PopMask{});
                }
                return;
        }
    }

    void effect(const LayoutNode& n, const EffectNode& e) {
        std::visit(Overloaded{
                       [&](const OpacityEffect& o) {
                           if (o.alpha <= 0) return;
                           if (o.alpha >= 1) return children(n);
                           emit(op::PushGroup{});
                           children(n);
                           emit(op::PopGroup{o.alpha});
                       },
                       [&](const TransformEffect& t) {
                           // A zero scale collapses the view to nothing (and would
                           // leave the painter with a singular matrix).
                           if (t.kind == TransformEffect::Kind::scale && (t.sx == 0 || t.sy == 0)) return;
                           Point pivot = t.anchor.in(n.frame);
                           emit(op::Save{});
                           if (t.kind == TransformEffect::Kind::offset) {
                               emit(op::Translate{t.sx, t.sy});
                           } else {
                               emit(op::Translate{pivot.x, pivot.y});
                               if (t.kind == TransformEffect::Kind::rotation)
                                   emit(op::Rotate{t.angle});
                               else
                                   emit(op::Scale{t.sx, t.sy});
                               emit(op::Translate{-pivot.x, -pivot.y});
                           }
                           AffineTransform saved = ctm_;
                           ctm_ = AffineTransform::translation(-pivot.x, -pivot.y)
                                      .then(t.linear())
                                      .then(AffineTransform::translation(pivot.x, pivot.y))
                                      .then(ctm_);
                           children(n);
                           ctm_ = saved;
                           emit(op::Restore{});
                       },
                       [&](const AccessibilityIdentifierEffect& a) {
                           std::size_t firstText = out_.texts.size();
                           identifiers_.push_back(a.identifier);
                           children(n);
                           identifiers_.pop_back();
                           if (inMask_ > 0) return;
                           std::string label;
                           for (std::size_t i = firstText; i < out_.texts.size(); ++i)
                               label += (label.empty() ? "" : " ") + out_.texts[i].text;
                           out_.accessibility.push_back({a.identifier, onScreen(n.frame), label});
                       },
                       [&](const WidgetURLEffect& w) {
                           if (inMask_ == 0) out_.widgetURL = w.url;
                           children(n);
                       },
                       [&](const FramePreferenceEffect&) { children(n); },
                       [&](const WidgetGroupEffect& g) { group(n.environment, g.group, [&] { children(n); }); },
                   },
                   e.effect);
    }

public:
    // Draws `body` as a widget group: not at all when it is a container
    // background the environment hides; between group markers unless the
    // widget is drawn in full colour (where groups make no difference, so the
    // full-colour list stays as it always was).
    template <class Body>
    void group(const Environment& env, WidgetGroup g, Body body) {
        if (g == WidgetGroup::containerBackground && !env.showsWidgetContainerBackground) return;
        if (env.widgetRenderingMode == WidgetRenderingMode::fullColor) return body();
        emit(op::BeginWidgetGroup{g});
        body();
        emit(op::EndWidgetGroup{});
    }

private:

    DisplayList& out_;
    ColorScheme scheme_;
    AffineTransform ctm_;
    std::vector<std::string> identifiers_;
    int inMask_ = 0;
};

}  // namespace

DisplayList record(const LayoutTree& tree, bool showsContainerBackground) {
    DisplayList out;
    out.size = tree.size;
    Recorder r(out, tree.environment.colorScheme);
    if (showsContainerBackground)
        for (const auto& b : tree.containerBackgrounds)
            r.group(tree.environment, WidgetGroup::containerBackground, [&] { r.node(b); });
    r.node(tree.content);
    return out;
}

DisplayList render(const View& view, const RenderOptions& options, const TextMeasurer& measurer) {
    LayoutOptions lo{options.size, options.environment(), options.contentMargins, options.images};
    return record(layout(view, lo, measurer), options.showsContainerBackground);
}

}  // namespace qrv::platform
