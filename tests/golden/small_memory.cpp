#include "rank/usable_memory.h"

// The program on a machine that has hardly any memory, as far as it knows: no records are held, and the ranking takes
// few motifs at a time.

std::size_t varnolix::usableMemory() {
    return 25600;
}
