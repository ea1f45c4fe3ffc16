#include "Widget/Cache/WidgetSettings.hpp"

#include <mutex>
#include <stdexcept>
#include <utility>

namespace qrv::widget {

namespace {

struct SharedStore {
    std::mutex mutex;
    std::optional<std::filesystem::path> container;
    std::shared_ptr<platform::UserDefaults> defaults;
};

SharedStore& sharedStore() {
    static SharedStore store;
    return store;
}

}  // namespace

std::shared_ptr<platform::UserDefaults> WidgetSettings::open(
    const std::optional<std::filesystem::path>& containerDir) {
    auto suite = containerDir ? platform::UserDefaults::openSuite(widgetsSuiteName, *containerDir)
                              : platform::UserDefaults::suite(widgetsSuiteName);
    // Without the app group the extension keeps its flags in its own defaults; the
    // main app's records are not there, so reads then simply find no data.
    return suite ? suite : platform::UserDefaults::standard();
}

std::shared_ptr<platform::UserDefaults> WidgetSettings::defaults() {
    SharedStore& shared = sharedStore();
    std::lock_guard guard(shared.mutex);
    if (!shared.defaults) {
        shared.defaults = open(shared.container);
    }
    return shared.defaults;
}

void WidgetSettings::useContainer(std::filesystem::path containerDir) {
    SharedStore& shared = sharedStore();
    std::lock_guard guard(shared.mutex);
    if (shared.defaults) {
        if (shared.container == containerDir) {
            return;
        }
        throw std::logic_error("the shared store is already open at " + shared.defaults->filePath().string() +
                               "; choose the container before first use");
    }
    shared.container = std::move(containerDir);
}

}  // namespace qrv::widget
