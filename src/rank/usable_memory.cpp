#include "rank/usable_memory.h"

#include "run/memory_limits.h"

namespace varnolix {

std::size_t usableMemory() {
    return memoryOfProcess();
}

}  // namespace varnolix
