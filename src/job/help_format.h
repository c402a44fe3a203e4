#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace varnolix::job {

/// Help as GNU tools print it: the usage first, then what the command does, then the options with `=VALUE` behind their
/// long names. No line is wider than a terminal of 80 columns.
class HelpFormat : public CLI::Formatter {
  public:
    std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override;
    std::string make_usage(const CLI::App* app, std::string name) const override;
    std::string make_option(const CLI::Option* option, bool isPositional) const override;
    std::string make_subcommand(const CLI::App* command) const override;
};

/// A term and what it means, in two columns: the meaning is wrapped, and begins on a line of its own if the term is
/// long.
std::string helpEntry(const std::string& term, const std::string& meaning);

}  // namespace varnolix::job
