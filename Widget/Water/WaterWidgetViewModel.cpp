#include "Widget/Water/WaterWidgetViewModel.hpp"

#include "Widget/Shared/LocalizedStringProvider.hpp"
#include "Widget/Water/WaterAmounts.hpp"

namespace qrv::widget {

WaterWidgetViewModel::WaterWidgetViewModel(const WaterDataEntry& entry)
    : isLoggedIn_(entry.isLoggedIn),
      buttonText_("+ " + formattedAmount(entry.waterUnit, increment(entry.waterUnit))),
      waterRepresentation_(formattedAmount(entry.waterUnit, entry.waterValue)),
      waterAmount_(entry.waterValue),
      waterUnit_(entry.waterUnit),
      // These lookups carry no translator comment.
      topText_(localizedString("Water", "")),
      subtitle_(localizedString("Today", "")),
      topIconName_("Water"),
      loggedOutMessage_(localizedString("dashb.widget.login.long", "")) {}

const std::shared_ptr<WaterLevelWidgetViewModel>& WaterWidgetViewModel::waterLevelViewModel() {
    if (!waterLevelViewModel_) {
        waterLevelViewModel_ = std::make_shared<WaterLevelWidgetViewModel>(waterAmount_, waterUnit_);
        waterLevelViewModel_->buildRows();
    }
    return waterLevelViewModel_;
}

}  // namespace qrv::widget
