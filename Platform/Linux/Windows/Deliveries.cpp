#include "Platform/Linux/Windows/Deliveries.h"

#include <utility>

namespace platform::linux {

void Deliveries::post(MainActor::Work work) {
    waiting.push_back(std::move(work));
    awaitTurn();
}

void Deliveries::awaitTurn() {
    if (awaitsTurn) {
        return;
    }
    awaitsTurn = true;
    mainActor.post([weak = std::weak_ptr(self)] {
        if (const auto alive = weak.lock()) {
            (*alive)->deliverNext();
        }
    });
}

void Deliveries::deliverNext() {
    MainActor::Work work = std::move(waiting.front());
    waiting.pop_front();
    awaitsTurn = false;
    if (!waiting.empty()) {
        awaitTurn();
    }
    work();
}

} // namespace platform::linux
