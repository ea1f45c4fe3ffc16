#pragma once
// The live host's page, served by the program itself: plain HTML, its style
// and its script, with no build step and nothing fetched from elsewhere.
#include <string_view>

namespace qrv::host {

std::string_view webPageHTML();
std::string_view webPageStyle();
std::string_view webPageScript();

}  // namespace qrv::host
