#include "CorvidKit/Toolkit/PointerHold.h"

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
    lastInput = mainActor.now();
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
        pendingTry = mainActor.schedule(mainActor.now() + pause, pause, [this] { take(); });
    }
}

void PointerHold::watch() {
    // Looked at rather than set anew with every movement of the pointer.
    pendingEnd = mainActor.schedule(lastInput + patience, patience / 10, [this] {
        if (mainActor.now() < lastInput + patience) {
            watch();
        } else {
            isHeld = false;
            hold(false);
        }
    });
}

} // namespace corvid::toolkit
