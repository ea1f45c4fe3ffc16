// qrv-widgets log-water --unit TEXT --amount TEXT [--now TIME] [--container DIR]:
// does what a tap on the water widget's button does, by running the widget's
// own log-water intent with the button's two texts. The texts are read as the
// intent reads them (an amount that is not a number logs 0, a unit other than
// oz, ml or cups logs ounces); the command says so on standard error and prints
// what it logged on standard output.
#include <iostream>
#include <memory>
#include <string>

#include "Host/Command.hpp"
#include "Host/Options.hpp"
#include "Platform/coding/FloatDescription.hpp"
#include "Platform/time/Calendar.hpp"
#include "Platform/time/ISO8601.hpp"
#include "Widget/Cache/WidgetSettings.hpp"
#include "Widget/Water/FloatParsing.hpp"
#include "Widget/Water/WaterWidgetIntent.hpp"

namespace qrv::host {
namespace {

struct LogWaterOptions {
    std::string unit;
    std::string amount;
    std::string now;
    std::string container;
};

// Tells the user where the intent's forgiving reading changed what they typed.
void noteLenientReading(const LogWaterOptions& options) {
    if (!widget::parseFloat(options.amount))
        std::cerr << "log-water: --amount \"" << options.amount
                  << "\" is not a number; logging 0, as the widget does\n";
    if (!widget::waterWidgetUnit(options.unit))
        std::cerr << "log-water: --unit \"" << options.unit
                  << "\" is not oz, ml or cups; logging ounces, as the widget does\n";
}

int run(const LogWaterOptions& options) {
    useContainer(options.container);
    const auto environment = makeEnvironment(options.now);
    noteLenientReading(options);

    widget::WaterWidgetIntent intent(options.unit, options.amount);
    intent.withClock(*environment.clock);
    const auto logged = intent.log();
    const auto& record = logged.record;
    if (logged.result != widget::InteractiveWriteResult::stored) {
        std::cerr << "log-water: nothing logged to "
                  << widget::WidgetSettings::defaults()->filePath().string() << '\n';
        return kExitFailure;
    }
    std::cout << "logged " << platform::floatDescription(record.waterValue) << ' '
              << widget::rawValue(record.waterUnit) << " at "
              << platform::formatISO8601(record.date, environment.calendar) << '\n';
    return kExitOk;
}

const CommandRegistration logWaterCommand{
    "log-water", [](CLI::App& app) {
        auto options = std::make_shared<LogWaterOptions>();
        auto* command = app.add_subcommand(
            "log-water",
            "Log water as the water widget's button does: one record appended to WaterInteractiveData");
        command
            ->add_option("--unit", options->unit,
                         "The button's unit text: oz, ml or cups (anything else logs oz)")
            ->type_name("TEXT")
            ->required();
        command
            ->add_option("--amount", options->amount,
                         "The button's amount text, e.g. 250 (not a number logs 0)")
            ->type_name("TEXT")
            ->required();
        addNowOption(*command, options->now);
        addContainerOption(*command, options->container);
        setCommandAction(*command, "log-water", [options] { return run(*options); });
    }};

}  // namespace
}  // namespace qrv::host
