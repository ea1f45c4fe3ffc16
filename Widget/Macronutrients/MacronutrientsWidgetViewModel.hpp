#pragma once
// The macronutrients widget's view model: the day's record and the string
// provider that the value view models of its rings share.
#include <optional>

#include "Widget/Cache/MacronutrientsDataEntry.hpp"
#include "Widget/Macronutrients/MacronutrientsWidgetValueViewModel.hpp"
#include "Widget/Shared/LocalizedStringProvider.hpp"
#include "Widget/Shared/WidgetsLocalizedStringProvider.hpp"

namespace qrv::widget {

struct MacronutrientsWidgetViewModel {
    MacronutrientsDataEntry data;
    LocalizedStringProviderRef localizedProvider = WidgetsLocalizedStringProvider::shared();

    // The ring of one nutrient, or nothing when the record has no value for it
    // (what the widget then shows is the view's choice).
    std::optional<MacronutrientsWidgetValueViewModel> valueViewModel(MacronutrientsDataValueType type) const {
        const auto found = data.values.find(type);
        if (found == data.values.end()) return std::nullopt;
        return MacronutrientsWidgetValueViewModel{.data = found->second,
                                                  .localizedProvider = localizedProvider};
    }
};

}  // namespace qrv::widget
