#include "Host/RenderGallery.hpp"

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <fstream>
#include <memory>
#include <mutex>
#include <optional>
#include <sstream>
#include <thread>

#include "Host/GalleryPage.hpp"
#include "Host/ProviderRequest.hpp"
#include "Host/RenderWidget.hpp"
#include "Host/TapRules.hpp"
#include "Platform/dispatch/MainQueue.hpp"
#include "Platform/dispatch/ThreadPoolExecutor.hpp"
#include "Platform/locale/Locale.hpp"

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
                                                                   std::chrono::milliseconds wait,
                                                                   const platform::Executor* background) {
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
    runUntilAnswered(
        *main, background, [&] { return answers->complete(); }, wait);
    std::lock_guard lock(answers->mutex);
    return answers->timelines;
}

void writeFile(const std::filesystem::path& path, const void* bytes, std::size_t count) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    if (file) file.write(static_cast<const char*>(bytes), static_cast<std::streamsize>(count));
    if (file) file.close();
    if (!file) throw GalleryError("cannot write " + path.string());
}

// Paints and encodes on a pool of threads, each with a painter of its own
// (a painter's text engine and icon cache are not shared between threads).
// The first failure is kept and thrown by wait().
class DrawingPool {
  public:
    DrawingPool(unsigned workers, bool progressLine, std::ostream& progress)
        : progressLine_(progressLine),
          progress_(progress),
          pool_(workers == 0 ? std::max(1u, std::thread::hardware_concurrency()) : workers) {}

    void draw(platform::DisplayList list, platform::ColorScheme scheme, double scale, std::filesystem::path png,
              std::filesystem::path svg, std::string line) {
        {
            std::lock_guard lock(mutex_);
            ++queued_;
        }
        pool_.async([this, list = std::move(list), scheme, scale, png = std::move(png), svg = std::move(svg),
                     line = std::move(line)] {
            std::exception_ptr failure;
            try {
                thread_local const platform::Painter painter(widgetIconDirectory());
                const auto pngBytes = painter.png(list, scale, scheme);
                if (!pngBytes) throw GalleryError("cannot draw " + png.string() + ": " + pngBytes.error());
                writeFile(png, pngBytes.value().data(), pngBytes.value().size());
                const auto svgText = painter.svg(list, scheme);
                if (!svgText) throw GalleryError("cannot draw " + svg.string() + ": " + svgText.error());
                writeFile(svg, svgText.value().data(), svgText.value().size());
            } catch (...) {
                failure = std::current_exception();
            }
            std::lock_guard lock(mutex_);
            ++done_;
            if (failure && !failure_) failure_ = failure;
            if (!progressLine_) {
                progress_ << line << '\n';
            } else if (const auto now = std::chrono::steady_clock::now();
                       now - start_ > std::chrono::seconds(1) && now - shownAt_ > std::chrono::milliseconds(100)) {
                progress_ << "\rrender: " << done_ << " of " << queued_ << " images drawn" << std::flush;
                shownAt_ = now;
            }
            finished_.notify_all();
        });
    }

    // Waits for everything queued. On a terminal, a run of more than a second
    // has kept one line counting the images; it ends with the total.
    void wait() {
        std::unique_lock lock(mutex_);
        finished_.wait(lock, [this] { return done_ == queued_; });
        if (shownAt_ != std::chrono::steady_clock::time_point{})
            progress_ << "\rrender: " << done_ << " of " << queued_ << " images drawn\n" << std::flush;
        if (failure_) std::rethrow_exception(failure_);
    }

  private:
    const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    std::chrono::steady_clock::time_point shownAt_;  // of the progress line; epoch: not shown
    bool progressLine_;
    std::ostream& progress_;
    std::mutex mutex_;
    std::condition_variable finished_;
    std::size_t queued_ = 0, done_ = 0;
    std::exception_ptr failure_;
    // Last, so that it is joined first, while the rest is still there.
    platform::ThreadPoolExecutor pool_;
};

// What one cell draws: each request's entry shown now and, when the timeline
// has one, the entry that takes over at the next midnight, in each scheme.
struct Shown {
    const Request* request;
    WidgetEntry entry;
    EntryMoment moment;
    bool placeholder;
};

std::vector<Shown> shownEntries(const std::vector<Request>& requests,
                                const std::vector<std::optional<platform::Timeline<WidgetEntry>>>& timelines,
                                platform::Date now) {
    std::vector<Shown> shown;
    for (std::size_t i = 0; i < requests.size(); ++i) {
        const bool placeholder = !timelines[i] || timelines[i]->entries.empty();
        if (placeholder) {
            shown.push_back({&requests[i], requests[i].provider->placeholder(requests[i].context), EntryMoment::now,
                             true});
            continue;
        }
        const auto& entries = timelines[i]->entries;
        const std::size_t current = *currentEntryIndex(entries, now);
        shown.push_back({&requests[i], entries[current], EntryMoment::now, false});
        if (current + 1 < entries.size())
            shown.push_back({&requests[i], entries[current + 1], EntryMoment::nextMidnight, false});
    }
    return shown;
}

std::string relative(const std::filesystem::path& folder, const std::string& name) {
    return folder.empty() ? name : (folder / name).generic_string();
}

// A page for each cell folder, with image paths relative to it, and at the
// top either that page (one folder) or links to them.
void writePages(const Manifest& manifest, const std::vector<GalleryCell>& cells, const GalleryOptions& options,
                const platform::Calendar& calendar, GalleryResult& result) {
    std::vector<std::filesystem::path> folders;
    for (const auto& cell : cells)
        if (std::find(folders.begin(), folders.end(), cell.folder) == folders.end()) folders.push_back(cell.folder);
    for (const auto& folder : folders) {
        Manifest page = manifest;
        page.images.clear();
        const std::string prefix = folder.empty() ? "" : folder.generic_string() + "/";
        for (const auto& image : manifest.images) {
            if (!image.png.starts_with(prefix) || image.png.find('/', prefix.size()) != std::string::npos) continue;
            auto copy = image;
            copy.png = image.png.substr(prefix.size()), copy.svg = image.svg.substr(prefix.size());
            page.device = image.device, page.systemVersion = image.systemVersion, page.locale = image.locale;
            page.images.push_back(std::move(copy));
        }
        // The page is in the language of the widgets it shows.
        const std::string language =
            page.locale.empty() ? options.language : platform::Locale(page.locale).languageCode();
        const std::string html = galleryPage(page, calendar, language);
        writeFile(options.out / folder / "index.html", html.data(), html.size());
    }
    result.index = options.out / "index.html";
    if (folders.size() == 1 && folders.front().empty()) return;
    std::string html = "<!DOCTYPE html>\n<html lang=\"" + escapeHTML(options.language) +
                       "\">\n<head>\n<meta charset=\"utf-8\">\n<title>Widget galleries</title>\n</head>\n<body>\n"
                       "<h1>Widget galleries</h1>\n<ul>\n";
    for (const auto& folder : folders)
        html += "<li><a href=\"" + escapeHTML(folder.generic_string()) + "/index.html\">" +
                escapeHTML(folder.generic_string()) + "</a></li>\n";
    html += "</ul>\n</body>\n</html>\n";
    writeFile(result.index, html.data(), html.size());
}

}  // namespace

GalleryResult renderGallery(const std::vector<widget::WidgetConfiguration>& widgets, const GalleryOptions& options,
                            const widget::WidgetDataCacheReaderEnvironment& environment, std::ostream& progress) {
    GalleryCell cell;
    cell.device = options.device;
    cell.schemes = options.schemes;
    cell.widgets = widgets;
    return renderMatrix({cell}, options, environment, progress);
}

GalleryResult renderMatrix(const std::vector<GalleryCell>& cells, const GalleryOptions& options,
                           const widget::WidgetDataCacheReaderEnvironment& environment, std::ostream& progress) {
    GalleryResult result;
    Manifest& manifest = result.manifest;
    if (cells.empty()) throw NothingToDraw("the render matrix has no cells");
    manifest.device = cells.front().device.name;
    manifest.systemVersion = cells.front().device.systemVersion;
    manifest.now = environment.now();
    for (const auto& cell : cells)
        for (const auto& widget : cell.widgets)
            if (std::none_of(manifest.widgets.begin(), manifest.widgets.end(),
                             [&](const ManifestWidget& known) { return known.kind == widget.kind(); }))
                manifest.widgets.push_back({widget.kind(), widget.displayName(), widget.description(),
                                            widget.supportedFamilies()});

    // Providers are asked cell by cell, as the host asks them; what each
    // cell shows is recorded before anything is drawn, so that nothing is
    // written when a cell has nothing to draw.
    struct CellWork {
        std::vector<Request> requests;
        std::string locale;
    };
    std::vector<CellWork> work;
    for (const auto& cell : cells) {
        std::optional<platform::ScopedLocaleOverride> locale;
        if (!cell.locale.empty()) locale.emplace(platform::Locale(cell.locale));
        GalleryOptions cellOptions = options;
        cellOptions.device = cell.device;
        work.push_back({requestsFor(cell.widgets, cellOptions, environment), platform::Locale::current().identifier()});
        if (work.back().requests.empty()) {
            std::string appearances;
            for (auto a : options.appearances)
                appearances += (appearances.empty() ? "" : ", ") + std::string(appearanceName(a));
            throw NothingToDraw(
                "none of the chosen widgets supports the chosen families in the appearances chosen (" +
                appearances + ") on the " + cell.device.name + " with system version " +
                std::to_string(cell.device.systemVersion) +
                " (tinted needs system 18; StandBy is the phone's, small widgets only)");
        }
    }
    manifest.locale = work.front().locale;
    std::error_code error;
    for (const auto& cell : cells) {
        std::filesystem::create_directories(options.out / cell.folder, error);
        if (error) throw GalleryError("cannot create " + (options.out / cell.folder).string() + ": " + error.message());
    }

    const platform::Painter painter(widgetIconDirectory());
    DrawingPool pool(options.workers, options.progressLine, progress);
    for (std::size_t c = 0; c < cells.size(); ++c) {
        const auto& cell = cells[c];
        std::optional<platform::ScopedLocaleOverride> locale;
        if (!cell.locale.empty()) locale.emplace(platform::Locale(cell.locale));
        const WidgetRenderer renderer(painter, cell.device);
        const auto timelines = askAll(work[c].requests, options.wait, environment.queues.background.get());
        for (const auto& shown : shownEntries(work[c].requests, timelines, manifest.now)) {
            const auto& request = *shown.request;
            const std::string name = hostWidgetName(request.widget->kind());
            for (auto appearance : options.appearances) {
                const auto placement = cell.device.placement(appearance, request.family);
                if (!placement) continue;
                // The home screen appearance shows the lock-screen families as ever:
                // in the schemes asked for.
                auto schemes = cell.schemes;
                if (placement->scheme && appearance != Appearance::homeScreen) schemes = {*placement->scheme};
                for (auto scheme : schemes) {
                    auto rendered =
                        renderer.render(*request.widget, shown.entry, request.family, scheme, *placement, options.tint);
                    if (!rendered) continue;
                    if (shown.placeholder) rendered->displayList = redactedDisplayList(rendered->displayList);
                    ManifestImage image;
                    image.kind = request.widget->kind();
                    image.family = request.family;
                    image.scheme = scheme;
                    image.appearance = appearance;
                    image.renderingMode = placement->renderingMode;
                    image.showsContainerBackground = placement->showsContainerBackground;
                    if (image.renderingMode == platform::WidgetRenderingMode::accented)
                        image.tint = hexColor(options.tint);
                    image.entryDate = shown.entry.date();
                    image.moment = shown.moment;
                    image.placeholder = shown.placeholder;
                    image.device = cell.device.name;
                    image.systemVersion = cell.device.systemVersion;
                    image.locale = work[c].locale;
                    const std::string look =
                        appearance == Appearance::homeScreen ? std::string() : std::string(appearanceName(appearance));
                    const std::string stem = name + "-" + std::string(platform::name(request.family)) + "-" +
                                             std::string(schemeName(scheme)) + (look.empty() ? "" : "-" + look) +
                                             (shown.moment == EntryMoment::nextMidnight ? "-midnight" : "");
                    image.png = relative(cell.folder, stem + ".png");
                    image.svg = relative(cell.folder, stem + ".svg");
                    image.describe(rendered->displayList, TapRules{request.family, cell.device.systemVersion});
                    std::ostringstream line;
                    line << name << ' ' << platform::name(request.family) << ' ' << schemeName(scheme) << ' '
                         << (look.empty() ? "" : look + " ") << momentName(shown.moment)
                         << (shown.placeholder ? " (placeholder)" : "") << ": " << image.png;
                    pool.draw(std::move(rendered->displayList), scheme, options.scale, options.out / image.png,
                              options.out / image.svg, line.str());
                    manifest.images.push_back(std::move(image));
                }
            }
        }
    }
    pool.wait();

    const std::string json = manifest.toJSON(environment.calendar);
    writeFile(options.out / "manifest.json", json.data(), json.size());
    writePages(manifest, cells, options, environment.calendar, result);
    return result;
}

}  // namespace qrv::host
