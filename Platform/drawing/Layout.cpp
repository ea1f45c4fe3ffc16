// Layout by proposals. Index:
//   [Boxes]      the view tree with environments resolved, sizes cached
//   [Sizing]     sizeOf(): what each kind of node answers to a proposal
//   [Stacks]     sharing space by flexibility
//   [Placing]    place(): frames for a box and its children
//   [Entry]      layout(), sizeThatFits(), describe(), findFrame()
#include "Platform/drawing/Layout.hpp"
#include "Platform/drawing/Overloaded.hpp"

#include "Platform/drawing/ViewNode.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numeric>
#include <utility>

namespace qrv::platform {
namespace {

constexpr double kDefaultStackSpacing = 8;
constexpr double kDefaultShapeSize = 10;  // what shapes and readers answer to an unset proposal
constexpr double kDividerThickness = 1;

// ---------------------------------------------------------------------------
// [Boxes]
// ---------------------------------------------------------------------------

struct Box {
    std::shared_ptr<const ViewNode> node;
    Environment env;
    std::vector<std::unique_ptr<Box>> kids;
    // Where a spacer or divider sits, and the spacing a spacer defaults to.
    std::optional<StackAxis> parentAxis;
    double parentSpacing = kDefaultStackSpacing;

    std::vector<std::pair<ProposedSize, Size>> sizes;
    std::vector<std::pair<ProposedSize, TextLayout>> texts;
};

struct Context {
    const TextMeasurer& measurer;
    const ImageSizer* images;
    Rect safeRect;       // inside the content margins
    Rect containerRect;  // the whole widget
    std::vector<LayoutNode>* containerBackgrounds;
    std::vector<std::pair<std::string, Rect>>* preferences;
};

std::unique_ptr<Box> build(const View& view, const Environment& env, std::optional<StackAxis> parentAxis = {},
                           double parentSpacing = kDefaultStackSpacing);

// Buttons are drawn by their style: the label with padding on a rounded
// rectangle in the tint colour.
View styledButtonLabel(const ButtonNode& button, const Environment& env) {
    constexpr double kCornerRadius = 8;
    const EdgeInsets insets{7, 12, 7, 12};
    Color tint = env.resolvedTint();
    switch (env.buttonStyle) {
        case ButtonStyle::plain: return button.label;
        case ButtonStyle::bordered:
            return button.label.foregroundColor(tint).padding(insets).background(
                RoundedRectangle(kCornerRadius).fill(tint.opacity(0.15)));
        case ButtonStyle::borderedProminent:
            return button.label.foregroundColor(Color::white())
                .padding(insets)
                .background(RoundedRectangle(kCornerRadius).fill(tint));
    }
    return button.label;
}

std::unique_ptr<Box> build(const View& view, const Environment& env, std::optional<StackAxis> parentAxis,
                           double parentSpacing) {
    const auto& node = view.node();
    // Environment changes and readers leave no box of their own.
    if (auto* e = std::get_if<EnvironmentNode>(&node->content)) {
        Environment changed = env;
        if (e->change) e->change(changed);
        return build(e->child, changed, parentAxis, parentSpacing);
    }
    if (auto* r = std::get_if<EnvironmentReaderNode>(&node->content))
        return build(r->content ? r->content(env) : View(), env, parentAxis, parentSpacing);

    auto box = std::make_unique<Box>();
    box->node = node;
    box->env = env;
    box->parentAxis = parentAxis;
    box->parentSpacing = parentSpacing;
    std::visit(Overloaded{
                   [&](const StackNode& s) {
                       double spacing = s.spacing.value_or(kDefaultStackSpacing);
                       for (const auto& child : s.children)
                           if (!std::holds_alternative<EmptyNode>(child.node()->content))
                               box->kids.push_back(build(child, env, s.axis, spacing));
                   },
                   [&](const LinkNode& l) { box->kids.push_back(build(l.label, env)); },
                   [&](const ButtonNode& b) { box->kids.push_back(build(styledButtonLabel(b, env), env)); },
                   [&](const FrameNode& f) { box->kids.push_back(build(f.child, env)); },
                   [&](const FixedSizeNode& f) { box->kids.push_back(build(f.child, env, parentAxis, parentSpacing)); },
                   [&](const PaddingNode& p) { box->kids.push_back(build(p.child, env)); },
                   [&](const LayerNode& l) {
                       box->kids.push_back(build(l.child, env, parentAxis, parentSpacing));
                       box->kids.push_back(build(l.layer, env));
                   },
                   [&](const ContainerBackgroundNode& c) {
                       box->kids.push_back(build(c.child, env, parentAxis, parentSpacing));
                   },
                   [&](const EffectNode& e) { box->kids.push_back(build(e.child, env, parentAxis, parentSpacing)); },
                   [&](const auto&) {},
               },
               node->content);
    return box;
}

// ---------------------------------------------------------------------------
// [Sizing]
// ---------------------------------------------------------------------------

Size sizeOf(Box& box, ProposedSize p, Context& ctx);

const TextLayout& textOf(Box& box, ProposedSize p, Context& ctx) {
    for (const auto& [proposal, text] : box.texts)
        if (proposal == p) return text;
    const auto& node = std::get<TextNode>(box.node->content);
    box.texts.emplace_back(p, TextLayout::make(node.text, box.env, p, ctx.measurer));
    return box.texts.back().second;
}

double clampTo(double v, std::optional<double> lo, std::optional<double> hi) {
    if (hi) v = std::min(v, *hi);
    if (lo) v = std::max(v, *lo);
    return v;
}

// The flexible frame's rule, one dimension at a time: the child is offered
// the proposal clamped to [min, max] (or the ideal length when unset) and the
// frame answers the child's length pulled towards the proposal within bounds.
std::optional<double> flexibleChildProposal(std::optional<double> proposed, std::optional<double> lo,
                                            std::optional<double> ideal, std::optional<double> hi) {
    if (!proposed) return ideal ? std::optional(clampTo(*ideal, lo, hi)) : std::nullopt;
    return clampTo(*proposed, lo, hi);
}
double flexibleAnswer(double child, std::optional<double> proposed, std::optional<double> lo,
                      std::optional<double> ideal, std::optional<double> hi) {
    std::optional<double> offered = proposed ? proposed : ideal;
    if (!offered) return clampTo(child, lo, hi);
    double out = child;
    if (lo) out = std::max(*lo, std::min(out, *offered));
    if (hi) out = std::min(*hi, std::max(out, *offered));
    return out;
}

ProposedSize frameChildProposal(const FrameNode& f, ProposedSize p) {
    if (auto* fixed = std::get_if<FixedFrame>(&f.frame))
        return {fixed->width ? fixed->width : p.width, fixed->height ? fixed->height : p.height};
    const auto& flex = std::get<FlexibleFrame>(f.frame);
    return {flexibleChildProposal(p.width, flex.minWidth, flex.idealWidth, flex.maxWidth),
            flexibleChildProposal(p.height, flex.minHeight, flex.idealHeight, flex.maxHeight)};
}

Size frameAnswer(const FrameNode& f, ProposedSize p, Size child) {
    if (auto* fixed = std::get_if<FixedFrame>(&f.frame))
        return {fixed->width.value_or(child.width), fixed->height.value_or(child.height)};
    const auto& flex = std::get<FlexibleFrame>(f.frame);
    return {flexibleAnswer(child.width, p.width, flex.minWidth, flex.idealWidth, flex.maxWidth),
            flexibleAnswer(child.height, p.height, flex.minHeight, flex.idealHeight, flex.maxHeight)};
}

ProposedSize shrink(ProposedSize p, EdgeInsets e) {
    auto sub = [](std::optional<double> v, double d) {
        return v ? std::optional(std::max(0.0, *v - d)) : std::nullopt;
    };
    return {sub(p.width, e.horizontal()), sub(p.height, e.vertical())};
}

ProposedSize fixedProposal(const FixedSizeNode& f, ProposedSize p) {
    return {f.horizontal ? std::nullopt : p.width, f.vertical ? std::nullopt : p.height};
}

Size naturalImageSize(const ImageNode& image, Context& ctx) {
    if (!ctx.images) return {};
    return ctx.images->naturalSize(image.options.name).value_or(Size{});
}

struct StackMeasure {
    Size size;
    std::vector<Size> sizes;
    std::vector<ProposedSize> proposals;
    std::vector<double> gaps;  // before each child
};
StackMeasure measureStack(Box& box, const StackNode& s, ProposedSize p, Context& ctx);

Size computeSize(Box& box, ProposedSize p, Context& ctx) {
    auto orDefault = [](std::optional<double> v, double d) { return v.value_or(d); };
    return std::visit(
        Overloaded{
            [&](const EmptyNode&) { return Size{}; },
            [&](const TextNode&) { return textOf(box, p, ctx).size; },
            [&](const ShapeNode&) {
                return Size{orDefault(p.width, kDefaultShapeSize), orDefault(p.height, kDefaultShapeSize)};
            },
            [&](const ColorNode&) {
                return Size{orDefault(p.width, kDefaultShapeSize), orDefault(p.height, kDefaultShapeSize)};
            },
            [&](const ImageNode& i) {
                Size natural = naturalImageSize(i, ctx);
                if (!i.options.resizable) return natural;
                return Size{orDefault(p.width, natural.width), orDefault(p.height, natural.height)};
            },
            [&](const StackNode& s) { return measureStack(box, s, p, ctx).size; },
            [&](const SpacerNode& s) {
                double minLength = s.minLength.value_or(box.parentSpacing);
                double w = std::max(minLength, orDefault(p.width, minLength));
                double h = std::max(minLength, orDefault(p.height, minLength));
                if (box.parentAxis == StackAxis::horizontal) return Size{w, 0};
                if (box.parentAxis == StackAxis::vertical) return Size{0, h};
                return Size{orDefault(p.width, minLength), orDefault(p.height, minLength)};
            },
            [&](const DividerNode&) {
                if (box.parentAxis == StackAxis::horizontal) return Size{kDividerThickness, orDefault(p.height, 0)};
                return Size{orDefault(p.width, 0), kDividerThickness};
            },
            [&](const GeometryReaderNode&) {
                return Size{orDefault(p.width, kDefaultShapeSize), orDefault(p.height, kDefaultShapeSize)};
            },
            [&](const EnvironmentReaderNode&) { return Size{}; },  // resolved while building
            [&](const LinkNode&) { return sizeOf(*box.kids[0], p, ctx); },
            [&](const ButtonNode&) { return sizeOf(*box.kids[0], p, ctx); },
            [&](const FrameNode& f) { return frameAnswer(f, p, sizeOf(*box.kids[0], frameChildProposal(f, p), ctx)); },
            [&](const FixedSizeNode& f) { return sizeOf(*box.kids[0], fixedProposal(f, p), ctx); },
            [&](const PaddingNode& pad) {
                Size child = sizeOf(*box.kids[0], shrink(p, pad.insets), ctx);
                return Size{std::max(0.0, child.width + pad.insets.horizontal()),
                            std::max(0.0, child.height + pad.insets.vertical())};
            },
            [&](const LayerNode&) { return sizeOf(*box.kids[0], p, ctx); },
            [&](const ContainerBackgroundNode&) { return sizeOf(*box.kids[0], p, ctx); },
            [&](const EnvironmentNode&) { return Size{}; },  // resolved while building
            [&](const EffectNode&) { return sizeOf(*box.kids[0], p, ctx); },
        },
        box.node->content);
}

Size sizeOf(Box& box, ProposedSize p, Context& ctx) {
    for (const auto& [proposal, size] : box.sizes)
        if (proposal == p) return size;
    Size s = computeSize(box, p, ctx);
    box.sizes.emplace_back(p, s);
    return s;
}

// ---------------------------------------------------------------------------
// [Stacks]
// ---------------------------------------------------------------------------

bool isSpacer(const Box& b) { return std::holds_alternative<SpacerNode>(b.node->content); }

StackMeasure measureStack(Box& box, const StackNode& s, ProposedSize p, Context& ctx) {
    StackMeasure m;
    const std::size_t n = box.kids.size();
    m.sizes.resize(n);
    m.proposals.resize(n, p);
    m.gaps.resize(n, 0);
    if (n == 0) return m;

    if (s.axis == StackAxis::depth) {
        for (std::size_t i = 0; i < n; ++i) {
            m.sizes[i] = sizeOf(*box.kids[i], p, ctx);
            m.size.width = std::max(m.size.width, m.sizes[i].width);
            m.size.height = std::max(m.size.height, m.sizes[i].height);
        }
        return m;
    }

    const bool horizontal = s.axis == StackAxis::horizontal;
    auto mainOf = [&](Size z) { return horizontal ? z.width : z.height; };
    auto crossOf = [&](Size z) { return horizontal ? z.height : z.width; };
    auto propose = [&](std::optional<double> main) {
        return horizontal ? ProposedSize{main, p.height} : ProposedSize{p.width, main};
    };
    std::optional<double> proposedMain = horizontal ? p.width : p.height;

    // Pass 1: spacing between neighbours; a spacer brings its own.
    double spacing = s.spacing.value_or(kDefaultStackSpacing), totalSpacing = 0;
    for (std::size_t i = 1; i < n; ++i) {
        m.gaps[i] = (isSpacer(*box.kids[i - 1]) || isSpacer(*box.kids[i])) ? 0 : spacing;
        totalSpacing += m.gaps[i];
    }

    if (!proposedMain) {
        // Ideal size: every child at its own ideal length.
        for (std::size_t i = 0; i < n; ++i) {
            m.proposals[i] = propose(std::nullopt);
            m.sizes[i] = sizeOf(*box.kids[i], m.proposals[i], ctx);
        }
    } else {
        // Pass 2: flexibility = largest minus smallest length along the axis.
        std::vector<double> flexibility(n);
        for (std::size_t i = 0; i < n; ++i) {
            double lo = mainOf(sizeOf(*box.kids[i], propose(0.0), ctx));
            double hi = mainOf(sizeOf(*box.kids[i], propose(infinity), ctx));
            flexibility[i] = std::isnan(hi - lo) ? infinity : hi - lo;
        }
        std::vector<std::size_t> order(n);
        std::iota(order.begin(), order.end(), 0);
        std::stable_sort(order.begin(), order.end(),
                         [&](std::size_t a, std::size_t b) { return flexibility[a] < flexibility[b]; });
        // Pass 3: spacers set their minimum aside, so a text beside a spacer
        // gets the room it needs before the spacer grows.
        double remaining = std::max(0.0, *proposedMain - totalSpacing);
        std::size_t left = 0, spacersLeft = 0;
        double spacerMinimum = 0;
        for (std::size_t i = 0; i < n; ++i) {
            if (isSpacer(*box.kids[i])) {
                spacerMinimum += mainOf(sizeOf(*box.kids[i], propose(0.0), ctx));
                ++spacersLeft;
            } else {
                ++left;
            }
        }
        remaining -= spacerMinimum;
        // Pass 4: the others, least flexible first, each offered an equal
        // share of what is left.
        for (std::size_t i : order) {
            if (isSpacer(*box.kids[i])) continue;
            double share = std::max(0.0, remaining / static_cast<double>(left));
            m.proposals[i] = propose(share);
            m.sizes[i] = sizeOf(*box.kids[i], m.proposals[i], ctx);
            remaining -= mainOf(m.sizes[i]);
            --left;
        }
        // Pass 5: spacers share the rest.
        remaining += spacerMinimum;
        for (std::size_t i : order) {
            if (!isSpacer(*box.kids[i])) continue;
            double share = std::max(0.0, remaining / static_cast<double>(spacersLeft));
            m.proposals[i] = propose(share);
            m.sizes[i] = sizeOf(*box.kids[i], m.proposals[i], ctx);
            remaining -= mainOf(m.sizes[i]);
            --spacersLeft;
        }
    }
    double main = totalSpacing, cross = 0;
    for (const auto& z : m.sizes) {
        main += mainOf(z);
        cross = std::max(cross, crossOf(z));
    }
    m.size = horizontal ? Size{main, cross} : Size{cross, main};
    return m;
}

// ---------------------------------------------------------------------------
// [Placing]
// ---------------------------------------------------------------------------

bool rightToLeft(const Environment& env) { return env.layoutDirection == LayoutDirection::rightToLeft; }

// Right to left, leading is the right-hand side.
HorizontalAlignment onScreen(HorizontalAlignment a, LayoutDirection d) {
    if (d == LayoutDirection::leftToRight || a == HorizontalAlignment::center) return a;
    return a == HorizontalAlignment::leading ? HorizontalAlignment::trailing : HorizontalAlignment::leading;
}

double alignedOffset(double container, double child, HorizontalAlignment a, LayoutDirection d) {
    switch (onScreen(a, d)) {
        case HorizontalAlignment::leading: return 0;
        case HorizontalAlignment::center: return (container - child) / 2;
        case HorizontalAlignment::trailing: return container - child;
    }
    return 0;
}
double alignedOffset(double container, double child, VerticalAlignment a) {
    switch (a) {
        case VerticalAlignment::top: return 0;
        case VerticalAlignment::center: return (container - child) / 2;
        case VerticalAlignment::bottom: return container - child;
    }
    return 0;
}
Rect aligned(const Rect& in, Size child, Alignment a, LayoutDirection d) {
    return {{in.minX() + alignedOffset(in.width(), child.width, a.horizontal, d),
             in.minY() + alignedOffset(in.height(), child.height, a.vertical)},
            child};
}

LayoutNode place(Box& box, const Rect& frame, ProposedSize p, Context& ctx);

// `d` is the direction of the parent that aligns the kid.
LayoutNode placeInside(Box& kid, const Rect& container, ProposedSize p, Alignment a, LayoutDirection d,
                       Context& ctx) {
    return place(kid, aligned(container, sizeOf(kid, p, ctx), a, d), p, ctx);
}

// Where a layer that ignores safe-area edges touches the content margins, it
// runs on to the widget's edge.
Rect extendedToContainer(const Rect& r, Edges edges, LayoutDirection d, const Context& ctx) {
    constexpr double eps = 1e-6;
    double x0 = r.minX(), y0 = r.minY(), x1 = r.maxX(), y1 = r.maxY();
    const bool rtl = d == LayoutDirection::rightToLeft;
    const Edges left = rtl ? Edges::trailing() : Edges::leading(), right = rtl ? Edges::leading() : Edges::trailing();
    if (edges.contains(Edges::top()) && std::abs(y0 - ctx.safeRect.minY()) < eps) y0 = ctx.containerRect.minY();
    if (edges.contains(left) && std::abs(x0 - ctx.safeRect.minX()) < eps) x0 = ctx.containerRect.minX();
    if (edges.contains(Edges::bottom()) && std::abs(y1 - ctx.safeRect.maxY()) < eps) y1 = ctx.containerRect.maxY();
    if (edges.contains(right) && std::abs(x1 - ctx.safeRect.maxX()) < eps) x1 = ctx.containerRect.maxX();
    return {{x0, y0}, {x1 - x0, y1 - y0}};
}

LayoutNode place(Box& box, const Rect& frame, ProposedSize p, Context& ctx) {
    LayoutNode out;
    out.node = box.node;
    out.frame = frame;
    out.environment = box.env;
    const LayoutDirection direction = box.env.layoutDirection;
    std::visit(
        Overloaded{
            [&](const TextNode&) { out.text = textOf(box, p, ctx); },
            [&](const StackNode& s) {
                StackMeasure m = measureStack(box, s, p, ctx);
                // Right to left, an HStack's first child is at the right edge.
                const double step = rightToLeft(box.env) ? -1 : 1;
                double pos = s.axis != StackAxis::horizontal ? frame.minY() : step > 0 ? frame.minX() : frame.maxX();
                for (std::size_t i = 0; i < box.kids.size(); ++i) {
                    Rect r;
                    if (s.axis == StackAxis::depth) {
                        r = aligned(frame, m.sizes[i], s.alignment, direction);
                    } else if (s.axis == StackAxis::horizontal) {
                        pos += step * m.gaps[i];
                        double x = step > 0 ? pos : pos - m.sizes[i].width;
                        r = {{x, frame.minY() + alignedOffset(frame.height(), m.sizes[i].height, s.alignment.vertical)},
                             m.sizes[i]};
                        pos += step * m.sizes[i].width;
                    } else {
                        pos += m.gaps[i];
                        r = {{frame.minX() +
                                  alignedOffset(frame.width(), m.sizes[i].width, s.alignment.horizontal, direction),
                              pos},
                             m.sizes[i]};
                        pos += m.sizes[i].height;
                    }
                    out.children.push_back(place(*box.kids[i], r, m.proposals[i], ctx));
                }
            },
            [&](const GeometryReaderNode& g) {
                View content = g.content ? g.content(frame.size) : View();
                box.kids.clear();
                box.kids.push_back(build(content, box.env));
                ProposedSize offer = ProposedSize::of(frame.size);
                Size s = sizeOf(*box.kids[0], offer, ctx);
                Point corner{rightToLeft(box.env) ? frame.maxX() - s.width : frame.minX(), frame.minY()};
                out.children.push_back(place(*box.kids[0], {corner, s}, offer, ctx));
            },
            [&](const LinkNode&) { out.children.push_back(placeInside(*box.kids[0], frame, p, Alignment::center, direction, ctx)); },
            [&](const ButtonNode&) {
                out.children.push_back(placeInside(*box.kids[0], frame, p, Alignment::center, direction, ctx));
            },
            [&](const FrameNode& f) {
                Alignment a = std::visit([](const auto& placement) { return placement.alignment; }, f.frame);
                out.children.push_back(placeInside(*box.kids[0], frame, frameChildProposal(f, p), a, direction, ctx));
            },
            [&](const FixedSizeNode& f) {
                out.children.push_back(placeInside(*box.kids[0], frame, fixedProposal(f, p), Alignment::center, direction, ctx));
            },
            [&](const PaddingNode& pad) {
                ProposedSize inner = shrink(p, pad.insets);
                Size s = sizeOf(*box.kids[0], inner, ctx);
                double left = rightToLeft(box.env) ? pad.insets.trailing : pad.insets.leading;
                out.children.push_back(
                    place(*box.kids[0], {{frame.minX() + left, frame.minY() + pad.insets.top}, s}, inner, ctx));
            },
            [&](const LayerNode& l) {
                out.children.push_back(place(*box.kids[0], frame, p, ctx));
                Rect area = extendedToContainer(frame, l.ignoresSafeAreaEdges, direction, ctx);
                out.children.push_back(
                    placeInside(*box.kids[1], area, ProposedSize::of(area.size), l.alignment, direction, ctx));
            },
            [&](const ContainerBackgroundNode& c) {
                out.children.push_back(place(*box.kids[0], frame, p, ctx));
                auto background = build(c.background, box.env);
                ProposedSize whole = ProposedSize::of(ctx.containerRect.size);
                ctx.containerBackgrounds->push_back(
                    placeInside(*background, ctx.containerRect, whole, Alignment::center, direction, ctx));
            },
            [&](const EffectNode& e) {
                if (auto* pref = std::get_if<FramePreferenceEffect>(&e.effect))
                    ctx.preferences->emplace_back(pref->key, frame);
                out.children.push_back(place(*box.kids[0], frame, p, ctx));
            },
            [&](const auto&) {},
        },
        box.node->content);
    return out;
}

// ---------------------------------------------------------------------------
// [Entry]
// ---------------------------------------------------------------------------

std::string fmt(double v) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.2f", v);
    return std::string(buf) == "-0.00" ? "0.00" : buf;
}

std::string kindName(const LayoutNode& n) {
    return std::visit(
        Overloaded{
            [&](const EmptyNode&) -> std::string { return "Empty"; },
            [&](const TextNode& t) -> std::string {
                std::string s = "Text \"" + t.text + "\"";
                if (n.text) {
                    if (n.text->scale != 1) s += " scale=" + fmt(n.text->scale);
                    std::string shown;
                    for (const auto& l : n.text->lines) shown += (shown.empty() ? "" : "|") + l.text;
                    if (shown != t.text) s += " shows \"" + shown + "\"";
                }
                return s;
            },
            [&](const ShapeNode& s) -> std::string {
                static const char* kinds[] = {"Rectangle", "RoundedRectangle", "Circle", "Ellipse", "Capsule", "Path"};
                return std::string(kinds[static_cast<int>(s.geometry.kind)]) + (s.stroke ? " stroke" : " fill");
            },
            [&](const ColorNode& c) -> std::string { return c.color.name.empty() ? "Color" : "Color " + c.color.name; },
            [&](const ImageNode& i) -> std::string { return "Image \"" + i.options.name + "\""; },
            [&](const StackNode& s) -> std::string {
                return s.axis == StackAxis::vertical ? "VStack" : s.axis == StackAxis::horizontal ? "HStack" : "ZStack";
            },
            [&](const SpacerNode&) -> std::string { return "Spacer"; },
            [&](const DividerNode&) -> std::string { return "Divider"; },
            [&](const GeometryReaderNode&) -> std::string { return "GeometryReader"; },
            [&](const EnvironmentReaderNode&) -> std::string { return "EnvironmentReader"; },
            [&](const LinkNode& l) -> std::string { return "Link \"" + l.url + "\""; },
            [&](const ButtonNode& b) -> std::string { return "Button " + b.intent.intent; },
            [&](const FrameNode&) -> std::string { return "Frame"; },
            [&](const FixedSizeNode&) -> std::string { return "FixedSize"; },
            [&](const PaddingNode&) -> std::string { return "Padding"; },
            [&](const LayerNode& l) -> std::string {
                return l.kind == LayerKind::background ? "Background" : l.kind == LayerKind::overlay ? "Overlay" : "Mask";
            },
            [&](const ContainerBackgroundNode&) -> std::string { return "ContainerBackground"; },
            [&](const EnvironmentNode&) -> std::string { return "Environment"; },
            [&](const EffectNode& e) -> std::string {
                return std::visit(Overloaded{
                                      [](const OpacityEffect& o) { return "Opacity " + fmt(o.alpha); },
                                      [](const TransformEffect& t) -> std::string {
                                          static const char* names[] = {"Rotation", "Scale", "Offset"};
                                          return names[static_cast<int>(t.kind)];
                                      },
                                      [](const AccessibilityIdentifierEffect& a) { return "Identifier \"" + a.identifier + "\""; },
                                      [](const WidgetURLEffect& w) { return "WidgetURL \"" + w.url + "\""; },
                                      [](const FramePreferenceEffect& f) { return "FramePreference \"" + f.key + "\""; },
                                      [](const WidgetGroupEffect& g) -> std::string {
                                          static const char* names[] = {"default", "accent", "container background"};
                                          return std::string("WidgetGroup ") + names[static_cast<int>(g.group)];
                                      },
                                  },
                                  e.effect);
            },
        },
        n.node->content);
}

bool findIn(const LayoutNode& n, std::string_view id, Rect& out) {
    if (auto* e = std::get_if<EffectNode>(&n.node->content))
        if (auto* a = std::get_if<AccessibilityIdentifierEffect>(&e->effect); a && a->identifier == id) {
            out = n.frame;
            return true;
        }
    for (const auto& c : n.children)
        if (findIn(c, id, out)) return true;
    return false;
}

}  // namespace

LayoutTree layout(const View& view, const LayoutOptions& options, const TextMeasurer& measurer) {
    LayoutTree tree;
    tree.environment = options.environment;
    tree.size = options.size;
    Rect container{{0, 0}, options.size};
    // The margins' leading side is the right one when the widget runs right to left.
    EdgeInsets margins = options.contentMargins;
    if (rightToLeft(options.environment)) std::swap(margins.leading, margins.trailing);
    tree.contentRect = container.inset(margins);
    Context ctx{measurer, options.images, tree.contentRect, container, &tree.containerBackgrounds, &tree.preferences};
    auto root = build(view, options.environment);
    ProposedSize offer = ProposedSize::of(tree.contentRect.size);
    tree.content =
        placeInside(*root, tree.contentRect, offer, Alignment::center, options.environment.layoutDirection, ctx);
    return tree;
}

Size sizeThatFits(const View& view, ProposedSize proposal, const Environment& environment,
                  const TextMeasurer& measurer, const ImageSizer* images) {
    std::vector<LayoutNode> ignored;
    std::vector<std::pair<std::string, Rect>> unused;
    Context ctx{measurer, images, {}, {}, &ignored, &unused};
    auto root = build(view, environment);
    return sizeOf(*root, proposal, ctx);
}

std::string describe(const LayoutNode& node, int depth) {
    std::string out(static_cast<std::size_t>(depth) * 2, ' ');
    const Rect& f = node.frame;
    out += kindName(node) + " (" + fmt(f.minX()) + ", " + fmt(f.minY()) + ", " + fmt(f.width()) + ", " +
           fmt(f.height()) + ")\n";
    for (const auto& c : node.children) out += describe(c, depth + 1);
    return out;
}

std::string describe(const LayoutTree& tree) {
    std::string out;
    for (const auto& b : tree.containerBackgrounds) out += "container background:\n" + describe(b, 1);
    return out + describe(tree.content, 0);
}

std::vector<Rect> LayoutTree::preferenceFrames(std::string_view key) const {
    std::vector<Rect> out;
    for (const auto& [k, r] : preferences)
        if (k == key) out.push_back(r);
    return out;
}

std::optional<Rect> findFrame(const LayoutTree& tree, std::string_view id) {
    Rect r;
    for (const auto& b : tree.containerBackgrounds)
        if (findIn(b, id, r)) return r;
    if (findIn(tree.content, id, r)) return r;
    return std::nullopt;
}

}  // namespace qrv::platform
