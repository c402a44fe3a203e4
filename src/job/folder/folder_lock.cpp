#include "job/folder/folder_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "job/job_error.h"

namespace fs = std::filesystem;

namespace varnolix::job {

FolderLock::FolderLock(const fs::path& folder) {
    std::error_code error;
    const fs::file_status status = fs::status(folder, error);
    if (fs::exists(status) && !fs::is_directory(status)) {
        throw JobError(folder.string() + " exists and is not a folder");
    }
    fs::create_directories(folder, error);
    descriptor_ = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor_ < 0) throw JobError("cannot make the folder " + folder.string());
    // Some network file systems have no such locks, and do without.
    if (flock(descriptor_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        close(descriptor_);
        throw JobError("another varnolix-job is at work in " + folder.string());
    }
}

FolderLock::~FolderLock() {
    close(descriptor_);
}

}  // namespace varnolix::job
