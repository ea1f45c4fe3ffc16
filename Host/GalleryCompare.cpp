#include "Host/GalleryCompare.hpp"

#include <simdjson.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <sstream>

#include "Host/RenderGallery.hpp"

namespace qrv::host {

namespace {

using Status = ComparedImage::Status;

struct ImageRecord {
    std::string key;  // the pairing fields, space-separated
    std::string png;
    std::vector<std::string> texts;
    std::vector<std::pair<std::string, std::string>> targets;  // full JSON, and without its rectangle
};

struct GalleryRecord {
    std::vector<ImageRecord> images;
};

std::string readFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw CompareInputError("cannot read " + path.string());
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string minified(simdjson::dom::element element) { return simdjson::minify(element); }

// A field of the image, else of the whole manifest, else what a render
// without that axis means.
std::string field(simdjson::dom::object image, simdjson::dom::object top, const char* name,
                  std::string_view fallback) {
    for (auto object : {image, top}) {
        simdjson::dom::element value;
        if (object[name].get(value) != simdjson::SUCCESS) continue;
        if (value.is_string()) return std::string(value.get_string().value());
        return minified(value);
    }
    return std::string(fallback);
}

// A tap target as the manifest holds it, and the same without "rect", so that
// a target that only moved can be told from one that changed.
std::pair<std::string, std::string> target(std::string_view what, simdjson::dom::element element) {
    std::string full = std::string(what) + " " + minified(element);
    std::string placeless = std::string(what);
    simdjson::dom::object object;
    if (element.get(object) == simdjson::SUCCESS) {
        for (auto [key, value] : object)
            if (key != "rect") placeless += " " + std::string(key) + "=" + minified(value);
    } else {
        placeless = full;
    }
    return {std::move(full), std::move(placeless)};
}

GalleryRecord readGallery(const std::filesystem::path& directory) {
    const auto manifestPath = directory / "manifest.json";
    if (!std::filesystem::is_regular_file(manifestPath))
        throw CompareInputError(directory.string() + " is not a render: it has no manifest.json");
    const simdjson::padded_string json(readFile(manifestPath));
    simdjson::dom::parser parser;
    simdjson::dom::object top;
    simdjson::dom::array images;
    if (parser.parse(json).get(top) != simdjson::SUCCESS || top["images"].get(images) != simdjson::SUCCESS)
        throw CompareInputError(manifestPath.string() + " is not a gallery manifest (no \"images\" array)");
    GalleryRecord gallery;
    for (auto element : images) {
        simdjson::dom::object image;
        std::string_view png;
        if (element.get(image) != simdjson::SUCCESS || image["png"].get(png) != simdjson::SUCCESS)
            throw CompareInputError(manifestPath.string() + ": an image without a \"png\" file name");
        ImageRecord record;
        record.png = std::string(png);
        for (const auto& [name, fallback] : std::vector<std::pair<const char*, const char*>>{
                 {"kind", ""},
                 {"family", ""},
                 {"scheme", "light"},
                 {"appearance", "default"},
                 {"moment", "now"},
                 {"device", "phone"},
                 {"locale", ""},
                 {"os", ""}})
            record.key += (record.key.empty() ? "" : " ") + field(image, top, name, fallback);
        simdjson::dom::array list;
        if (image["texts"].get(list) == simdjson::SUCCESS)
            for (auto text : list) {
                simdjson::dom::object object;
                if (text.get(object) != simdjson::SUCCESS) continue;
                record.texts.push_back(field(object, object, "id", "null") + " " + field(object, object, "text", "") +
                                       (field(object, object, "shown", "") == field(object, object, "text", "")
                                            ? ""
                                            : " (shown as " + field(object, object, "shown", "") + ")"));
            }
        simdjson::dom::element url;
        if (image["widgetURL"].get(url) == simdjson::SUCCESS) record.targets.push_back(target("widgetURL", url));
        for (const auto& [name, what] : {std::pair{"links", "link"}, std::pair{"buttons", "button"}})
            if (image[name].get(list) == simdjson::SUCCESS)
                for (auto item : list) record.targets.push_back(target(what, item));
        gallery.images.push_back(std::move(record));
    }
    return gallery;
}

// What is in `before` and not in `after`, and the other way round, counting
// repeats.
template <class T, class Same>
void difference(std::vector<T> before, std::vector<T> after, std::vector<T>& removed, std::vector<T>& added,
                Same same) {
    for (auto& item : before) {
        const auto match = std::find_if(after.begin(), after.end(), [&](const T& other) { return same(item, other); });
        if (match == after.end()) {
            removed.push_back(std::move(item));
        } else {
            after.erase(match);
        }
    }
    added = std::move(after);
}

platform::Raster readImage(const std::filesystem::path& path) {
    const std::string bytes = readFile(path);
    auto raster = platform::decodePNG(std::vector<std::uint8_t>(bytes.begin(), bytes.end()));
    if (!raster) throw CompareInputError("cannot read the image " + path.string() + ": " + raster.error());
    return std::move(raster).value();
}

void writeBytes(const std::filesystem::path& path, const std::vector<std::uint8_t>& bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    if (file) file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (file) file.close();
    if (!file) throw GalleryError("cannot write " + path.string());
}

void comparePair(const ImageRecord& before, const ImageRecord& after, ComparedImage& result,
                 const GalleryComparison& comparison, const std::filesystem::path& reportDirectory,
                 std::size_t number) {
    const auto baselineImage = readImage(comparison.baseline / before.png);
    const auto candidateImage = readImage(comparison.candidate / after.png);
    auto diff = compareImages(baselineImage, candidateImage, comparison.threshold);
    result.changedPixels = diff.changedPixels;
    result.left = diff.left, result.top = diff.top, result.width = diff.width, result.height = diff.height;

    difference(before.texts, after.texts, result.textsRemoved, result.textsAdded,
               [](const std::string& a, const std::string& b) { return a == b; });
    std::vector<std::pair<std::string, std::string>> removed, added;
    difference(before.targets, after.targets, removed, added, [](const auto& a, const auto& b) { return a == b; });
    for (const auto& gone : removed) {
        const auto moved = std::find_if(added.begin(), added.end(), [&](const auto& a) { return a.second == gone.second; });
        if (moved != added.end()) {
            result.targetsMoved.push_back(gone.first + " -> " + moved->first);
            added.erase(moved);
        } else {
            result.targetsRemoved.push_back(gone.first);
        }
    }
    for (auto& item : added) result.targetsAdded.push_back(std::move(item.first));

    const bool changed = result.pixelsChanged() || !result.textsRemoved.empty() || !result.textsAdded.empty() ||
                         !result.targetsMoved.empty() || !result.targetsRemoved.empty() ||
                         !result.targetsAdded.empty();
    result.status = changed ? Status::changed : Status::same;
    if (!changed) return;
    const auto images = reportDirectory / "images";
    std::error_code error;
    std::filesystem::create_directories(images, error);
    if (error) throw GalleryError("cannot create " + images.string() + ": " + error.message());
    const std::string stem = "images/" + std::to_string(number) + "-";
    result.baselineCopy = stem + "baseline.png";
    result.candidateCopy = stem + "candidate.png";
    result.overlay = stem + "difference.png";
    std::filesystem::copy_file(comparison.baseline / before.png, reportDirectory / result.baselineCopy,
                               std::filesystem::copy_options::overwrite_existing, error);
    if (!error)
        std::filesystem::copy_file(comparison.candidate / after.png, reportDirectory / result.candidateCopy,
                                   std::filesystem::copy_options::overwrite_existing, error);
    if (error) throw GalleryError("cannot copy an image into " + images.string() + ": " + error.message());
    const auto overlay = platform::encodePNG(diff.overlay);
    if (!overlay) throw GalleryError("cannot encode the difference of " + after.png + ": " + overlay.error());
    writeBytes(reportDirectory / result.overlay, overlay.value());
}

}  // namespace

std::size_t GalleryComparison::count(ComparedImage::Status status) const {
    return static_cast<std::size_t>(
        std::count_if(images.begin(), images.end(), [&](const ComparedImage& image) { return image.status == status; }));
}

bool GalleryComparison::anyDifference() const { return count(Status::same) != images.size(); }

GalleryComparison compareGalleries(const std::filesystem::path& baseline, const std::filesystem::path& candidate,
                                   const std::filesystem::path& reportDirectory, double threshold) {
    GalleryComparison comparison;
    comparison.baseline = baseline;
    comparison.candidate = candidate;
    comparison.threshold = threshold;
    const auto before = readGallery(baseline);
    const auto after = readGallery(candidate);
    std::map<std::string, const ImageRecord*> baselineByKey;
    for (const auto& image : before.images)
        if (!baselineByKey.emplace(image.key, &image).second)
            throw CompareInputError(baseline.string() + ": two images are both " + image.key);
    std::map<std::string, bool> seen;
    for (const auto& image : after.images) {
        if (seen[image.key]) throw CompareInputError(candidate.string() + ": two images are both " + image.key);
        seen[image.key] = true;
        ComparedImage result;
        result.label = image.key;
        result.candidatePng = image.png;
        const auto match = baselineByKey.find(image.key);
        if (match == baselineByKey.end()) {
            result.status = Status::onlyCandidate;
        } else {
            result.baselinePng = match->second->png;
            comparePair(*match->second, image, result, comparison, reportDirectory, comparison.images.size() + 1);
        }
        comparison.images.push_back(std::move(result));
    }
    for (const auto& image : before.images)
        if (!seen[image.key]) {
            ComparedImage result;
            result.status = Status::onlyBaseline;
            result.label = image.key;
            result.baselinePng = image.png;
            comparison.images.push_back(std::move(result));
        }
    return comparison;
}

std::string comparisonSummary(const GalleryComparison& comparison) {
    std::ostringstream out;
    for (const auto& image : comparison.images) {
        switch (image.status) {
            case Status::same: continue;
            case Status::onlyBaseline: out << "only in the baseline: " << image.baselinePng; break;
            case Status::onlyCandidate: out << "only in the candidate: " << image.candidatePng; break;
            case Status::changed:
                out << "changed: " << image.candidatePng << " (" << image.label << "):";
                if (image.pixelsChanged())
                    out << ' ' << image.changedPixels << " pixels in " << image.width << 'x' << image.height << " at "
                        << image.left << ',' << image.top << ';';
                if (const auto texts = image.textsRemoved.size() + image.textsAdded.size())
                    out << ' ' << texts << " texts differ;";
                if (const auto targets = image.targetsMoved.size() + image.targetsRemoved.size() +
                                         image.targetsAdded.size())
                    out << ' ' << targets << " tap targets differ;";
                break;
        }
        out << '\n';
    }
    out << "compare: " << comparison.images.size() << " images, " << comparison.count(Status::changed) << " changed, "
        << comparison.count(Status::onlyBaseline) << " only in the baseline, "
        << comparison.count(Status::onlyCandidate) << " only in the candidate, " << comparison.count(Status::same)
        << " the same\n";
    return out.str();
}

}  // namespace qrv::host
