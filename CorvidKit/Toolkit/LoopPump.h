#pragma once

#include "Platform/HostedLoop.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

namespace corvid::toolkit {

/// Lets the main loop turn within Qt's: whatever the one waits for, the other waits for too. Ends Qt's loop when the
/// main loop ends. Made and dropped on the main thread, while Qt's application object lives.
class LoopPump final : public QObject {
    Q_OBJECT

public:
    explicit LoopPump(platform::HostedLoop& mainLoop);

private:
    void turn();

    platform::HostedLoop& mainLoop;
    QSocketNotifier readable;
    QTimer nextTurn;
};

} // namespace corvid::toolkit
