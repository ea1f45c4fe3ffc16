#include "Widget/Cache/WidgetDataCacheReaderEnvironment.hpp"

#include <cstdio>
#include <string>

#include "Widget/Cache/WidgetSettings.hpp"

namespace qrv::widget {

std::shared_ptr<const platform::Clock> systemClock() {
    // Aliasing constructor: points at the process-wide clock without owning it.
    return std::shared_ptr<const platform::Clock>(std::shared_ptr<const platform::Clock>{},
                                                  &platform::SystemClock::shared());
}

bool isSystemClock(const std::shared_ptr<const platform::Clock>& clock) {
    return clock.get() == &platform::SystemClock::shared();
}

WidgetDataCacheReaderEnvironment WidgetDataCacheReaderEnvironment::defaults() {
    return WidgetDataCacheReaderEnvironment{nullptr, platform::Calendar::current(), systemClock(),
                                            platform::DispatchQueues::defaults(), nullptr};
}

std::shared_ptr<platform::UserDefaults> WidgetDataCacheReaderEnvironment::resolvedStore() const {
    return store ? store : WidgetSettings::defaults();
}

void WidgetDataCacheReaderEnvironment::print(std::string_view line) const {
    if (printLine) {
        printLine(line);
        return;
    }
    // One write per line, so lines printed from several threads never interleave.
    std::string text(line);
    text += '\n';
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

}  // namespace qrv::widget
