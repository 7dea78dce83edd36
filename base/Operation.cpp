#include "base/Operation.h"

#include <QThread>

namespace tarvessa {

namespace {

struct Running {
    quint64 number = 0;
    int loopLevel = 0;
    quint64 latest = 0;
};

Running& running() {
    static Running only;
    return only;
}

} // namespace

Operation::Operation() : m_outer(running().number), m_outerLoopLevel(running().loopLevel) {
    const int loopLevel = QThread::currentThread()->loopLevel();
    if (m_outer != 0 && loopLevel == m_outerLoopLevel)
        return;
    running().number = ++running().latest;
    running().loopLevel = loopLevel;
}

Operation::~Operation() {
    running().number = m_outer;
    running().loopLevel = m_outerLoopLevel;
}

void Operation::renew() {
    if (running().number != 0)
        running().number = ++running().latest;
}

quint64 Operation::current() {
    return running().number;
}

quint64 Operation::latest() {
    return running().latest;
}

} // namespace tarvessa
