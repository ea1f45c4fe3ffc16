#include "Platform/time/Clock.hpp"

#include <chrono>

namespace qrv::platform {

Date SystemClock::now() const {
    auto since1970 = std::chrono::system_clock::now().time_since_epoch();
    return Date::fromUnix(std::chrono::duration<double>(since1970).count());
}

const SystemClock& SystemClock::shared() {
    static const SystemClock clock;
    return clock;
}

}  // namespace qrv::platform
