/* Preloaded into Wine by the tests. The driver manager below it keeps what it has read of a data source for
   some seconds, and the way to make it forget is a call that a Windows program cannot make. To the driver
   manager every look at the clock is therefore a minute after the last one. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <string.h>
#include <time.h>

time_t time(time_t* result) {
    static _Atomic time_t ahead;
    struct timespec now;
    Dl_info caller;
    time_t seconds;
    clock_gettime(CLOCK_REALTIME, &now);
    seconds = now.tv_sec;
    if (dladdr(__builtin_return_address(0), &caller) && caller.dli_fname &&
        strstr(caller.dli_fname, "libodbc"))
        seconds += ahead += 60;
    if (result)
        *result = seconds;
    return seconds;
}
