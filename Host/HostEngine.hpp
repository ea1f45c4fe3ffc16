#pragma once
// The live widget host: what the platform's widget host does for the widgets
// that are installed, while the program runs.
//
//   - every widget the bundle offers, in every family the device shows, is one
//     installed widget with its own timeline;
//   - each shows the entry whose date is the latest not after now (the first
//     while all lie ahead), and the placeholder until its first timeline comes;
//   - a new timeline is asked for when the reload policy says so ("at end":
//     once the last entry's date has come), after a button's intent has run
//     (that widget only, as on the phone), when the app changes its records in
//     the store (every widget), and when the user moves the host's clock;
//   - a provider may answer late, twice or never: only the first answer to the
//     latest request counts, and an empty timeline changes nothing.
//
// All bookkeeping runs on the main queue: the public calls queue their work
// there and return. Answers from providers are moved to the main queue before
// they touch anything. What the page shows is read through snapshot() from any
// thread. Each widget carries a version that goes up whenever its picture
// changes, so a viewer knows what to fetch again.
#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "Host/DeviceProfile.hpp"
#include "Host/Manifest.hpp"
#include "Platform/drawing/CairoPainter.hpp"
#include "Host/HostEngineIntents.hpp"
#include "Platform/time/Clock.hpp"
#include "Widget/Cache/WidgetDataCacheReaderEnvironment.hpp"
#include "Widget/Widgets/WidgetConfiguration.hpp"

namespace qrv::host {

// The host's "now": the clock it is given (the system clock) unless the user
// moved it, either to run on from another moment or to stand still at one.
// Safe to read and set from any thread.
class HostClock final : public platform::Clock {
  public:
    enum class Mode { real, shifted, stopped };

    explicit HostClock(std::shared_ptr<const platform::Clock> base);

    platform::Date now() const override;
    // From now on the clock reads `date` and runs on from there.
    void runFrom(platform::Date date);
    // The clock reads `date` until told otherwise.
    void stopAt(platform::Date date);
    void useRealTime();

    Mode mode() const;
    // Seconds the clock is ahead of the real one (negative when behind).
    double offset() const;

  private:
    std::shared_ptr<const platform::Clock> base_;
    mutable std::mutex mutex_;
    Mode mode_ = Mode::real;
    double offset_ = 0;
    platform::Date stopped_{};
};

std::string_view modeName(HostClock::Mode mode);

// One installed widget as the page sees it: a value, copied out under a lock.
struct InstalledWidget {
    std::string id;    // "water-systemSmall": the host's short name and the family
    std::string kind;  // "com.qrv.widget.Water"
    std::string displayName;
    platform::WidgetFamily family = platform::WidgetFamily::systemSmall;
    std::uint64_t version = 0;  // goes up whenever the picture changes
    bool placeholder = true;    // no timeline has come yet
    std::optional<platform::Date> entryDate;
    std::size_t entryIndex = 0;
    std::size_t entryCount = 0;
    std::optional<platform::Date> nextReload;  // when the policy asks again
    bool waitingForTimeline = false;
    std::uint64_t timelineRequests = 0;
    // Texts, tap targets and size of the current picture (in screen points).
    ManifestImage image;
    // The current picture in each colour scheme the host draws.
    std::map<platform::ColorScheme, std::shared_ptr<const platform::DisplayList>> pictures;
    // The entry those pictures show, to draw it in other appearances on demand.
    std::shared_ptr<const widget::WidgetEntry> entry;

    bool isOnLockScreen() const { return platform::isAccessory(family); }
};

struct HostSnapshot {
    std::uint64_t version = 0;  // goes up whenever anything below changes
    platform::Date now;
    HostClock::Mode clockMode = HostClock::Mode::real;
    std::vector<InstalledWidget> widgets;
};

// What became of an intent a viewer asked to run.
struct IntentOutcome {
    enum class Status { ran, unknownWidget, noSuchButton, unknownIntent };
    Status status = Status::ran;
    std::string message;
};

struct HostEngineOptions {
    DeviceProfile device = DeviceProfile::phone();
    std::vector<platform::ColorScheme> schemes{platform::ColorScheme::light, platform::ColorScheme::dark};
    // The soonest the reload policy may ask again after a request: a provider
    // whose timeline ends at once would otherwise be asked on every tick.
    double minimumPolicyInterval = 5 * 60;
    // A request unanswered this long no longer holds back the reload policy.
    double unansweredRequestTimeout = 15 * 60;
    // Runs an intent; by default through the intent registry, on the host's clock.
    std::function<void(const IntentRequest&)> runIntent;
};

class HostEngine {
  public:
    // `environment` is what the providers get; its clock must be `clock`, and
    // its main queue is where the engine works. `painter` must outlive the engine.
    HostEngine(std::vector<widget::WidgetConfiguration> widgets, widget::WidgetDataCacheReaderEnvironment environment,
               std::shared_ptr<HostClock> clock, const platform::Painter& painter, HostEngineOptions options = {});
    ~HostEngine();
    HostEngine(const HostEngine&) = delete;
    HostEngine& operator=(const HostEngine&) = delete;

    // Draws every widget's placeholder and asks every provider for its timeline.
    void start();
    // Lets time pass: switches entries whose date has come, asks again where the
    // policy says so. The program calls it a few times a second.
    void tick();
    // The app changed the store: every widget asks again if the records differ
    // from what the widgets last read (the widgets' own bookkeeping keys do not
    // count, or every read would cause another).
    void storeChanged();
    void reloadAll();
    void reload(const std::string& id);
    // Moves the clock (nothing: back to real time) and reloads every widget, as
    // the phone does after a significant time change.
    void setClock(std::optional<platform::Date> date, bool running);

    // Runs the intent of a button on widget `id` with named `parameters`, on the
    // background queue, then reloads that widget. `done` is called on the main
    // queue once the reload has been asked for (or at once with the reason the
    // intent was refused).
    void runIntent(const std::string& id, IntentRequest intent, std::function<void(IntentOutcome)> done);

    HostSnapshot snapshot() const;
    std::uint64_t version() const;
    // Waits, from any thread, until the version is no longer `seen` or `timeout`
    // has passed; answers the version then.
    std::uint64_t waitForChange(std::uint64_t seen, std::chrono::milliseconds timeout) const;
    const DeviceProfile& device() const;
    const std::shared_ptr<HostClock>& clock() const;
    const platform::Calendar& calendar() const;
    std::vector<widget::WidgetConfiguration> const& widgets() const;

    // The picture of widget `id` in `scheme`, encoded while no other drawing runs.
    platform::RenderResult<std::vector<std::uint8_t>> png(const std::string& id, platform::ColorScheme scheme,
                                                          double scale) const;
    // The same in another appearance (drawn when asked, from the entry shown:
    // the page switches appearances without the host drawing them all);
    // an error where the device does not show the widget's family there.
    platform::RenderResult<std::vector<std::uint8_t>> png(const std::string& id, platform::ColorScheme scheme,
                                                          double scale, Appearance appearance,
                                                          platform::Rgba tint) const;
    platform::RenderResult<std::string> svg(const std::string& id, platform::ColorScheme scheme) const;

  private:
    struct Core;
    std::shared_ptr<Core> core_;
};

}  // namespace qrv::host
