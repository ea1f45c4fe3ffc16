#pragma once
// The action behind the water widget's log button: records one amount of water,
// in the button's unit, at the present moment. Both parameters are texts and
// are read forgivingly: an amount that is not a number logs 0, a unit that is
// not "ml" or "cups" logs ounces. It never fails towards the host and asks for
// no reload; the host reloads the widget after any intent has run.
#include <string>
#include <string_view>
#include <vector>

#include "Platform/intents/AppIntent.hpp"
#include "Platform/time/Clock.hpp"
#include "Widget/Cache/InteractiveWaterData.hpp"
#include "Widget/Cache/InteractiveWidgetDataCacheWriter.hpp"

namespace qrv::widget {

class WaterWidgetIntent final : public platform::AppIntent {
  public:
    // The name buttons and the host run it by; also its title's string key.
    static constexpr std::string_view name = "WaterWidgetIntent";
    static constexpr std::string_view title = "WaterWidgetIntent";
    static constexpr std::string_view waterValueTitle = "Water Value";
    static constexpr std::string_view waterUnitTitle = "Water Unit";

    // Parameters, in declaration order.
    std::string waterValue = "0";  // the amount as decimal text, e.g. "250"
    std::string waterUnit = "oz";  // "oz", "ml" or "cups"

    // What the platform makes before filling in the parameters: "oz" and "0".
    WaterWidgetIntent() = default;
    // Unit first, then amount, as the button builds it.
    WaterWidgetIntent(std::string unit, std::string value)
        : waterValue(std::move(value)), waterUnit(std::move(unit)) {}

    // Rebuilds the intent a button carries; missing parameters keep their defaults.
    static WaterWidgetIntent fromInvocation(const platform::IntentRequest& invocation);

    // Where "now" and the list come from; the process's clock and the shared
    // writer unless set. Both must outlive the intent.
    WaterWidgetIntent& withClock(const platform::Clock& clock) {
        clock_ = &clock;
        return *this;
    }
    WaterWidgetIntent& withWriter(InteractiveWidgetDataCacheWriterProtocol& writer) {
        writer_ = &writer;
        return *this;
    }

    // The record a run at `now` logs.
    InteractiveWaterData record(platform::Date now) const;

    struct Logged {
        InteractiveWaterData record;
        InteractiveWriteResult result;
    };
    // perform() with its outcome, for callers that report it (the host).
    Logged log() const;

    std::string intentName() const override { return std::string(name); }
    std::vector<platform::IntentParameter> parameters() const override;
    void perform() override { log(); }

  private:
    const platform::Clock* clock_ = nullptr;
    InteractiveWidgetDataCacheWriterProtocol* writer_ = nullptr;
};

}  // namespace qrv::widget
