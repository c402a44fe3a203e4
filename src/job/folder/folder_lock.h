#pragma once

#include <filesystem>

namespace varnolix::job {

/// Keeps other processes of the companion out of a folder while it lives. The lock is the kernel's: nothing of it stays
/// behind when the process ends, for whatever reason, and tools that the process starts have no part in it.
class FolderLock {
  public:
    /// Makes the folder if it does not exist. Throws JobError if it cannot, or if another process has the lock.
    explicit FolderLock(const std::filesystem::path& folder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

  private:
    int descriptor_ = -1;
};

}  // namespace varnolix::job
