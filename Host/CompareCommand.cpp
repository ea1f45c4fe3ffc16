// qrv-widgets compare BASELINE CANDIDATE: what a change did to the widgets.
// Pairs the two renders' images through their manifests and reports, per
// pair, changed pixels (a perceptual comparison that ignores anti-aliasing),
// texts and tap targets, and images only one side has. Standard output: one
// line per image that differs, then the total. Exit 0 when nothing differs,
// 1 when something does, 2 on bad arguments or input that is not a render.
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

#include "Host/Command.hpp"
#include "Host/GalleryCompare.hpp"
#include "Host/RenderGallery.hpp"

namespace qrv::host {
namespace {

struct CompareOptions {
    std::string baseline, candidate;
    std::string out = "compare-report";
    double threshold = kDefaultDiffThreshold;
};

int run(const CompareOptions& options) {
    GalleryComparison comparison;
    try {
        comparison = compareGalleries(options.baseline, options.candidate, options.out, options.threshold);
    } catch (const CompareInputError& error) {
        std::cerr << "compare: " << error.what() << '\n';
        return kExitUsage;
    }
    const auto report = writeComparisonReport(comparison, options.out);
    std::cout << comparisonSummary(comparison);
    std::cout << "compare: report " << std::filesystem::absolute(report).lexically_normal().string() << '\n'
              << std::flush;
    return comparison.anyDifference() ? kExitFailure : kExitOk;
}

const CommandRegistration compareCommand{"compare", [](CLI::App& app) {
    auto options = std::make_shared<CompareOptions>();
    auto* command = app.add_subcommand(
        "compare",
        "Compare two renders: pixels (perceptually, anti-aliasing aside), texts and tap targets of each image, and "
        "images only one side has; writes report.html and report.json. Exit 0: the same, 1: something differs");
    command->add_option("BASELINE", options->baseline, "The render to compare against (a render --out directory)")
        ->type_name("DIR")
        ->required()
        ->check(CLI::ExistingDirectory);
    command->add_option("CANDIDATE", options->candidate, "The new render")
        ->type_name("DIR")
        ->required()
        ->check(CLI::ExistingDirectory);
    command->add_option("--out", options->out, "Directory for the report (default: compare-report)")
        ->type_name("REPORT_DIR");
    command
        ->add_option("--threshold", options->threshold,
                     "Colour distance a pixel may move before it counts as changed, 0 to 1 (default: 0.1)")
        ->type_name("T")
        ->check(CLI::Range(0.0, 1.0));
    setCommandAction(*command, "compare", [options] { return run(*options); });
}};

}  // namespace
}  // namespace qrv::host
