// The demo day drawn at 2x, every widget in every family, light and dark,
// against the committed golden PNGs (tests/golden/pixels, written by
// scripts/update-goldens, which this test runs into a scratch directory).
// Catches what the display-list goldens cannot: a changed painter, Cairo or
// Pango, icon or font file.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "Host/GalleryCompare.hpp"

namespace fs = std::filesystem;

TEST(PixelGoldenTest, DemoDayLooksAsCommitted) {
    const fs::path root = fs::path(QRV_TEST_DATA).parent_path(), build = fs::path(QRV_BIN_DIR).parent_path();
    const fs::path scratch = fs::temp_directory_path() / ("qrv-pixel-goldens-" + std::to_string(::getpid()));
    const fs::path report = build / "pixel-golden-report";
    const std::string command = "'" + (root / "scripts" / "update-goldens").string() + "' '" + build.string() +
                                "' '" + scratch.string() + "' 2>/dev/null";
    ASSERT_EQ(std::system(command.c_str()), 0) << command;
    fs::remove_all(report);
    const auto comparison = qrv::host::compareGalleries(root / "tests" / "golden" / "pixels", scratch, report);
    // A rebuild of the same release on another machine draws the same pixels;
    // the allowance covers a glyph edge rasterized a shade differently, not a
    // changed colour, icon or shape.
    std::string failures;
    for (const auto& image : comparison.images) {
        using Status = qrv::host::ComparedImage::Status;
        const bool textsOrTargets = !image.textsRemoved.empty() || !image.textsAdded.empty() ||
                                    !image.targetsMoved.empty() || !image.targetsRemoved.empty() ||
                                    !image.targetsAdded.empty();
        if (image.status == Status::same || (image.status == Status::changed && !textsOrTargets &&
                                             image.changedPixels <= 40))
            continue;
        failures += "  " + image.label + ": " + std::to_string(image.changedPixels) + " pixels\n";
    }
    if (!failures.empty()) qrv::host::writeComparisonReport(comparison, report);
    EXPECT_TRUE(failures.empty()) << "the widgets no longer look as committed:\n"
                                  << failures << "see " << (report / "report.html").string()
                                  << "; if the change is meant, run scripts/update-goldens BUILD_DIR";
    fs::remove_all(scratch);
}
