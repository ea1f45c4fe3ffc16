#include "Widget/Shared/StripesView.hpp"

#include "QRVUICatalog/Fatal.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace qrv::widget {

using namespace qrv::platform;

namespace {
constexpr double kRadiansPerDegree = 0.017453292519943295;
}  // namespace

double StripesView::patternLength(Size size) { return 2 * std::max(size.width, size.height); }

int StripesView::stripeCount(Size size, double stripeWidth, double stripeSpacing) {
    const double quotient = patternLength(size) / (stripeWidth + stripeSpacing);
    // A zero or negative pitch (or a NaN anywhere) has no sensible pattern;
    // drawing on would loop over an unbounded or meaningless count.
    if (!std::isfinite(quotient) || quotient < 0 || quotient >= static_cast<double>(std::numeric_limits<int>::max()))
        catalog::fatalError("StripesView: stripe width " + std::to_string(stripeWidth) + " plus spacing " +
                            std::to_string(stripeSpacing) + " gives no stripe count for this frame");
    return static_cast<int>(quotient);  // truncated toward zero
}

View StripesView::body() const {
    const StripesView stripes = *this;
    return GeometryReader([stripes](Size size) -> View {
        const double length = patternLength(size);
        const int count = stripeCount(size, stripes.stripeWidth, stripes.stripeSpacing);
        std::vector<View> row;
        row.reserve(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i)
            row.push_back(Rectangle().fill(stripes.stripeColor).frame(stripes.stripeWidth, length));
        return HStack(std::move(row), VerticalAlignment::center, stripes.stripeSpacing)
            .frame(length, length)
            .background(stripes.backgroundColor)
            .frame(size.width, size.height)
            .rotationEffect(Angle{stripes.stripeAngle * kRadiansPerDegree});
    });
}

}  // namespace qrv::widget
