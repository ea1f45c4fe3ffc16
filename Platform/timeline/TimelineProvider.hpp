#pragma once
// The contract between a widget and the widget host. The host asks for a
// placeholder (synchronously, while nothing is loaded yet), for a snapshot (one
// entry, for transient appearances such as the gallery) and for a timeline.
// Snapshot and timeline answer through their completion, possibly later, on
// another thread, or never: the host must not rely on being called back.
#include <functional>

#include "Platform/timeline/Timeline.hpp"

namespace qrv::platform {

template <class EntryType>
class TimelineProvider {
  public:
    using Entry = EntryType;
    using SnapshotCompletion = std::function<void(Entry)>;
    using TimelineCompletion = std::function<void(Timeline<Entry>)>;

    virtual ~TimelineProvider() = default;

    virtual Entry placeholder(const TimelineProviderContext& context) const = 0;
    virtual void getSnapshot(const TimelineProviderContext& context, SnapshotCompletion completion) const = 0;
    virtual void getTimeline(const TimelineProviderContext& context, TimelineCompletion completion) const = 0;

  protected:
    TimelineProvider() = default;
    TimelineProvider(const TimelineProvider&) = default;
    TimelineProvider(TimelineProvider&&) = default;
    TimelineProvider& operator=(const TimelineProvider&) = default;
    TimelineProvider& operator=(TimelineProvider&&) = default;
};

}  // namespace qrv::platform
