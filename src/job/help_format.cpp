#include "job/help_format.h"

#include <sstream>

namespace varnolix::job {

namespace {

constexpr std::size_t meaningColumn = 24;
constexpr std::size_t lineWidth = 79;

}  // namespace

std::string helpEntry(const std::string& term, const std::string& meaning) {
    std::string text = "  " + term;
    std::size_t column = text.size();
    if (column + 2 > meaningColumn) {
        text += "\n";
        column = 0;
    }
    text.append(meaningColumn - column, ' ');
    column = meaningColumn;
    std::istringstream words(meaning);
    for (std::string word; words >> word; column += word.size() + 1) {
        if (column > meaningColumn && column + word.size() > lineWidth) {
            text.back() = '\n';
            text.append(meaningColumn, ' ');
            column = meaningColumn;
        }
        text += word + " ";
    }
    text.back() = '\n';
    return text;
}

std::string HelpFormat::make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const {
    if (mode == CLI::AppFormatMode::Sub) return make_expanded(app);
    return make_usage(app, std::move(name)) + app->get_description() + ".\n" + make_positionals(app) +
           make_groups(app, mode) + make_subcommands(app, mode) + make_footer(app);
}

std::string HelpFormat::make_usage(const CLI::App* app, std::string name) const {
    // The program's name comes with its path where it is called by a command.
    std::string usage = "Usage: " + (name.empty() ? app->get_name() : name);
    if (!app->get_subcommands([](const CLI::App*) { return true; }).empty()) {
        return usage + (app->get_parent() == nullptr ? " COMMAND [OPTION]... [FILE]...\n" : " [COMMAND]\n");
    }
    usage += " [OPTION]...";
    for (const CLI::Option* option : app->get_options([](const CLI::Option* each) { return each->get_positional(); })) {
        usage += " " + option->get_name(true) + (option->get_expected_max() > 1 ? "..." : "");
    }
    return usage + "\n";
}

std::string HelpFormat::make_option(const CLI::Option* option, bool isPositional) const {
    if (isPositional) return helpEntry(option->get_name(true), option->get_description());
    std::string term;
    for (const std::string& name : option->get_snames()) term += "-" + name + ", ";
    if (term.empty()) term = "    ";
    for (const std::string& name : option->get_lnames()) term += "--" + name;
    // What the checks of a value say of it follows a colon.
    const std::string type = option->get_type_name();
    if (option->get_expected_max() > 0 && !type.empty()) term += "=" + type.substr(0, type.find(':'));
    return helpEntry(term, option->get_description());
}

std::string HelpFormat::make_subcommand(const CLI::App* command) const {
    return helpEntry(command->get_name(), command->get_description());
}

}  // namespace varnolix::job
