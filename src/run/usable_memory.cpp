#include "run/usable_memory.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>

namespace varnolix {

std::size_t usableMemory() {
    const std::size_t machine =
        static_cast<std::size_t>(sysconf(_SC_PHYS_PAGES)) * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    rlimit limit{};
    if (getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY) return machine;
    return std::min(machine, static_cast<std::size_t>(limit.rlim_cur));
}

}  // namespace varnolix
