#pragma once

#include <QtGlobal>

namespace tarvessa::test {

class PrivateServer;

/// What a process holds at one moment, and what the server holds for it.
struct Gauges {
    qint64 residentKb = 0;
    qint64 heapKb = 0; ///< in use; 0 where the C library does not tell
    int handles = 0;   ///< open files and sockets
    int threads = 0;
    int windows = 0;          ///< top-level, shown or not
    int serverStatements = 0; ///< prepared on the server and not closed
    int connections = 0;      ///< of the program

    static Gauges read(PrivateServer& server);
};

} // namespace tarvessa::test
