#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace varnolix::job {

/// The whole file. Throws JobError.
std::string readFile(const std::filesystem::path& path);

/// Writes a file, as a whole or not at all. Throws JobError.
void writeFile(const std::filesystem::path& path, std::string_view text);

}  // namespace varnolix::job
