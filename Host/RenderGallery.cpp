#include "Host/RenderGallery.hpp"

#include <algorithm>
#include <fstream>
#include <memory>
#include <mutex>
#include <optional>

#include "Host/GalleryPage.hpp"
#include "Host/RenderWidget.hpp"
#include "Host/TapRules.hpp"
#include "Platform/dispatch/MainQueue.hpp"

namespace qrv::host {

using platform::WidgetFamily;
using widget::WidgetEntry;

bool namesWidget(const widget::WidgetConfiguration& widget, std::string_view name) {
    return widget.kind() == name || hostWidgetName(widget.kind()) == name;
}

namespace {

struct Request {
    const widget::WidgetConfiguration* widget = nullptr;
    widget::WidgetProviderRef provider;
    WidgetFamily family = WidgetFamily::systemSmall;
    platform::TimelineProviderContext context;
};

// Answers arrive on the main queue or on any other thread, once, twice or
// never; the first one counts.
struct Answers {
    std::mutex mutex;
    std::vector<std::optional<platform::Timeline<WidgetEntry>>> timelines;
    std::size_t answered = 0;

    bool complete() {
        std::lock_guard lock(mutex);
        return answered == timelines.size();
    }
};

std::vector<Request> requestsFor(const std::vector<widget::WidgetConfiguration>& widgets,
                                 const GalleryOptions& options,
                                 const widget::WidgetDataCacheReaderEnvironment& environment) {
    std::vector<Request> requests;
    for (const auto& widget : widgets) {
        if (!options.widgets.empty() &&
            std::none_of(options.widgets.begin(), options.widgets.end(),
                         [&](const std::string& name) { return namesWidget(widget, name); }))
            continue;
        // One provider per widget, as the widget makes it.
        auto provider = widget.makeProvider(environment);
        for (auto family : widget.supportedFamilies()) {
            if (!options.families.empty() &&
                std::find(options.families.begin(), options.families.end(), family) == options.families.end())
                continue;
            const auto size = options.device.size(family);
            if (!size) continue;
            if (std::none_of(options.appearances.begin(), options.appearances.end(),
                             [&](Appearance a) { return options.device.placement(a, family).has_value(); }))
                continue;
            requests.push_back({&widget, provider, family, {family, size->display, false}});
        }
    }
    return requests;
}

std::vector<std::optional<platform::Timeline<WidgetEntry>>> askAll(const std::vector<Request>& requests,
                                                                     std::chrono::milliseconds wait) {
    auto answers = std::make_shared<Answers>();
    answers->timelines.resize(requests.size());
    const auto main = platform::mainQueue();
    for (std::size_t i = 0; i < requests.size(); ++i) {
        requests[i].provider->getTimeline(requests[i].context,
                                          [answers, main, i](platform::Timeline<WidgetEntry> timeline) {
                                              {
                                                  std::lock_guard lock(answers->mutex);
                                                  if (answers->timelines[i]) return;
                                                  answers->timelines[i] = std::move(timeline);
                                                  ++answers->answered;
                                              }
                                              main->async([] {});  // wakes the waiting loop
                                          });
    }
    main->runUntil([&] { return answers->complete(); }, wait);
    std::lock_guard lock(answers->mutex);
    return answers->timelines;
}

void writeFile(const std::filesystem::path& path, const void* bytes, std::size_t count) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    if (file) file.write(static_cast<const char*>(bytes), static_cast<std::streamsize>(count));
    if (file) file.close();
    if (!file) throw GalleryError("cannot write " + path.string());
}

}  // namespace

GalleryResult renderGallery(const std::vector<widget::WidgetConfiguration>& widgets, const GalleryOptions& options,
                            const widget::WidgetDataCacheReaderEnvironment& environment, std::ostream& progress) {
    GalleryResult result;
    Manifest& manifest = result.manifest;
    manifest.device = options.device.name;
    manifest.systemVersion = options.device.systemVersion;
    manifest.now = environment.now();
    for (const auto& widget : widgets)
        manifest.widgets.push_back({widget.kind(), widget.displayName(), widget.description(),
                                    widget.supportedFamilies()});

    const auto requests = requestsFor(widgets, options, environment);
    if (requests.empty()) {
        std::string appearances;
        for (auto a : options.appearances)
            appearances += (appearances.empty() ? "" : ", ") + std::string(appearanceName(a));
        throw NothingToDraw(
            "none of the chosen widgets supports the chosen families in the appearances chosen (" +
            appearances + ") on the " + options.device.name + " with system version " +
            std::to_string(options.device.systemVersion) +
            " (tinted needs system 18; StandBy is the phone's, small widgets only)");
    }
    std::error_code error;
    std::filesystem::create_directories(options.out, error);
    if (error) throw GalleryError("cannot create " + options.out.string() + ": " + error.message());
    const auto timelines = askAll(requests, options.wait);

    const platform::Painter painter(widgetIconDirectory());
    const WidgetRenderer renderer(painter, options.device);
    for (std::size_t i = 0; i < requests.size(); ++i) {
        const auto& request = requests[i];
        const bool placeholder = !timelines[i] || timelines[i]->entries.empty();
        std::vector<std::pair<WidgetEntry, EntryMoment>> shown;
        if (placeholder) {
            shown.emplace_back(request.provider->placeholder(request.context), EntryMoment::now);
        } else {
            const auto& entries = timelines[i]->entries;
            const std::size_t current = *currentEntryIndex(entries, manifest.now);
            shown.emplace_back(entries[current], EntryMoment::now);
            if (current + 1 < entries.size()) shown.emplace_back(entries[current + 1], EntryMoment::nextMidnight);
        }
        const std::string name = hostWidgetName(request.widget->kind());
        for (const auto& [entry, moment] : shown) {
            for (auto appearance : options.appearances) {
                const auto placement = options.device.placement(appearance, request.family);
                if (!placement) continue;
                // The home screen appearance shows the lock-screen families as ever:
                // in the schemes asked for.
                auto schemes = options.schemes;
                if (placement->scheme && appearance != Appearance::homeScreen) schemes = {*placement->scheme};
                for (auto scheme : schemes) {
                    auto rendered = renderer.render(*request.widget, entry, request.family, scheme,
                                                    *placement, options.tint);
                    if (!rendered) continue;
                    if (placeholder) rendered->displayList = redactedDisplayList(rendered->displayList);
                    ManifestImage image;
                    image.kind = request.widget->kind();
                    image.family = request.family;
                    image.scheme = scheme;
                    image.appearance = appearance;
                    image.renderingMode = placement->renderingMode;
                    image.showsContainerBackground = placement->showsContainerBackground;
                    if (image.renderingMode == platform::WidgetRenderingMode::accented)
                        image.tint = hexColor(options.tint);
                    image.entryDate = entry.date();
                    image.moment = moment;
                    image.placeholder = placeholder;
                    const std::string stem = name + "-" + std::string(platform::name(request.family)) + "-" +
                                             std::string(schemeName(scheme)) +
                                             (appearance == Appearance::homeScreen
                                                  ? std::string()
                                                  : "-" + std::string(appearanceName(appearance))) +
                                             (moment == EntryMoment::nextMidnight ? "-midnight" : "");
                    image.png = stem + ".png";
                    image.svg = stem + ".svg";
                    image.describe(rendered->displayList,
                                   TapRules{request.family, options.device.systemVersion});

                    const auto png = painter.png(rendered->displayList, options.scale, scheme);
                    if (!png) throw GalleryError("cannot draw " + image.png + ": " + png.error());
                    writeFile(options.out / image.png, png.value().data(), png.value().size());
                    const auto svg = painter.svg(rendered->displayList, scheme);
                    if (!svg) throw GalleryError("cannot draw " + image.svg + ": " + svg.error());
                    writeFile(options.out / image.svg, svg.value().data(), svg.value().size());

                    progress << name << ' ' << platform::name(request.family) << ' ' << schemeName(scheme)
                             << ' '
                             << (appearance == Appearance::homeScreen
                                     ? ""
                                     : std::string(appearanceName(appearance)) + " ")
                             << momentName(moment) << (placeholder ? " (placeholder)" : "") << ": "
                             << image.png << '\n';
                    manifest.images.push_back(std::move(image));
                }
            }
        }
    }

    const std::string json = manifest.toJSON(environment.calendar);
    writeFile(options.out / "manifest.json", json.data(), json.size());
    const std::string page = galleryPage(manifest, environment.calendar, options.language);
    result.index = options.out / "index.html";
    writeFile(result.index, page.data(), page.size());
    return result;
}

}  // namespace qrv::host
