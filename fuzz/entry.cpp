#include <cstddef>
#include <cstdint>

#include "fuzz/targets.h"

// What libFuzzer calls, for the target that the build names.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    varnolix::fuzz::FUZZ_TARGET({reinterpret_cast<const char*>(bytes), size});
    return 0;
}
