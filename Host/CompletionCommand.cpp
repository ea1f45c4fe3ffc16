// The words the shell's completion offers, asked of the program itself so that
// the completion script never has its own list of commands, options or values
// to keep in step. Hidden from --help; the bash completion and the manual page
// build call it:
//
//   qrv-widgets __complete                    the commands, one a line
//   qrv-widgets __complete CMD                CMD's long options
//   qrv-widgets __complete CMD --OPTION       the values OPTION takes: one a
//                                             line, <dir> / <file> for a path,
//                                             <text> for free text, nothing for
//                                             a flag
// A new option with a set check (CLI::IsMember) completes with no edit here; one
// checked in code completes by its type name, in valuesOfType.
#include <iostream>

#include "Host/Command.hpp"
#include "Host/RenderWidget.hpp"
#include "Platform/locale/StringCatalog.hpp"
#include "Platform/timeline/WidgetFamily.hpp"
#include "Widget/Widgets/QRVWidgets.hpp"
#include "Widget/Widgets/WidgetConfiguration.hpp"

namespace qrv::host {
namespace {

constexpr const char* kCompleteCommand = "__complete";

// The members of a set check as CLI11 writes them into the type name:
// "SCHEME:{light,dark,both}".
std::vector<std::string> membersInTypeName(const std::string& typeName) {
    const auto open = typeName.find('{');
    const auto close = typeName.find('}', open);
    if (open == std::string::npos || close == std::string::npos) return {};
    std::vector<std::string> members;
    std::string current;
    for (auto c : typeName.substr(open + 1, close - open - 1)) {
        if (c != ',') {
            current += c;
            continue;
        }
        members.push_back(current);
        current.clear();
    }
    members.push_back(current);
    return members;
}

// Values of the options whose check is code rather than a set, by the option's
// type name; what the program itself knows.
std::vector<std::string> valuesOfType(const std::string& type) {
    std::vector<std::string> values;
    if (type == "WIDGET") {
        for (const auto& widget : widget::QRVWidgets{}.body(widget::kInteractiveWidgetsSystemVersion))
            values.push_back(hostWidgetName(widget.kind()));
    } else if (type == "FAMILY") {
        for (auto family : platform::kAllWidgetFamilies) values.emplace_back(platform::name(family));
    } else if (type == "LOCALE") {
        values = platform::StringCatalog::main()->languages();
    } else if (type == "DIR") {
        values.emplace_back("<dir>");
    } else if (type == "FILE") {
        values.emplace_back("<file>");
    } else {
        values.emplace_back("<text>");  // free text: a time, a title, a number
    }
    return values;
}

std::vector<std::string> optionValues(const CLI::Option& option) {
    if (option.get_expected_max() == 0) return {};  // a flag
    const auto typeName = option.get_type_name();
    if (auto members = membersInTypeName(typeName); !members.empty()) return members;
    return valuesOfType(typeName.substr(0, typeName.find(':')));
}

bool everyCommand(const CLI::App*) { return true; }

int complete(const CLI::App& app, const std::vector<std::string>& words) {
    if (words.empty()) {
        for (const auto* command : app.get_subcommands(everyCommand))
            if (command->get_name() != kCompleteCommand) std::cout << command->get_name() << '\n';
        return kExitOk;
    }
    const CLI::App* command = nullptr;
    for (const auto* each : app.get_subcommands(everyCommand))
        if (each->get_name() == words[0]) command = each;
    if (command == nullptr) return kExitUsage;
    for (const auto* option : command->get_options()) {
        for (const auto& name : option->get_lnames()) {
            if (words.size() == 1) {
                std::cout << "--" << name << '\n';
            } else if (words[1] == "--" + name) {
                for (const auto& value : optionValues(*option)) std::cout << value << '\n';
                return kExitOk;
            }
        }
    }
    return words.size() == 1 ? kExitOk : kExitUsage;
}

const CommandRegistration completeCommand{
    kCompleteCommand, [](CLI::App& app) {
        auto* command = app.add_subcommand(kCompleteCommand, "Words for shell completion")->group("");
        command->set_help_flag();
        command->prefix_command();  // every word after the command is kept as it is, "--out" too
        setCommandAction(*command, kCompleteCommand,
                         [&app, command] { return complete(app, command->remaining()); });
    }};

}  // namespace
}  // namespace qrv::host
