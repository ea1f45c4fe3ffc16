#pragma once
// index.html of a rendered gallery: the images of a manifest shown as the
// phone would show them (home-screen widgets with rounded corners on a
// wallpaper, lock-screen widgets over a dark one), each widget with its name,
// description, deep links and buttons. One self-contained file: the styles are
// inline and the images are the gallery's own files beside it. Every text
// taken from the records is escaped.
#include <string>
#include <string_view>

#include "Host/Manifest.hpp"

namespace qrv::host {

std::string galleryPage(const Manifest& manifest, const platform::Calendar& calendar, std::string_view language);

// `text` with &, <, >, " and ' replaced by their character references.
std::string escapeHTML(std::string_view text);

}  // namespace qrv::host
