#include "job/folder/files.h"

#include <iterator>
#include <utility>

#include "job/job_error.h"

namespace fs = std::filesystem;

namespace varnolix::job {

std::string readFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (!file.is_open() || file.bad()) throw JobError("cannot read " + path.string());
    return text;
}

FreshFile::FreshFile(fs::path path)
    : path_(std::move(path)),
      unfinished_(path_.string() + ".new"),
      stream_(unfinished_, std::ios::binary | std::ios::trunc) {
    if (!stream_) throw JobError("cannot write " + path_.string());
}

FreshFile::~FreshFile() {
    if (unfinished_.empty()) return;
    stream_.close();
    std::error_code ignored;
    fs::remove(unfinished_, ignored);
}

void FreshFile::finish() {
    stream_.close();
    std::error_code error;
    if (stream_) fs::rename(unfinished_, path_, error);
    if (!stream_ || error) throw JobError("cannot write " + path_.string());
    unfinished_.clear();
}

void writeFile(const fs::path& path, std::string_view text) {
    FreshFile file(path);
    file.stream().write(text.data(), static_cast<std::streamsize>(text.size()));
    file.finish();
}

}  // namespace varnolix::job
