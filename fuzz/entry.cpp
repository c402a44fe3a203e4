#include <cstddef>
#include <cstdint>

#include "fuzz/targets.h"

// The function that libFuzzer calls. The build defines which target it runs.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    varnolix::fuzz::FUZZ_TARGET({reinterpret_cast<const char*>(bytes), size});
    return 0;
}
