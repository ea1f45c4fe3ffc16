// Text: wrapping at spaces, shrinking to the minimum scale factor, then
// truncating the last line with "…".
#include "Platform/drawing/Layout.hpp"

#include <climits>
#include <cmath>

namespace qrv::platform {
namespace {

constexpr const char* kEllipsis = "\u2026";
constexpr double kSlack = 1e-6;  // measured widths are compared with this tolerance

// Byte offsets of the starts of UTF-8 code points, plus the end.
std::vector<std::size_t> codePointBoundaries(std::string_view s) {
    std::vector<std::size_t> out;
    for (std::size_t i = 0; i < s.size(); ++i)
        if ((static_cast<unsigned char>(s[i]) & 0xC0) != 0x80) out.push_back(i);
    out.push_back(s.size());
    return out;
}

std::string_view trimRight(std::string_view s) {
    while (!s.empty() && s.back() == ' ') s.remove_suffix(1);
    return s;
}

struct Wrapped {
    std::string text;
    std::size_t start = 0;  // byte offset of the line in its paragraph
};

class Wrapper {
public:
    Wrapper(const TextMeasurer& m, const Font& f, double maxWidth) : m_(m), font_(f), max_(maxWidth) {}

    double width(std::string_view s) const { return m_.measure(s, font_).width; }
    bool fits(std::string_view s) const { return width(s) <= max_ + kSlack; }

    // Greedy: as many words as fit on each line; a word wider than a line is
    // broken between characters.
    std::vector<Wrapped> wrap(std::string_view para) const {
        std::vector<Wrapped> lines;
        if (std::isinf(max_) || fits(para)) return {{std::string(para), 0}};
        std::size_t pos = 0;
        while (pos < para.size()) {
            while (pos < para.size() && para[pos] == ' ') ++pos;  // spaces at a break vanish
            if (pos >= para.size()) break;
            std::size_t lineStart = pos, end = pos;
            // Extend word by word.
            while (end < para.size()) {
                std::size_t next = para.find(' ', end == lineStart ? end : end + 1);
                if (next == std::string_view::npos) next = para.size();
                if (!fits(para.substr(lineStart, next - lineStart))) break;
                end = next;
            }
            if (end == lineStart) {
                // Not even the first word fits: take as many characters as do (at least one).
                std::size_t wordEnd = para.find(' ', lineStart);
                if (wordEnd == std::string_view::npos) wordEnd = para.size();
                auto cps = codePointBoundaries(para.substr(lineStart, wordEnd - lineStart));
                std::size_t take = cps.size() > 1 ? cps[1] : 0;
                for (std::size_t k = 2; k < cps.size(); ++k) {
                    if (!fits(para.substr(lineStart, cps[k]))) break;
                    take = cps[k];
                }
                end = lineStart + take;
            }
            lines.push_back({std::string(trimRight(para.substr(lineStart, end - lineStart))), lineStart});
            pos = end;
        }
        if (lines.empty()) lines.push_back({std::string(), 0});
        return lines;
    }

    // The longest prefix (at a character boundary) that fits with "…" after it.
    std::string truncate(std::string_view s) const {
        if (fits(s)) return std::string(s);
        auto cps = codePointBoundaries(s);
        std::size_t lo = 0, hi = cps.size() - 1;  // lo: known to fit (possibly empty)
        while (lo < hi) {
            std::size_t mid = (lo + hi + 1) / 2;
            if (fits(std::string(trimRight(s.substr(0, cps[mid]))) + kEllipsis))
                lo = mid;
            else
                hi = mid - 1;
        }
        return std::string(trimRight(s.substr(0, cps[lo]))) + kEllipsis;
    }

private:
    const TextMeasurer& m_;
    const Font& font_;
    double max_;
};

std::vector<std::string_view> paragraphs(std::string_view text) {
    std::vector<std::string_view> out;
    std::size_t start = 0;
    for (;;) {
        std::size_t nl = text.find('\n', start);
        if (nl == std::string_view::npos) {
            out.push_back(text.substr(start));
            return out;
        }
        out.push_back(text.substr(start, nl - start));
        start = nl + 1;
    }
}

// Lays the text out at one scale; without `truncate`, gives nothing when the
// text does not fit.
std::optional<TextLayout> attempt(const std::string& text, const Environment& env, ProposedSize proposal,
                                  const TextMeasurer& measurer, double scale, bool truncate) {
    TextLayout out;
    out.scale = scale;
    out.font = env.font;
    // A font size that is not a positive number draws nothing.
    out.font.size = env.font.size > 0 ? env.font.size * scale : 0;
    TextMetrics empty = measurer.measure("", out.font);
    out.ascent = empty.ascent;
    out.lineHeight = empty.lineHeight();

    double maxWidth = proposal.width.value_or(infinity);
    double maxHeight = proposal.height.value_or(infinity);
    long allowed = env.lineLimit.value_or(INT_MAX);
    if (std::isfinite(maxHeight) && out.lineHeight > 0)
        allowed = std::min(allowed, std::max(1L, static_cast<long>(std::floor(maxHeight / out.lineHeight + 1e-9))));

    Wrapper wrapper(measurer, out.font, maxWidth);
    struct Piece {
        Wrapped line;
        std::size_t paragraph;
    };
    std::vector<Piece> pieces;
    auto paras = paragraphs(text);
    for (std::size_t p = 0; p < paras.size(); ++p)
        for (auto& w : wrapper.wrap(paras[p])) pieces.push_back({std::move(w), p});

    bool overflows = static_cast<long>(pieces.size()) > allowed;
    if (!overflows)
        for (const auto& piece : pieces) overflows = overflows || !wrapper.fits(piece.line.text);
    if (overflows && !truncate) return std::nullopt;

    std::size_t kept = overflows ? std::min<std::size_t>(pieces.size(), static_cast<std::size_t>(allowed)) : pieces.size();
    for (std::size_t i = 0; i < kept; ++i) {
        std::string line = pieces[i].line.text;
        if (overflows && i + 1 == kept) {
            // The last line carries the rest of the text, cut to fit.
            std::string rest(paras[pieces[i].paragraph].substr(pieces[i].line.start));
            for (std::size_t p = pieces[i].paragraph + 1; p < paras.size(); ++p) rest += " " + std::string(paras[p]);
            line = wrapper.truncate(rest);
            // With room to spare (no width limit) the rest fits whole; the line
            // still has to say that text was left out.
            if (line == rest) line = wrapper.truncate(pieces[i].line.text + kEllipsis);
            out.truncated = true;
        }
        double w = wrapper.width(line);
        out.lines.push_back({std::move(line), w});
    }
    double widest = 0;
    for (const auto& l : out.lines) widest = std::max(widest, l.width);
    out.size = {widest, out.lineHeight * static_cast<double>(out.lines.size())};
    return out;
}

}  // namespace

TextLayout TextLayout::make(const std::string& text, const Environment& env, ProposedSize proposal,
                            const TextMeasurer& measurer) {
    if (auto whole = attempt(text, env, proposal, measurer, 1, false)) return *whole;
    double minScale = std::clamp(env.minimumScaleFactor, 0.01, 1.0);
    if (minScale >= 1) return *attempt(text, env, proposal, measurer, 1, true);
    auto smallest = attempt(text, env, proposal, measurer, minScale, false);
    if (!smallest) return *attempt(text, env, proposal, measurer, minScale, true);

    // The largest scale that fits. Widths grow about linearly with the size, so
    // first try the scale that makes the widest line just fit, then bisect.
    double lo = minScale, hi = 1;
    TextLayout best = *smallest;
    auto natural = attempt(text, env, ProposedSize{std::nullopt, std::nullopt}, measurer, 1, true);
    double estimates[2] = {hi, hi};
    if (proposal.width && natural->size.width > 0) estimates[0] = *proposal.width / natural->size.width;
    if (proposal.height && natural->size.height > 0) estimates[1] = *proposal.height / natural->size.height;
    double estimate = std::min(estimates[0], estimates[1]);
    // Wrapping can make a larger scale fit again (two short lines instead of
    // one long one), so a fitting estimate only raises the lower bound.
    if (estimate > lo && estimate < hi) {
        if (auto e = attempt(text, env, proposal, measurer, estimate, false)) {
            lo = estimate;
            best = *e;
        } else {
            hi = estimate;
        }
    }
    for (int i = 0; i < 12 && hi - lo > 1e-3; ++i) {
        double mid = (lo + hi) / 2;
        if (auto m = attempt(text, env, proposal, measurer, mid, false)) {
            lo = mid;
            best = *m;
        } else {
            hi = mid;
        }
    }
    return best;
}

}  // namespace qrv::platform
