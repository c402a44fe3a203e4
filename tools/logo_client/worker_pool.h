#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Workers are processes that have WebLogo and ghostscript loaded (weblogo_worker.py). This is how callers share them.
//
// There are as many slots as cores. A slot consists of a lock and a socket in a private folder of the user. A caller
// takes a free slot or waits for one. As long as it holds the lock, it has the slot's worker to itself; if there is no
// worker, it starts one. The kernel releases the lock when the caller ends, for whatever reason. A worker that has been
// idle for too long takes the lock itself before it removes the slot, so no caller can ever connect to a worker that is
// shutting down.
//
// Tested by tests/tools/test_weblogo.py.

namespace varnolix::logos {

/// The picture as drawn by a worker. Nothing if there is no worker, or if it cannot draw the picture.
/// @param tools the state of the tools; every state has its own workers
std::optional<std::string> drawnByWorker(const std::string& tools, const std::vector<std::string>& options,
                                         std::string_view matrix);

}  // namespace varnolix::logos
