#pragma once
// Two renders of the gallery side by side: their images paired through the
// manifests (same widget kind, family, scheme, appearance, moment, device,
// locale and system version), and for each pair whether the pixels, the
// texts or the tap targets differ. Buttons, links and texts are compared as
// the JSON values the manifest holds, whatever their shape.
#include <cstddef>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "Host/ImageDiff.hpp"

namespace qrv::host {

// A directory that is not a render, a manifest or image that cannot be read.
class CompareInputError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct ComparedImage {
    enum class Status { same, changed, onlyBaseline, onlyCandidate };
    Status status = Status::same;
    std::string label;  // the pairing fields, e.g. "water systemSmall light default now phone en 17"
    std::string baselinePng, candidatePng;  // relative to their galleries; empty on the side that lacks it
    std::size_t changedPixels = 0;
    int left = 0, top = 0, width = 0, height = 0;  // the differing pixels' bounding box
    std::vector<std::string> textsRemoved, textsAdded;
    std::vector<std::string> targetsMoved, targetsRemoved, targetsAdded;
    // Written for changed images into the report's directory, relative to it.
    std::string baselineCopy, candidateCopy, overlay;

    bool pixelsChanged() const { return changedPixels > 0; }
};

struct GalleryComparison {
    std::filesystem::path baseline, candidate;
    double threshold = kDefaultDiffThreshold;
    std::vector<ComparedImage> images;  // in the candidate's order, then what only the baseline has

    std::size_t count(ComparedImage::Status status) const;
    bool anyDifference() const;
};

// Compares the two galleries; the changed images' pixels (baseline,
// candidate, difference overlay) are written under `reportDirectory`/images.
// Throws CompareInputError for unreadable input, GalleryError when the report
// directory cannot be written.
GalleryComparison compareGalleries(const std::filesystem::path& baseline, const std::filesystem::path& candidate,
                                   const std::filesystem::path& reportDirectory,
                                   double threshold = kDefaultDiffThreshold);

// One line per image that is not the same, then the total.
std::string comparisonSummary(const GalleryComparison& comparison);

// report.json and report.html in `reportDirectory`; returns report.html's path.
std::filesystem::path writeComparisonReport(const GalleryComparison& comparison,
                                            const std::filesystem::path& reportDirectory);

}  // namespace qrv::host
