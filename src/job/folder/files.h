#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace varnolix::job {

/// The whole file. Throws JobError.
std::string readFile(const std::filesystem::path& path);

/// A file that is written bit by bit and takes its place when it is whole. What is there before stays until then.
class FreshFile {
  public:
    /// Throws JobError if nothing can be written there.
    explicit FreshFile(std::filesystem::path path);
    ~FreshFile();
    FreshFile(const FreshFile&) = delete;
    FreshFile& operator=(const FreshFile&) = delete;

    std::ostream& stream() { return stream_; }
    /// Puts the file into its place. Throws JobError unless everything has reached it.
    void finish();

  private:
    std::filesystem::path path_;
    std::filesystem::path unfinished_;
    std::ofstream stream_;
};

/// Writes a file, as a whole or not at all. Throws JobError.
void writeFile(const std::filesystem::path& path, std::string_view text);

}  // namespace varnolix::job
