#pragma once
// Actions the widget host runs for a widget's button: an intent is a name, an
// ordered list of text parameters and a perform operation. A button carries an
// IntentRequest (which intent, with which texts); the host turns it back into
// the intent through the registry and performs it, then reloads the widget.
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qrv::platform {

struct IntentParameter {
    std::string name;   // the field's name, e.g. "waterValue"
    std::string value;  // its text
    friend bool operator==(const IntentParameter&, const IntentParameter&) = default;
};

// Everything needed to run an intent again later, possibly in another process.
struct IntentRequest {
    std::string intentName;
    std::vector<IntentParameter> parameters;  // in the intent's declaration order

    // The value of the parameter called `name`, if the invocation carries it.
    std::optional<std::string> parameter(std::string_view name) const;
    friend bool operator==(const IntentRequest&, const IntentRequest&) = default;
};

class AppIntent {
  public:
    virtual ~AppIntent() = default;

    virtual std::string intentName() const = 0;
    // The parameters with their current texts, in declaration order.
    virtual std::vector<IntentParameter> parameters() const = 0;
    // Does the intent's work. Bad parameter texts are the intent's to handle;
    // nothing is thrown to the host.
    virtual void perform() = 0;

    IntentRequest invocation() const { return IntentRequest{intentName(), parameters()}; }

  protected:
    AppIntent() = default;
    AppIntent(const AppIntent&) = default;
    AppIntent& operator=(const AppIntent&) = default;
};

// Makes an intent from an invocation's parameters; a parameter that is missing
// takes the intent's own default.
using IntentFactory = std::function<std::unique_ptr<AppIntent>(const IntentRequest&)>;

// The process's intents by name. Registering a name again replaces its factory.
class IntentRegistry {
  public:
    static void registerIntent(std::string name, IntentFactory factory);
    static std::vector<std::string> registeredNames();
    // Nothing when no intent of that name is registered.
    static std::unique_ptr<AppIntent> make(const IntentRequest& invocation);
    // make + perform; false when the name is unknown.
    static bool perform(const IntentRequest& invocation);
};

// For a static in the intent's own source file: registers it at start-up.
struct IntentRegistration {
    IntentRegistration(std::string name, IntentFactory factory) {
        IntentRegistry::registerIntent(std::move(name), std::move(factory));
    }
};

}  // namespace qrv::platform
