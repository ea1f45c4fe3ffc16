#pragma once
// What a widget tells the widget host about itself: its kind, its gallery
// texts (string keys the host resolves), the families it offers, whether it
// draws edge to edge, how to make its timeline provider and how to draw an
// entry. Widgets build it as a static configuration with chained modifiers,
// in the order the platform's configuration reads; the host only reads it.
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Platform/drawing/View.hpp"
#include "Platform/timeline/TimelineProvider.hpp"
#include "Platform/timeline/WidgetFamily.hpp"
#include "Widget/Cache/WidgetDataCacheReaderEnvironment.hpp"
#include "Widget/Widgets/WidgetEntry.hpp"

namespace qrv::widget {

// A widget's content for one entry. `body` builds the view; `afterLayout`, when
// set, receives the frames the view reported through framePreference() and
// answers true when the view must be built and laid out again with them.
struct WidgetContent {
    std::function<platform::View()> body;
    std::function<bool(const std::vector<std::pair<std::string, platform::Rect>>&)> afterLayout;
};

using WidgetProvider = platform::TimelineProvider<WidgetEntry>;
using WidgetProviderRef = std::shared_ptr<const WidgetProvider>;

// Any of the widgets' providers behind the one entry type the host speaks.
template <class Provider>
class ErasedWidgetProvider final : public WidgetProvider {
  public:
    explicit ErasedWidgetProvider(Provider provider) : provider_(std::move(provider)) {}

    WidgetEntry placeholder(const platform::TimelineProviderContext& context) const override {
        return WidgetEntry(provider_.placeholder(context));
    }
    void getSnapshot(const platform::TimelineProviderContext& context,
                     SnapshotCompletion completion) const override {
        provider_.getSnapshot(context, [completion = std::move(completion)](typename Provider::Entry entry) {
            completion(WidgetEntry(std::move(entry)));
        });
    }
    void getTimeline(const platform::TimelineProviderContext& context,
                     TimelineCompletion completion) const override {
        provider_.getTimeline(context, [completion = std::move(completion)](
                                           platform::Timeline<typename Provider::Entry> timeline) {
            std::vector<WidgetEntry> entries;
            entries.reserve(timeline.entries.size());
            for (auto& entry : timeline.entries) entries.emplace_back(std::move(entry));
            completion(platform::Timeline<WidgetEntry>(std::move(entries), timeline.policy));
        });
    }

    const Provider& provider() const { return provider_; }

  private:
    Provider provider_;
};

class WidgetConfiguration {
  public:
    using MakeProvider = std::function<WidgetProviderRef(const WidgetDataCacheReaderEnvironment&)>;
    using Content =
        std::function<WidgetContent(const WidgetEntry&, platform::WidgetFamily, platform::ColorScheme)>;

    // A static configuration: no options the user can edit.
    WidgetConfiguration(std::string kind, MakeProvider makeProvider, Content content)
        : kind_(std::move(kind)), makeProvider_(std::move(makeProvider)), content_(std::move(content)) {}

    [[nodiscard]] WidgetConfiguration configurationDisplayName(std::string key) && {
        displayNameKey_ = std::move(key);
        return std::move(*this);
    }
    [[nodiscard]] WidgetConfiguration description(std::string key) && {
        descriptionKey_ = std::move(key);
        return std::move(*this);
    }
    [[nodiscard]] WidgetConfiguration supportedFamilies(std::vector<platform::WidgetFamily> families) && {
        families_ = std::move(families);
        return std::move(*this);
    }
    // The views draw edge to edge and pad themselves; the host adds no margins.
    [[nodiscard]] WidgetConfiguration contentMarginsDisabled() && {
        contentMarginsDisabled_ = true;
        return std::move(*this);
    }

    const std::string& kind() const { return kind_; }
    const std::string& displayNameKey() const { return displayNameKey_; }
    const std::string& descriptionKey() const { return descriptionKey_; }
    const std::vector<platform::WidgetFamily>& supportedFamilies() const { return families_; }
    bool contentMarginsAreDisabled() const { return contentMarginsDisabled_; }
    bool supports(platform::WidgetFamily family) const;

    // The gallery texts, looked up in the extension's string table in the
    // current locale (a key the table lacks shows as itself).
    std::string displayName() const;
    std::string description() const;

    // A fresh provider, as the widget makes one for each request it serves.
    WidgetProviderRef makeProvider(const WidgetDataCacheReaderEnvironment& environment) const {
        return makeProvider_(environment);
    }
    // The content view for one entry. An entry of another widget draws nothing.
    WidgetContent content(const WidgetEntry& entry, platform::WidgetFamily family,
                          platform::ColorScheme scheme) const {
        return content_(entry, family, scheme);
    }

  private:
    std::string kind_;
    MakeProvider makeProvider_;
    Content content_;
    std::string displayNameKey_;
    std::string descriptionKey_;
    std::vector<platform::WidgetFamily> families_;
    bool contentMarginsDisabled_ = false;
};

// The supported families as the widgets write them: home-screen families
// first, then the lock screen's.
std::vector<platform::WidgetFamily> joinedFamilies(std::vector<platform::WidgetFamily> homeScreen,
                                                   const std::vector<platform::WidgetFamily>& lockScreen);

// Content that draws nothing, for an entry a widget does not know.
WidgetContent emptyWidgetContent();

// The first system version with interactive widgets, automatic content
// margins and the water widget.
inline constexpr int kInteractiveWidgetsSystemVersion = 17;

}  // namespace qrv::widget
