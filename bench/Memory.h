#pragma once

#include <unistd.h>

#include <fstream>

namespace ZEP {

/// What the process has in memory.
inline double ResidentBytes() {
    std::ifstream file("/proc/self/statm");
    double size = 0, resident = 0;
    file >> size >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}

} // namespace ZEP
