#pragma once
// The water widget's view model: the texts of the widget for one timeline
// entry (titles, the day's total, the log button's caption) and, made on first
// use and kept, the model of the medium widget's glass. A reference type, like
// the glass model it owns: the views share one instance and the glass's view
// observes its model.
#include <memory>
#include <string>

#include "Widget/Cache/WaterDataEntry.hpp"
#include "Widget/Water/WaterLevelWidgetViewModel.hpp"
#include "Widget/Water/WaterWidgetUnit.hpp"

namespace qrv::widget {

class WaterWidgetViewModel {
  public:
    explicit WaterWidgetViewModel(const WaterDataEntry& entry);
    WaterWidgetViewModel(const WaterWidgetViewModel&) = delete;
    WaterWidgetViewModel& operator=(const WaterWidgetViewModel&) = delete;

    bool isLoggedIn() const { return isLoggedIn_; }
    // "+ " and one tap's amount in the unit: "+ 250 ml".
    const std::string& buttonText() const { return buttonText_; }
    // The day's amount in its unit: "24.0 fl oz".
    const std::string& waterRepresentation() const { return waterRepresentation_; }
    float waterAmount() const { return waterAmount_; }
    WaterWidgetUnit waterUnit() const { return waterUnit_; }
    // Localized "Water", "Today" and the logged-out message; a key the string
    // table lacks shows as itself.
    const std::string& topText() const { return topText_; }
    const std::string& subtitle() const { return subtitle_; }
    // The widget icon shown beside the title.
    const std::string& topIconName() const { return topIconName_; }
    const std::string& loggedOutMessage() const { return loggedOutMessage_; }

    // The glass: made on first access with this entry's amount and unit and
    // its marks built, then the same object on every later access.
    const std::shared_ptr<WaterLevelWidgetViewModel>& waterLevelViewModel();

  private:
    bool isLoggedIn_;
    std::string buttonText_;
    std::string waterRepresentation_;
    float waterAmount_;
    WaterWidgetUnit waterUnit_;
    std::string topText_;
    std::string subtitle_;
    std::string topIconName_;
    std::string loggedOutMessage_;
    std::shared_ptr<WaterLevelWidgetViewModel> waterLevelViewModel_;
};

}  // namespace qrv::widget
