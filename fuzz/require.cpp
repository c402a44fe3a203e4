#include <cstdio>
#include <cstdlib>

#include "fuzz/targets.h"

namespace varnolix::fuzz {

void require(bool holds, const char* promise) {
    if (holds) return;
    std::fprintf(stderr, "broken promise: %s\n", promise);
    std::abort();
}

}  // namespace varnolix::fuzz
