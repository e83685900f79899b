#pragma once

#include "Platform/Seam/Desktop/MainActor.h"

#include <deque>
#include <memory>

namespace platform::linux {

/// Delivers events, in order and each in a turn of the event loop of its own, so that a thousand windows at once do not
/// delay a key press. Events that are pending at its destruction are never delivered.
class Deliveries {
public:
    explicit Deliveries(MainActor& mainActor)
        : mainActor(mainActor) {}

    void post(MainActor::Work work);

private:
    void awaitTurn();
    void deliverNext();

    MainActor& mainActor;
    std::deque<MainActor::Work> waiting;
    bool awaitsTurn = false;
    std::shared_ptr<Deliveries*> self = std::make_shared<Deliveries*>(this);
};

} // namespace platform::linux
