#pragma once
// The extension's provider: the standard lookup in its own string table. A
// stateless value; the widgets hand out one shared instance.
#include "Widget/Shared/LocalizedStringProvider.hpp"

namespace qrv::widget {

class WidgetsLocalizedStringProvider final : public LocalizedStringProvider {
  public:
    std::string localizedString(std::string_view key, std::string_view comment) const override;

    // One instance for every view model.
    static LocalizedStringProviderRef shared();
};

}  // namespace qrv::widget
