#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Workers that have WebLogo and ghostscript loaded (weblogo_worker.py), and who talks to which.
//
// There are as many slots as cores. A slot is a lock and a socket in a folder of the user's own. A caller takes a free
// slot, or queues for one; while it has the lock, the slot's worker is its own, and where there is none it starts one.
// The kernel gives the lock back when the caller ends, however it ends. A worker that has had nothing to do for its
// idle time takes the lock itself and clears the slot away, so no caller ever knocks at a door that is just closing.
//
// Tested by tests/tools/test_weblogo.py.

namespace varnolix::logos {

/// The picture as drawn by a worker; nothing where no worker can be had, or it has no picture to give. Workers of
/// different states of the tools know nothing of each other.
std::optional<std::string> drawnByWorker(const std::string& tools, const std::vector<std::string>& options,
                                         std::string_view matrix);

}  // namespace varnolix::logos
