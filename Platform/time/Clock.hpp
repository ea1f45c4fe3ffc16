#pragma once
// Where "now" comes from. Everything that asks for the present moment takes a
// Clock, so tests and the host's --now pin it.
#include <atomic>

#include "Platform/time/Date.hpp"

namespace qrv::platform {

class Clock {
public:
    virtual ~Clock() = default;
    virtual Date now() const = 0;
};

class SystemClock final : public Clock {
public:
    Date now() const override;
    // One shared instance for the process.
    static const SystemClock& shared();
};

// A clock that says what it is told. Safe to read and set from several threads.
class ManualClock final : public Clock {
public:
    explicit ManualClock(Date start = Date{}) : now_(start.timeIntervalSinceReferenceDate) {}
    Date now() const override { return Date{now_.load()}; }
    void set(Date date) { now_.store(date.timeIntervalSinceReferenceDate); }
    void advance(double seconds) { now_.fetch_add(seconds); }

private:
    std::atomic<double> now_;
};

// A clock that never moves unless set: the same thing under the name tests reach for.
using FixedClock = ManualClock;

}  // namespace qrv::platform
