#pragma once
// The kinds of record the widget extension logs itself (as opposed to the
// records the main app writes). Keys the interactive reader's and writer's
// strategy tables.
#include <string_view>

namespace qrv::widget {

enum class InteractiveWidgetDataType { water };

// For messages: "Water".
constexpr std::string_view typeName(InteractiveWidgetDataType type) {
    switch (type) {
        case InteractiveWidgetDataType::water:
            return "Water";
    }
    return "Unknown";
}

}  // namespace qrv::widget
