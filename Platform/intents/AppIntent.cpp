#include "Platform/intents/AppIntent.hpp"

#include <map>
#include <mutex>

namespace qrv::platform {
namespace {

struct Registry {
    std::mutex mutex;
    std::map<std::string, IntentFactory, std::less<>> factories;
};

// Never destroyed, so registrations from other static initialisers and lookups
// from other static destructors are both safe.
Registry& registry() {
    static auto* r = new Registry;
    return *r;
}

}  // namespace

std::optional<std::string> IntentRequest::parameter(std::string_view name) const {
    for (const auto& p : parameters)
        if (p.name == name) return p.value;
    return std::nullopt;
}

void IntentRegistry::registerIntent(std::string name, IntentFactory factory) {
    auto& r = registry();
    std::lock_guard lock(r.mutex);
    r.factories.insert_or_assign(std::move(name), std::move(factory));
}

std::vector<std::string> IntentRegistry::registeredNames() {
    auto& r = registry();
    std::lock_guard lock(r.mutex);
    std::vector<std::string> names;
    for (const auto& [name, factory] : r.factories) names.push_back(name);
    return names;
}

std::unique_ptr<AppIntent> IntentRegistry::make(const IntentRequest& invocation) {
    IntentFactory factory;
    {
        auto& r = registry();
        std::lock_guard lock(r.mutex);
        const auto it = r.factories.find(invocation.intentName);
        if (it == r.factories.end()) return nullptr;
        factory = it->second;
    }
    return factory(invocation);
}

bool IntentRegistry::perform(const IntentRequest& invocation) {
    auto intent = make(invocation);
    if (!intent) return false;
    intent->perform();
    return true;
}

}  // namespace qrv::platform
