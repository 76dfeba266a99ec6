#include "viewer/files/Memory.h"

#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace ZEP {

void GiveBackMemory() {
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

} // namespace ZEP
