#include "Widget/Water/WaterWidgetIntent.hpp"

#include "Widget/Water/FloatParsing.hpp"

namespace qrv::widget {
namespace {

// Buttons run the intent by name through the registry.
const platform::IntentRegistration registration{
    std::string(WaterWidgetIntent::name), [](const platform::IntentRequest& invocation) {
        return std::make_unique<WaterWidgetIntent>(WaterWidgetIntent::fromInvocation(invocation));
    }};

}  // namespace

WaterWidgetIntent WaterWidgetIntent::fromInvocation(const platform::IntentRequest& invocation) {
    WaterWidgetIntent intent;
    if (auto value = invocation.parameter("waterValue")) intent.waterValue = std::move(*value);
    if (auto unit = invocation.parameter("waterUnit")) intent.waterUnit = std::move(*unit);
    return intent;
}

std::vector<platform::IntentParameter> WaterWidgetIntent::parameters() const {
    return {{"waterValue", waterValue}, {"waterUnit", waterUnit}};
}

InteractiveWaterData WaterWidgetIntent::record(platform::Date now) const {
    const float amount = parseFloat(waterValue).value_or(0.0f);
    const WaterWidgetUnit unit = waterWidgetUnit(waterUnit).value_or(WaterWidgetUnit::oz);
    return InteractiveWaterData(now, amount, unit);
}

WaterWidgetIntent::Logged WaterWidgetIntent::log() const {
    const platform::Clock& clock = clock_ != nullptr ? *clock_ : platform::SystemClock::shared();
    auto& writer = writer_ != nullptr ? *writer_ : InteractiveWidgetDataCacheWriter::shared();
    auto logged = record(clock.now());
    const auto result = writer.write(logged, InteractiveWidgetDataType::water);
    return Logged{logged, result};
}

}  // namespace qrv::widget
