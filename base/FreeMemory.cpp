#include "base/FreeMemory.h"

#include <cstdlib> // tells which library it is

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace tarvessa {

void returnFreeMemory() {
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

} // namespace tarvessa
