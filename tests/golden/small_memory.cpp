#include "rank/usable_memory.h"

// The program with simulated low memory: it takes few motifs at a time, as big jobs do.

std::size_t varnolix::usableMemory() {
    return 25600;
}
