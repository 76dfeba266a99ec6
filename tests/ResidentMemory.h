#pragma once

#include <unistd.h>

#include <fstream>

namespace ZEP {

/// Freed memory stays for a while, so that its use is seen.
#ifdef __SANITIZE_ADDRESS__
inline constexpr bool KeepsFreedMemory = true;
#else
inline constexpr bool KeepsFreedMemory = false;
#endif

/// What the process holds in memory.
inline double ResidentBytes() {
    std::ifstream file("/proc/self/statm");
    double size = 0;
    double resident = 0;
    file >> size >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}

} // namespace ZEP
