#include "CorvidKit/Toolkit/PointerHold.h"

#include "Platform/Platform.h"

namespace corvid::toolkit {

void PointerHold::begin() {
    isWanted = true;
    noticeInput();
}

void PointerHold::end() {
    isWanted = false;
    pendingTry.reset();
    pendingEnd.reset();
    if (isHeld) {
        isHeld = false;
        hold(false);
    }
}

void PointerHold::noticeInput() {
    if (!isWanted) {
        return;
    }
    lastInput = platform::current().mainActor.now();
    if (!isHeld && !pendingTry) {
        tries = 0;
        take();
    }
}

void PointerHold::take() {
    pendingTry.reset();
    isHeld = hold(true);
    if (isHeld) {
        watch();
    } else if (++tries <= mostTries) {
        platform::MainActor& mainActor = platform::current().mainActor;
        pendingTry = mainActor.schedule(mainActor.now() + pause, pause, [this] { take(); });
    }
}

void PointerHold::watch() {
    // Checked, so that it is not set again at every movement of the pointer.
    pendingEnd = platform::current().mainActor.schedule(lastInput + patience, patience / 10, [this] {
        if (platform::current().mainActor.now() < lastInput + patience) {
            watch();
        } else {
            isHeld = false;
            hold(false);
        }
    });
}

} // namespace corvid::toolkit
