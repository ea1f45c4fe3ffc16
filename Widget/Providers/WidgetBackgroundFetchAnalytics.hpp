#pragma once
// Appends one WidgetFetchEvent per snapshot or timeline handed to the widget
// host to the list under "widget_events" in the shared store. The extension
// only appends: reading, reporting and clearing the list is the main app's job.
#include <memory>
#include <string_view>

#include "Platform/store/UserDefaults.hpp"
#include "Platform/time/Clock.hpp"
#include "Widget/Providers/WidgetFetchEvent.hpp"

namespace qrv::widget {

class WidgetBackgroundFetchAnalytics {
  public:
    // Null store: the shared store, taken at each recording. Null clock: the
    // system clock.
    explicit WidgetBackgroundFetchAnalytics(std::shared_ptr<platform::UserDefaults> store = nullptr,
                                            std::shared_ptr<const platform::Clock> clock = nullptr);

    // Appends an event dated now. The list under "widget_events" is an array of
    // data blobs, each one event's JSON, oldest first; a stored value of any other
    // shape is replaced by a list holding only the new event. The append is one
    // atomic read-modify-write of the key, so recordings from several threads or
    // processes all land. Fire and forget: a failed write is reported on standard
    // error and nothing reaches the caller.
    void recordFetch(std::string_view widgetName, std::string_view widgetSize) const;

  private:
    std::shared_ptr<platform::UserDefaults> store_;
    std::shared_ptr<const platform::Clock> clock_;
};

}  // namespace qrv::widget
