#include "CorvidKit/Toolkit/LoopPump.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>

namespace corvid::toolkit {

LoopPump::LoopPump(platform::HostedLoop& mainLoop)
    : mainLoop(mainLoop)
    , readable(mainLoop.descriptor(), QSocketNotifier::Read) {
    connect(&readable, &QSocketNotifier::activated, this, &LoopPump::turn);
    nextTurn.setSingleShot(true);
    connect(&nextTurn, &QTimer::timeout, this, &LoopPump::turn);
    // Timers are set only when the main loop is about to wait; without this they would never be.
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this, &LoopPump::turn);
}

void LoopPump::turn() {
    switch (mainLoop.serve()) {
    case platform::HostedLoop::Outlook::idle:
        break;
    case platform::HostedLoop::Outlook::unfinished:
        // Queued after the pending work in Qt's loop, which would otherwise sleep until an event from outside.
        nextTurn.start();
        break;
    case platform::HostedLoop::Outlook::ended:
        readable.setEnabled(false);
        QCoreApplication::exit();
        break;
    }
}

} // namespace corvid::toolkit
