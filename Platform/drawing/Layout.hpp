#pragma once
// Layout: sizes and places a view tree for a widget of a given size.
//
// The proposal model. A parent proposes a size to a child, each dimension
// either a length, unset ("your ideal size"), 0 ("your smallest") or infinity
// ("your largest"). The child answers with the size it takes; the parent then
// places it, passing the same proposal down again so the child lays out its
// own children the way it measured them.
//
// How space is shared in a stack, in passes:
//   1. spacing between neighbours (none next to a spacer) is set aside;
//   2. each child's flexibility is its largest minus its smallest length along
//      the axis;
//   3. spacers set their minimum length aside;
//   4. the other children are offered, least flexible first, an equal share of
//      what is left; what each takes is subtracted before the next is asked
//      (frames with an infinite maximum are the most flexible, so they come
//      last and take the rest);
//   5. spacers share whatever remains.
//
// Text asks a TextMeasurer how wide a line is; the fake one in tests makes
// layout exact and independent of fonts.
#include "Platform/drawing/View.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace qrv::platform {

// One line of text in one font: its advance width and the vertical metrics of
// the font (ascent above the baseline, descent below; both positive).
struct TextMetrics {
    double width = 0;
    double ascent = 0;
    double descent = 0;
    double lineHeight() const { return ascent + descent; }
};

class TextMeasurer {
public:
    virtual ~TextMeasurer() = default;
    // `text` is one line (no line breaks); it may be empty.
    virtual TextMetrics measure(std::string_view text, const Font& font) const = 0;
};

// Natural sizes of icons for images that are not resizable.
class ImageSizer {
public:
    virtual ~ImageSizer() = default;
    virtual std::optional<Size> naturalSize(std::string_view name) const = 0;
};

struct ProposedSize {
    std::optional<double> width{}, height{};

    static ProposedSize unspecified() { return {}; }
    static ProposedSize of(Size s) { return {s.width, s.height}; }
    friend bool operator==(const ProposedSize&, const ProposedSize&) = default;
};

// A text as laid out: its lines (the last one possibly truncated with "…"),
// the font after shrinking and the line metrics in that font.
struct TextLayout {
    struct Line {
        std::string text{};
        double width = 0;
    };
    std::vector<Line> lines{};
    Font font{};          // the environment's font with its size times `scale`
    double scale = 1;   // >= the minimum scale factor
    double ascent = 0;  // of one line, in the scaled font
    double lineHeight = 0;
    bool truncated = false;
    Size size{};

    // Lines wrapped, shrunk and truncated to fit `proposal` as described on Text.
    static TextLayout make(const std::string& text, const Environment& env, ProposedSize proposal,
                           const TextMeasurer& measurer);
};

// One placed view. `frame` is in the widget's coordinates. Children, by node:
// stacks: their children; frame, padding, effects, environment, link, button:
// [content]; layers (background, overlay, mask): [content, layer]; geometry
// and environment readers: [what they built].
struct LayoutNode {
    std::shared_ptr<const ViewNode> node{};
    Rect frame{};
    Environment environment{};
    std::vector<LayoutNode> children{};
    std::optional<TextLayout> text{};  // for Text
};

struct LayoutTree {
    Environment environment{};  // what the root was given
    Size size{};                // the widget
    Rect contentRect{};  // inside the content margins
    // Container backgrounds, laid out over the whole widget, drawn first.
    std::vector<LayoutNode> containerBackgrounds{};
    LayoutNode content{};
    // Frames reported by framePreference(), in layout order.
    std::vector<std::pair<std::string, Rect>> preferences{};

    // The frames reported under `key`, in layout order.
    std::vector<Rect> preferenceFrames(std::string_view key) const;
};

struct LayoutOptions {
    Size size{};
    Environment environment{};
    EdgeInsets contentMargins{};  // the widget's content margins; none by default
    const ImageSizer* images = nullptr;
};

// Lays `view` out in a widget of options.size: the content is offered the
// area inside the margins and centred in it.
LayoutTree layout(const View& view, const LayoutOptions& options, const TextMeasurer& measurer);

// The size `view` answers to `proposal` (handy for measuring a piece alone).
Size sizeThatFits(const View& view, ProposedSize proposal, const Environment& environment,
                  const TextMeasurer& measurer, const ImageSizer* images = nullptr);

// Indented text dump of a layout, one node per line with its kind and frame
// (two decimals), for tests and debugging.
std::string describe(const LayoutTree& tree);
std::string describe(const LayoutNode& node, int depth = 0);

// The frame of the first node (in drawing order) carrying this accessibility
// identifier, if any.
std::optional<Rect> findFrame(const LayoutTree& tree, std::string_view accessibilityIdentifier);

}  // namespace qrv::platform
