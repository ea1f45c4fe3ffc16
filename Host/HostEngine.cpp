#include "Host/HostEngine.hpp"

#include <algorithm>
#include <condition_variable>
#include <utility>

#include "Host/RenderWidget.hpp"
#include "Host/TapRules.hpp"
#include "Widget/Cache/WidgetSettings.hpp"

namespace qrv::host {

using platform::Date;
using widget::WidgetEntry;

// ---------------------------------------------------------------- HostClock

HostClock::HostClock(std::shared_ptr<const platform::Clock> base) : base_(std::move(base)) {}

Date HostClock::now() const {
    std::lock_guard lock(mutex_);
    switch (mode_) {
        case Mode::real:
            return base_->now();
        case Mode::shifted:
            return base_->now().addingTimeInterval(offset_);
        case Mode::stopped:
            return stopped_;
    }
    return base_->now();
}

void HostClock::runFrom(Date date) {
    std::lock_guard lock(mutex_);
    mode_ = Mode::shifted;
    offset_ = date.timeIntervalSince(base_->now());
}

void HostClock::stopAt(Date date) {
    std::lock_guard lock(mutex_);
    mode_ = Mode::stopped;
    stopped_ = date;
}

void HostClock::useRealTime() {
    std::lock_guard lock(mutex_);
    mode_ = Mode::real;
    offset_ = 0;
}

HostClock::Mode HostClock::mode() const {
    std::lock_guard lock(mutex_);
    return mode_;
}

double HostClock::offset() const {
    std::lock_guard lock(mutex_);
    switch (mode_) {
        case Mode::real:
            return 0;
        case Mode::shifted:
            return offset_;
        case Mode::stopped:
            return stopped_.timeIntervalSince(base_->now());
    }
    return 0;
}

std::string_view modeName(HostClock::Mode mode) {
    switch (mode) {
        case HostClock::Mode::real:
            return "real";
        case HostClock::Mode::shifted:
            return "shifted";
        case HostClock::Mode::stopped:
            return "stopped";
    }
    return "real";
}

// ---------------------------------------------------------------- engine

namespace {

struct Instance {
    const widget::WidgetConfiguration* widget = nullptr;
    widget::WidgetProviderRef provider;
    platform::TimelineProviderContext context;
    InstalledWidget shown;  // guarded by Core::mutex

    // Main queue only.
    std::optional<platform::Timeline<WidgetEntry>> timeline;
    std::optional<std::size_t> shownIndex;  // nothing: the placeholder
    bool drawn = false;
    bool timelineChanged = false;
    std::uint64_t generation = 0;
    bool waiting = false;
    std::optional<Date> requestedAt;
    std::optional<Date> nextReload;
};

// The date a timeline asks to be replaced at; nothing for "never".
std::optional<Date> reloadDate(const platform::Timeline<WidgetEntry>& timeline) {
    switch (timeline.policy.kind()) {
        case platform::TimelineReloadPolicy::Kind::atEnd: {
            std::optional<Date> last;
            for (const auto& entry : timeline.entries)
                if (!last || *last < entry.date()) last = entry.date();
            return last;
        }
        case platform::TimelineReloadPolicy::Kind::after:
            return timeline.policy.date();
        case platform::TimelineReloadPolicy::Kind::never:
            return std::nullopt;
    }
    return std::nullopt;
}

bool endsWith(std::string_view text, std::string_view suffix) {
    return text.size() >= suffix.size() && text.substr(text.size() - suffix.size()) == suffix;
}

// The store without the keys the widgets write while they read (installed
// flags, fetch events): what the app and the intents have stored.
platform::UserDefaults::Dictionary recordsIn(platform::UserDefaults::Dictionary all) {
    for (auto it = all.begin(); it != all.end();) {
        const std::string_view key = it->first;
        if (key == widget::WidgetStoreKeys::widgetEvents || endsWith(key, "WidgetInstalled"))
            it = all.erase(it);
        else
            ++it;
    }
    return all;
}

}  // namespace

struct HostEngine::Core : std::enable_shared_from_this<Core> {
    Core(std::vector<widget::WidgetConfiguration> configurations, widget::WidgetDataCacheReaderEnvironment env,
         std::shared_ptr<HostClock> hostClock, const platform::Painter& painterRef, HostEngineOptions engineOptions)
        : widgets(std::move(configurations)),
          environment(std::move(env)),
          clock(std::move(hostClock)),
          painter(painterRef),
          options(std::move(engineOptions)),
          renderer(painter, options.device) {
        if (!options.runIntent) {
            options.runIntent = [runClock = clock](const IntentRequest& intent) { performIntent(intent, *runClock); };
        }
        for (const auto& configuration : widgets) {
            // One provider per widget serves all its families, as the widget makes it.
            auto provider = configuration.makeProvider(environment);
            for (auto family : configuration.supportedFamilies()) {
                const auto size = options.device.size(family);
                if (!size) continue;
                Instance instance;
                instance.widget = &configuration;
                instance.provider = provider;
                instance.context = platform::TimelineProviderContext{family, size->display, false};
                instance.shown.id = hostWidgetName(configuration.kind()) + "-" + std::string(platform::name(family));
                instance.shown.kind = configuration.kind();
                instance.shown.displayName = configuration.displayName();
                instance.shown.family = family;
                instances.push_back(std::move(instance));
            }
        }
        // The home screen first, then the lock screen, each in gallery order.
        std::stable_partition(instances.begin(), instances.end(),
                              [](const Instance& each) { return !platform::isAccessory(each.shown.family); });
    }

    std::vector<widget::WidgetConfiguration> widgets;
    widget::WidgetDataCacheReaderEnvironment environment;
    std::shared_ptr<HostClock> clock;
    const platform::Painter& painter;
    HostEngineOptions options;
    WidgetRenderer renderer;

    mutable std::mutex paintMutex;  // the painter is used by one thread at a time
    mutable std::mutex mutex;       // guards each Instance::shown and `version`
    mutable std::condition_variable changed;  // notified whenever `version` goes up
    std::vector<Instance> instances;
    std::uint64_t version = 0;
    std::optional<platform::UserDefaults::Dictionary> lastRecords;  // main queue only

    void onMain(std::function<void(Core&)> work) {
        environment.queues.main->async([weak = weak_from_this(), work = std::move(work)] {
            if (auto core = weak.lock()) work(*core);
        });
    }

    std::optional<std::size_t> indexOf(const std::string& id) const {
        for (std::size_t i = 0; i < instances.size(); ++i)
            if (instances[i].shown.id == id) return i;
        return std::nullopt;
    }

    void bump() {
        std::lock_guard lock(mutex);
        ++version;
        changed.notify_all();
    }

    void draw(Instance& instance, const WidgetEntry& entry, bool placeholder) {
        InstalledWidget next;
        {
            std::lock_guard lock(mutex);
            next = instance.shown;
        }
        next.pictures.clear();
        bool described = false;
        for (auto scheme : options.schemes) {
            std::optional<RenderedWidget> rendered;
            {
                std::lock_guard paint(paintMutex);
                rendered = renderer.render(*instance.widget, entry, instance.shown.family, scheme);
            }
            if (!rendered) continue;
            if (!described) {
                next.image = ManifestImage{};
                next.image.kind = instance.shown.kind;
                next.image.family = instance.shown.family;
                next.image.scheme = scheme;
                next.image.entryDate = entry.date();
                next.image.placeholder = placeholder;
                next.image.describe(rendered->displayList,
                                    TapRules{instance.shown.family, options.device.systemVersion});
                described = true;
            }
            next.pictures[scheme] = std::make_shared<const platform::DisplayList>(std::move(rendered->displayList));
        }
        next.entry = std::make_shared<const WidgetEntry>(entry);
        next.placeholder = placeholder;
        next.entryDate = entry.date();
        next.entryIndex = instance.shownIndex.value_or(0);
        next.entryCount = instance.timeline ? instance.timeline->entries.size() : 0;
        ++next.version;
        std::lock_guard lock(mutex);
        instance.shown = std::move(next);
        ++version;
        changed.notify_all();
    }

    // Shows the entry that is current at `now`, drawing it when it changed.
    void refresh(Instance& instance, Date now) {
        std::optional<std::size_t> current;
        if (instance.timeline && !instance.timeline->entries.empty())
            current = currentEntryIndex(instance.timeline->entries, now);
        if (instance.drawn && current == instance.shownIndex && !instance.timelineChanged) return;
        instance.shownIndex = current;
        instance.timelineChanged = false;
        instance.drawn = true;
        if (current)
            draw(instance, instance.timeline->entries[*current], false);
        else
            draw(instance, instance.provider->placeholder(instance.context), true);
    }

    void publishSchedule(Instance& instance) {
        std::lock_guard lock(mutex);
        instance.shown.nextReload = instance.nextReload;
        instance.shown.waitingForTimeline = instance.waiting;
        instance.shown.timelineRequests = instance.generation;
        ++version;
        changed.notify_all();
    }

    void request(std::size_t index) {
        auto& instance = instances[index];
        const auto generation = ++instance.generation;
        instance.waiting = true;
        instance.requestedAt = clock->now();
        publishSchedule(instance);
        auto weak = weak_from_this();
        auto main = environment.queues.main;
        instance.provider->getTimeline(
            instance.context, [weak, main, index, generation](platform::Timeline<WidgetEntry> timeline) {
                // Answers may come from any thread: hand them to the main queue.
                main->async([weak, index, generation, timeline = std::move(timeline)] {
                    if (auto core = weak.lock()) core->accept(index, generation, timeline);
                });
            });
    }

    void accept(std::size_t index, std::uint64_t generation, const platform::Timeline<WidgetEntry>& timeline) {
        auto& instance = instances[index];
        // A second answer, or one to a request that a newer one replaced.
        if (generation != instance.generation || !instance.waiting) return;
        instance.waiting = false;
        if (!timeline.entries.empty()) {
            instance.timeline = timeline;
            instance.timelineChanged = true;
            instance.nextReload = reloadDate(timeline);
        }
        publishSchedule(instance);
        refresh(instance, clock->now());
    }

    bool reloadIsDue(const Instance& instance, Date now) const {
        if (!instance.nextReload) return false;
        if (instance.waiting && instance.requestedAt &&
            now.timeIntervalSince(*instance.requestedAt) < options.unansweredRequestTimeout)
            return false;
        Date due = *instance.nextReload;
        if (instance.requestedAt) due = std::max(due, instance.requestedAt->addingTimeInterval(options.minimumPolicyInterval));
        return now >= due;
    }

    void tick() {
        const Date now = clock->now();
        for (std::size_t i = 0; i < instances.size(); ++i) {
            refresh(instances[i], now);
            if (reloadIsDue(instances[i], now)) request(i);
        }
    }

    void reloadAll() {
        for (std::size_t i = 0; i < instances.size(); ++i) request(i);
    }

    platform::UserDefaults::Dictionary records() const {
        const auto store = environment.resolvedStore();
        return store ? recordsIn(store->dictionaryRepresentation()) : platform::UserDefaults::Dictionary{};
    }

    void storeChanged() {
        auto now = records();
        if (lastRecords && *lastRecords == now) return;
        lastRecords = std::move(now);
        reloadAll();
    }

    void runIntent(const std::string& id, IntentRequest invocation, std::function<void(IntentOutcome)> done) {
        const auto index = indexOf(id);
        if (!index) {
            done(IntentOutcome{IntentOutcome::Status::unknownWidget, "no widget " + id + " is installed"});
            return;
        }
        bool hasButton = false;
        {
            std::lock_guard lock(mutex);
            for (const auto& button : instances[*index].shown.image.buttons)
                hasButton = hasButton || button.intent.intent == invocation.intentName;
        }
        if (!hasButton) {
            done(IntentOutcome{IntentOutcome::Status::noSuchButton,
                  "the widget " + id + " has no button here that runs " + invocation.intentName});
            return;
        }
        if (!intentParameterNames(invocation.intentName)) {
            done(IntentOutcome{IntentOutcome::Status::unknownIntent, "no intent is called " + invocation.intentName});
            return;
        }
        auto weak = weak_from_this();
        auto main = environment.queues.main;
        environment.queues.background->async(
            [weak, main, run = options.runIntent, invocation = std::move(invocation), index = *index,
             done = std::move(done)] {
                run(invocation);
                // The platform reloads the widget that was tapped once the intent
                // has returned.
                main->async([weak, index, done] {
                    auto core = weak.lock();
                    if (!core) return;
                    core->request(index);
                    done(IntentOutcome{IntentOutcome::Status::ran, {}});
                });
            });
    }
};

HostEngine::HostEngine(std::vector<widget::WidgetConfiguration> widgets,
                       widget::WidgetDataCacheReaderEnvironment environment, std::shared_ptr<HostClock> clock,
                       const platform::Painter& painter, HostEngineOptions options)
    : core_(std::make_shared<Core>(std::move(widgets), std::move(environment), std::move(clock), painter,
                                   std::move(options))) {}

HostEngine::~HostEngine() = default;

void HostEngine::start() {
    core_->onMain([](Core& core) {
        core.lastRecords = core.records();
        const Date now = core.clock->now();
        for (auto& instance : core.instances) core.refresh(instance, now);
        core.reloadAll();
    });
}

void HostEngine::tick() {
    core_->onMain([](Core& core) { core.tick(); });
}

void HostEngine::storeChanged() {
    core_->onMain([](Core& core) { core.storeChanged(); });
}

void HostEngine::reloadAll() {
    core_->onMain([](Core& core) { core.reloadAll(); });
}

void HostEngine::reload(const std::string& id) {
    core_->onMain([id](Core& core) {
        if (const auto index = core.indexOf(id)) core.request(*index);
    });
}

void HostEngine::setClock(std::optional<platform::Date> date, bool running) {
    if (!date)
        core_->clock->useRealTime();
    else if (running)
        core_->clock->runFrom(*date);
    else
        core_->clock->stopAt(*date);
    core_->onMain([](Core& core) {
        core.bump();
        core.tick();
        core.reloadAll();
    });
}

void HostEngine::runIntent(const std::string& id, IntentRequest invocation, std::function<void(IntentOutcome)> done) {
    core_->onMain([id, invocation = std::move(invocation), done = std::move(done)](Core& core) mutable {
        core.runIntent(id, std::move(invocation), std::move(done));
    });
}

HostSnapshot HostEngine::snapshot() const {
    HostSnapshot snapshot;
    snapshot.now = core_->clock->now();
    snapshot.clockMode = core_->clock->mode();
    std::lock_guard lock(core_->mutex);
    snapshot.version = core_->version;
    for (const auto& instance : core_->instances) snapshot.widgets.push_back(instance.shown);
    return snapshot;
}

std::uint64_t HostEngine::version() const {
    std::lock_guard lock(core_->mutex);
    return core_->version;
}

std::uint64_t HostEngine::waitForChange(std::uint64_t seen, std::chrono::milliseconds timeout) const {
    std::unique_lock lock(core_->mutex);
    core_->changed.wait_for(lock, timeout, [&] { return core_->version != seen; });
    return core_->version;
}

const DeviceProfile& HostEngine::device() const { return core_->options.device; }
const std::shared_ptr<HostClock>& HostEngine::clock() const { return core_->clock; }
const platform::Calendar& HostEngine::calendar() const { return core_->environment.calendar; }
const std::vector<widget::WidgetConfiguration>& HostEngine::widgets() const { return core_->widgets; }

namespace {
std::shared_ptr<const platform::DisplayList> pictureOf(const std::vector<Instance>& instances, std::mutex& mutex,
                                                       const std::string& id, platform::ColorScheme scheme) {
    std::lock_guard lock(mutex);
    for (const auto& instance : instances) {
        if (instance.shown.id != id) continue;
        const auto found = instance.shown.pictures.find(scheme);
        return found == instance.shown.pictures.end() ? nullptr : found->second;
    }
    return nullptr;
}
}  // namespace

platform::RenderResult<std::vector<std::uint8_t>> HostEngine::png(const std::string& id, platform::ColorScheme scheme,
                                                                  double scale) const {
    const auto picture = pictureOf(core_->instances, core_->mutex, id, scheme);
    if (!picture) return platform::RenderError{"no picture of " + id};
    std::lock_guard paint(core_->paintMutex);
    return core_->painter.png(*picture, scale, scheme);
}

platform::RenderResult<std::vector<std::uint8_t>> HostEngine::png(const std::string& id, platform::ColorScheme scheme,
                                                                  double scale, Appearance appearance,
                                                                  platform::Rgba tint) const {
    if (appearance == Appearance::homeScreen) return png(id, scheme, scale);
    const widget::WidgetConfiguration* widget = nullptr;
    std::shared_ptr<const WidgetEntry> entry;
    platform::WidgetFamily family{};
    {
        std::lock_guard lock(core_->mutex);
        for (const auto& instance : core_->instances)
            if (instance.shown.id == id) {
                widget = instance.widget;
                entry = instance.shown.entry;
                family = instance.shown.family;
            }
    }
    if (!widget || !entry) return platform::RenderError{"no picture of " + id};
    const auto placement = core_->options.device.placement(appearance, family);
    if (!placement)
        return platform::RenderError{"the " + core_->options.device.name + " does not show " + id + " in the " +
                                     std::string(appearanceName(appearance)) + " appearance"};
    const auto drawnScheme = placement->scheme.value_or(scheme);
    std::lock_guard paint(core_->paintMutex);
    auto rendered = core_->renderer.render(*widget, *entry, family, drawnScheme, *placement, tint);
    if (!rendered) return platform::RenderError{"no picture of " + id};
    return core_->painter.png(rendered->displayList, scale, drawnScheme);
}

platform::RenderResult<std::string> HostEngine::svg(const std::string& id, platform::ColorScheme scheme) const {
    const auto picture = pictureOf(core_->instances, core_->mutex, id, scheme);
    if (!picture) return platform::RenderError{"no picture of " + id};
    std::lock_guard paint(core_->paintMutex);
    return core_->painter.svg(*picture, scheme);
}

}  // namespace qrv::host
