#include "Platform/KWin/Session.h"

#include "Platform/KWin/BusWait.h"
#include "Platform/KWin/NameOwner.h"
#include "Platform/Linux/Control/SessionBus.h"

namespace platform::kwin {

namespace {

class Question final : private linux::SessionBus::Listener {
public:
    explicit Question(linux::SessionBus& sessionBus)
        : Listener(sessionBus) {}

    [[nodiscard]] bool answer(const MainActor& clock, Instant deadline) {
        return waitOnBus(bus, clock, [this] { return isAnswered; }, deadline) && !kwin.owner().empty();
    }

private:
    void busArrived(sd_bus* arrived) override {
        bus = arrived;
        kwin.follow(bus);
    }

    void busLeft() override {
        bus = nullptr;
        kwin.forget();
    }

    sd_bus* bus = nullptr;
    bool isAnswered = false;
    NameOwner kwin{"org.kde.KWin", [this] { isAnswered = true; }};
};

} // namespace

bool isThere(linux::MainLoop& mainLoop, Instant deadline) {
    linux::SessionBus bus(mainLoop);
    Question question(bus);
    return bus.awaitArrival(deadline) && question.answer(mainLoop, deadline);
}

} // namespace platform::kwin
