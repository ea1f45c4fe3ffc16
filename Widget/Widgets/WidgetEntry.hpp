#pragma once
// One timeline entry of any of the widgets, as the host holds it: the widgets
// differ in their entry types, the host does not. The entry is kept by value
// behind an immutable shared model, so copies are cheap and the typed record
// can be taken back out by the widget that made it.
#include <memory>
#include <string>
#include <utility>

#include "Platform/time/Date.hpp"

namespace qrv::widget {

class WidgetEntry {
  public:
    // Any record with `date`, `isLoggedIn` and `encode()` (the cached records).
    template <class Entry>
    explicit WidgetEntry(Entry entry) : model_(std::make_shared<const Model<Entry>>(std::move(entry))) {}

    platform::Date date() const { return model_->date(); }
    bool isLoggedIn() const { return model_->isLoggedIn(); }
    // The record as the main app writes it. Throws platform::EncodingError
    // where the record holds a number JSON cannot carry.
    std::string encode() const { return model_->encode(); }

    // The typed record, or null when this entry holds another type.
    template <class Entry>
    const Entry* as() const {
        const auto* model = dynamic_cast<const Model<Entry>*>(model_.get());
        return model ? &model->entry : nullptr;
    }

  private:
    struct Concept {
        virtual ~Concept() = default;
        virtual platform::Date date() const = 0;
        virtual bool isLoggedIn() const = 0;
        virtual std::string encode() const = 0;
    };
    template <class Entry>
    struct Model final : Concept {
        explicit Model(Entry e) : entry(std::move(e)) {}
        platform::Date date() const override { return entry.date; }
        bool isLoggedIn() const override { return entry.isLoggedIn; }
        std::string encode() const override { return entry.encode(); }
        Entry entry;
    };
    std::shared_ptr<const Concept> model_;
};

}  // namespace qrv::widget
