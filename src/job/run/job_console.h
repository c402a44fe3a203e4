#pragma once

#include <string>

namespace varnolix::job {

/// While it lives, standard output of this process and of the tools that it starts goes to a file. If a stage ends the
/// process meanwhile, its last line is printed on standard error.
class JobConsole {
  public:
    /// Throws JobError if the file cannot be made.
    explicit JobConsole(const std::string& path);
    ~JobConsole();
    JobConsole(const JobConsole&) = delete;
    JobConsole& operator=(const JobConsole&) = delete;

  private:
    int standardOutput_;
};

/// The last line of the text that is not empty.
std::string lastLineOf(const std::string& text);

}  // namespace varnolix::job
