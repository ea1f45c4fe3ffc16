#include "Host/Command.hpp"

#include <algorithm>
#include <iostream>

#include "BuildVersion.hpp"

namespace qrv::host {
namespace {
std::vector<RegisteredCommand>& registry() {
    static std::vector<RegisteredCommand> commands;
    return commands;
}
int& exitCodeStorage() {
    static int code = kExitOk;
    return code;
}
}  // namespace

CommandRegistration::CommandRegistration(std::string name, Setup setup) {
    registry().push_back({std::move(name), std::move(setup)});
}

std::vector<RegisteredCommand> registeredCommands() {
    auto commands = registry();
    std::sort(commands.begin(), commands.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
    return commands;
}

void setExitCode(int code) { exitCodeStorage() = code; }

void setCommandAction(CLI::App& command, std::string name, std::function<int()> run) {
    command.callback([name = std::move(name), run = std::move(run)] {
        try {
            setExitCode(run());
        } catch (const std::exception& error) {
            std::cerr << name << ": " << error.what() << '\n';
            setExitCode(kExitFailure);
        }
    });
}
int exitCode() { return exitCodeStorage(); }

std::string versionText() {
    std::string text = std::string("qrv-widgets ") + kProjectVersion;
    // The commit on a line of its own: the first line is the name and version alone.
    if (*kBuildCommit != '\0') text += std::string("\ncommit ") + kBuildCommit;
    return text;
}

int runMain(int argc, char** argv) {
    CLI::App app{
        "qrv-widgets: the Quorvane widgets host. Reads the app-group store, asks the "
        "widgets' providers for timelines, draws the widgets and runs their buttons.",
        "qrv-widgets"};  // the name --help shows, wherever the program was started from
    app.require_subcommand(1);
    app.set_version_flag("--version", versionText(), "Print the version (and the build's commit) and exit");
    for (const auto& command : registeredCommands()) command.setup(app);
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp& e) {
        return app.exit(e);
    } catch (const CLI::CallForAllHelp& e) {
        return app.exit(e);
    } catch (const CLI::CallForVersion& e) {
        return app.exit(e);
    } catch (const CLI::ParseError& e) {
        app.exit(e);
        return kExitUsage;
    }
    return exitCode();
}

}  // namespace qrv::host
