// report.json and report.html of a gallery comparison: a summary at the top,
// each changed widget as baseline | candidate | difference with what changed
// in its texts and tap targets, the images only one side has, and the
// unchanged ones folded away.
#include <fstream>

#include "Host/GalleryCompare.hpp"
#include "Host/GalleryPage.hpp"
#include "Host/RenderGallery.hpp"
#include "Platform/coding/JSONWriter.hpp"

namespace qrv::host {

namespace {

using Status = ComparedImage::Status;
using platform::JSONWriter;

std::string_view statusName(Status status) {
    switch (status) {
        case Status::same: return "same";
        case Status::changed: return "changed";
        case Status::onlyBaseline: return "onlyBaseline";
        case Status::onlyCandidate: return "onlyCandidate";
    }
    return "same";
}

void writeStrings(JSONWriter& json, std::string_view key, const std::vector<std::string>& values) {
    json.key(key).beginArray();
    for (const auto& value : values) json.string(value);
    json.endArray();
}

std::string reportJSON(const GalleryComparison& comparison) {
    JSONWriter json;
    json.beginObject();
    json.key("baseline").string(comparison.baseline.string());
    json.key("candidate").string(comparison.candidate.string());
    json.key("threshold").number(comparison.threshold);
    json.key("summary").beginObject();
    json.key("images").integer(static_cast<std::int64_t>(comparison.images.size()));
    for (auto status : {Status::same, Status::changed, Status::onlyBaseline, Status::onlyCandidate})
        json.key(statusName(status)).integer(static_cast<std::int64_t>(comparison.count(status)));
    json.endObject();
    json.key("images").beginArray();
    for (const auto& image : comparison.images) {
        json.beginObject();
        json.key("status").string(statusName(image.status));
        json.key("label").string(image.label);
        json.key("baseline").string(image.baselinePng);
        json.key("candidate").string(image.candidatePng);
        if (image.status == Status::changed) {
            json.key("changedPixels").integer(static_cast<std::int64_t>(image.changedPixels));
            json.key("box").beginObject();
            json.key("x").integer(image.left).key("y").integer(image.top);
            json.key("width").integer(image.width).key("height").integer(image.height);
            json.endObject();
            writeStrings(json, "textsRemoved", image.textsRemoved);
            writeStrings(json, "textsAdded", image.textsAdded);
            writeStrings(json, "targetsMoved", image.targetsMoved);
            writeStrings(json, "targetsRemoved", image.targetsRemoved);
            writeStrings(json, "targetsAdded", image.targetsAdded);
            json.key("difference").string(image.overlay);
        }
        json.endObject();
    }
    json.endArray();
    json.endObject();
    return std::move(json).take();
}

void listItems(std::string& html, std::string_view title, const std::vector<std::string>& items) {
    if (items.empty()) return;
    html += "<p>" + std::string(title) + "</p><ul>";
    for (const auto& item : items) html += "<li><code>" + escapeHTML(item) + "</code></li>";
    html += "</ul>";
}

std::string reportHTML(const GalleryComparison& comparison) {
    std::string html =
        "<!doctype html>\n<html lang=\"en\"><head><meta charset=\"utf-8\"><title>Widget comparison</title>\n"
        "<style>body{font:14px system-ui,sans-serif;margin:24px;color:#222}"
        ".pair{display:flex;gap:16px;align-items:flex-start;flex-wrap:wrap}"
        "figure{margin:0}figcaption{color:#666;font-size:12px}"
        "img{border:1px solid #ddd;background:repeating-conic-gradient(#eee 0 25%,#fff 0 50%) 0 0/16px 16px;"
        "max-width:420px}section{border-top:1px solid #ccc;padding:12px 0}code{font-size:12px}</style>\n"
        "</head><body>\n<h1>Widget comparison</h1>\n";
    html += "<p>Baseline <code>" + escapeHTML(comparison.baseline.string()) + "</code>, candidate <code>" +
            escapeHTML(comparison.candidate.string()) + "</code>, colour threshold " +
            std::to_string(comparison.threshold).substr(0, 4) + ".</p>\n";
    html += "<p id=\"summary\"><strong>" + std::to_string(comparison.count(Status::changed)) + " changed</strong>, " +
            std::to_string(comparison.count(Status::onlyBaseline)) + " only in the baseline, " +
            std::to_string(comparison.count(Status::onlyCandidate)) + " only in the candidate, " +
            std::to_string(comparison.count(Status::same)) + " the same, of " +
            std::to_string(comparison.images.size()) + " images.</p>\n";
    for (const auto& image : comparison.images) {
        if (image.status != Status::changed) continue;
        html += "<section class=\"changed\"><h2>" + escapeHTML(image.candidatePng) + "</h2><p>" +
                escapeHTML(image.label) + "</p>";
        if (image.pixelsChanged())
            html += "<p>" + std::to_string(image.changedPixels) + " pixels differ, within " +
                    std::to_string(image.width) + "&times;" + std::to_string(image.height) + " at (" +
                    std::to_string(image.left) + ", " + std::to_string(image.top) + ").</p>";
        else
            html += "<p>The pixels are the same.</p>";
        html += "<div class=\"pair\">";
        for (const auto& [caption, file] : {std::pair{"baseline", image.baselineCopy},
                                            std::pair{"candidate", image.candidateCopy},
                                            std::pair{"difference", image.overlay}})
            html += "<figure><img src=\"" + escapeHTML(file) + "\" alt=\"" + caption + "\"><figcaption>" + caption +
                    "</figcaption></figure>";
        html += "</div>";
        listItems(html, "Texts only in the baseline:", image.textsRemoved);
        listItems(html, "Texts only in the candidate:", image.textsAdded);
        listItems(html, "Tap targets moved:", image.targetsMoved);
        listItems(html, "Tap targets only in the baseline:", image.targetsRemoved);
        listItems(html, "Tap targets only in the candidate:", image.targetsAdded);
        html += "</section>\n";
    }
    for (auto [status, title] : {std::pair{Status::onlyBaseline, "Only in the baseline"},
                                 std::pair{Status::onlyCandidate, "Only in the candidate"},
                                 std::pair{Status::same, "The same"}}) {
        std::vector<std::string> names;
        for (const auto& image : comparison.images)
            if (image.status == status) names.push_back(image.candidatePng.empty() ? image.baselinePng : image.candidatePng);
        if (names.empty()) continue;
        html += std::string(status == Status::same ? "<details>" : "<details open>") + "<summary>" + title + " (" +
                std::to_string(names.size()) + ")</summary><ul>";
        for (const auto& name : names) html += "<li>" + escapeHTML(name) + "</li>";
        html += "</ul></details>\n";
    }
    html += "</body></html>\n";
    return html;
}

void writeText(const std::filesystem::path& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    if (file) file << text;
    if (file) file.close();
    if (!file) throw GalleryError("cannot write " + path.string());
}

}  // namespace

std::filesystem::path writeComparisonReport(const GalleryComparison& comparison,
                                            const std::filesystem::path& reportDirectory) {
    std::error_code error;
    std::filesystem::create_directories(reportDirectory, error);
    if (error) throw GalleryError("cannot create " + reportDirectory.string() + ": " + error.message());
    writeText(reportDirectory / "report.json", reportJSON(comparison));
    writeText(reportDirectory / "report.html", reportHTML(comparison));
    return reportDirectory / "report.html";
}

}  // namespace qrv::host
