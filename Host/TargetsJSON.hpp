#pragma once
// How the gallery's manifest and the live page's state spell the geometry and
// tap targets of a drawn widget, so both files read the same way.
#include <optional>
#include <string>
#include <vector>

#include "Host/TapRules.hpp"
#include "Platform/coding/JSONWriter.hpp"
#include "Platform/drawing/Geometry.hpp"

namespace qrv::host {

// {"x","y","width","height"} in points, to the hundredth (finer than any
// pixel the host draws).
void writeRect(platform::JSONWriter& json, const platform::Rect& rect);
// {"width","height"} in points, to the hundredth.
void writeSize(platform::JSONWriter& json, platform::Size size);
// The text, or null.
void writeOptional(platform::JSONWriter& json, const std::optional<std::string>& text);
// [{"url","rect"}, ...]
void writeLinks(platform::JSONWriter& json, const std::vector<LinkRegion>& links);
// [{"intent","parameters","rect"}, ...], the parameters by name
// ({"waterUnit":"ml","waterValue":"250"}): what the live host's intent route
// takes as it stands.
void writeButtons(platform::JSONWriter& json, const std::vector<ButtonRegion>& buttons);

// The names a drawn button's texts stand for, in the order the button carries
// them: the order the intent's convenience initializer takes them, which for
// the water intent is unit first, then amount.
std::vector<std::string> buttonParameterNames(const std::string& intentName);

}  // namespace qrv::host
