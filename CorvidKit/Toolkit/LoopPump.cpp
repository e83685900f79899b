#include "CorvidKit/Toolkit/LoopPump.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>

namespace corvid::toolkit {

LoopPump::LoopPump(platform::HostedLoop& mainLoop)
    : mainLoop(mainLoop)
    , readable(mainLoop.descriptor(), QSocketNotifier::Read) {
    connect(&readable, &QSocketNotifier::activated, this, &LoopPump::turn);
    // Timers are set only when the main loop is about to wait; without this they would never be.
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this, &LoopPump::turn);
}

void LoopPump::turn() {
    if (!mainLoop.serve()) {
        readable.setEnabled(false);
        QCoreApplication::exit();
    }
}

} // namespace corvid::toolkit
