#pragma once
// One mark of the water glass's scale.
#include <cstdint>

namespace qrv::widget {

// Long and short marks alternate down the scale.
// (`short` is a keyword here, hence the trailing underscore.)
enum class WaterLevelRowType { large, short_ };

struct WaterLevelRow {
    // The amount, in the glass's unit, that the mark stands for.
    std::int64_t value = 0;
    WaterLevelRowType type = WaterLevelRowType::large;
    // The mark's vertical position from the top of the glass, in points, as
    // the view measured it; 0 until measured.
    double yPosition = 0;

    friend bool operator==(const WaterLevelRow&, const WaterLevelRow&) = default;
};

}  // namespace qrv::widget
