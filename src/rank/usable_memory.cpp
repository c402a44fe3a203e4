#include "rank/usable_memory.h"

#include "run/system/memory_limits.h"

namespace varnolix {

std::size_t usableMemory() {
    return memoryOfProcess();
}

}  // namespace varnolix
