#pragma once
// Each qrv-widgets command lives in its own file and registers itself here, so
// adding a command touches no other file.
#include <CLI/CLI.hpp>
#include <functional>
#include <string>
#include <vector>

namespace qrv::host {

// Exit codes every command shares.
enum ExitCode : int {
    kExitOk = 0,
    kExitFailure = 1,  // something went wrong while doing the job (I/O, drawing)
    kExitUsage = 2,    // bad arguments: the message names the argument
    kExitNoEntry = 3,  // the provider never answered
};

struct CommandRegistration {
    // `setup` adds a subcommand to the app and sets its callback. The callback
    // reports its exit code through `setExitCode`.
    using Setup = std::function<void(CLI::App& app)>;
    CommandRegistration(std::string name, Setup setup);
};

struct RegisteredCommand {
    std::string name;
    CommandRegistration::Setup setup;
};

// All registered commands, sorted by name for a stable --help.
std::vector<RegisteredCommand> registeredCommands();

// The exit code the finished command asked for.
void setExitCode(int code);
int exitCode();

// Makes `run` the command's action: its result is the exit code, and an
// exception is one line on standard error, "NAME: reason", and kExitFailure.
void setCommandAction(CLI::App& command, std::string name, std::function<int()> run);

// "qrv-widgets VERSION", and a line "commit C" when the build knew its commit.
std::string versionText();

// Runs the program: parses argv, runs the chosen command, returns the exit code.
int runMain(int argc, char** argv);

}  // namespace qrv::host
