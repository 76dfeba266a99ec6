#include "tests/fuzz/Rs274dInput.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ZEP::ReadAnyRs274d({reinterpret_cast<const char*>(data), size});
    return 0;
}
