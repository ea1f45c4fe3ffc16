#include "Widget/Water/WaterWidgetViewModel.hpp"

#include "Platform/locale/NumberFormatter.hpp"
#include "Widget/Shared/LocalizedStringProvider.hpp"
#include "Widget/Water/WaterAmounts.hpp"

namespace qrv::widget {

// Figures are shown in the locale's digits, as ICU gives them: Arabic ("ar",
// "ar_SA", "ar_EG") reads Arabic-Indic digits, as the phone shows them there,
// while ar_AE, the Maghreb and Hebrew read Western ones. The unit library
// writes ASCII digits, so its amounts are put into the locale's digits to
// agree with the glass's marks, which the locale's formatter writes.
WaterWidgetViewModel::WaterWidgetViewModel(const WaterDataEntry& entry)
    : isLoggedIn_(entry.isLoggedIn),
      buttonText_("+ " + platform::localizedDigits(formattedAmount(entry.waterUnit, increment(entry.waterUnit)))),
      waterRepresentation_(platform::localizedDigits(formattedAmount(entry.waterUnit, entry.waterValue))),
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
