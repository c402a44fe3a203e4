#include "job/folder/files.h"

#include <fstream>
#include <iterator>

#include "job/job_error.h"

namespace fs = std::filesystem;

namespace varnolix::job {

std::string readFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (!file.is_open() || file.bad()) throw JobError("cannot read " + path.string());
    return text;
}

void writeFile(const fs::path& path, std::string_view text) {
    fs::path fresh = path;
    fresh += ".new";
    std::ofstream file(fresh, std::ios::binary | std::ios::trunc);
    file.write(text.data(), static_cast<std::streamsize>(text.size()));
    file.close();
    std::error_code error;
    if (file) fs::rename(fresh, path, error);
    if (!file || error) {
        fs::remove(fresh, error);
        throw JobError("cannot write " + path.string());
    }
}

}  // namespace varnolix::job
