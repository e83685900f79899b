#pragma once

#include "Platform/Seam/Desktop/HostedLoop.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

namespace corvid::toolkit {

/// Runs the main loop inside Qt's: each waits for the other's events, too. Ends Qt's loop when the main loop ends.
/// Created and destroyed on the main thread, while Qt's application object lives.
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
