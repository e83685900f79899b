#pragma once

#include "Platform/KWin/GlobalAccel.h"
#include "Platform/KWin/KeyLoans.h"
#include "Platform/Linux/Bus/NameOwner.h"
#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/HandledHotKeys.h"
#include "Platform/Linux/Log.h"
#include "Platform/Linux/MainLoop.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace platform::kwin {

/// Global hot keys through KGlobalAccel (org.kde.KGlobalAccel), which KWin holds on Wayland and a program of its own on
/// X11. The keys stand in the system's settings under the program's name while they are registered, and are taken out
/// of there again: after the program has ended nothing holds them.
///
/// KGlobalAccel knows letters, not places: a key is what an American layout has at its place.
///
/// That of Plasma up to 6.5 refuses a key that another program has. That of Plasma 6.7 grants it to both, and tells
/// only the one that registered first of its presses. To whom a key goes is therefore asked for; one that goes to
/// another program counts as held by somebody else, everywhere.
///
/// A borrowed key is taken out of the list of its holder's action in the system's settings (see `KeyLoans`) and put
/// back when it is not registered any more, when this ends, and after the next start of a program that was killed. A
/// key that the user gives to another program meanwhile stays there until the consent is given anew.
///
/// A key is lost that somebody else holds when KGlobalAccel was started anew, that the system's settings give to
/// another program, or for which KGlobalAccel did not answer in time. Main thread only.
class HotKeys final : public linux::HandledHotKeys, private linux::SessionBus::Listener {
public:
    /// What the user reads in the system's settings beside a combination (Carbon key code and modifiers).
    using Naming = std::function<std::string(std::uint32_t keyCode, std::uint32_t modifiers)>;

    /// Everything has to outlive this. Registering waits for the bus's answers. `loans` is the absolute path of the
    /// note of what is borrowed; nothing is without one.
    HotKeys(linux::MainLoop& mainLoop, linux::SessionBus& sessionBus, Naming naming,
            std::optional<std::string> loans = std::nullopt, linux::Log log = linux::logToStandardError);
    /// Gives all keys back.
    ~HotKeys() override;

    [[nodiscard]] Registration registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                              EventHotKeyID name) override;
    void unregisterHotKey(EventHotKeyRef reference) override;

    /// A consent that is given once more is a new one.
    void setBorrows(bool consent) override;
    [[nodiscard]] HotKeyLoan loan(std::uint32_t keyCode, std::uint32_t modifiers) const override;

    [[nodiscard]] bool borrowingChangesSettings() const override { return true; }

    /// The action that a combination is borrowed from; null where it is not.
    [[nodiscard]] const AccelAction* lender(std::int32_t key) const;

    /// Sets the work that precedes the handler of each press: each press has a turn's time of its own.
    void setBeforePress(std::function<void()> work) { beforePress = std::move(work); }

private:
    struct Registered {
        /// Its name in KGlobalAccel.
        std::string action;
        std::string title;
        std::int32_t key = 0;
        EventHotKeyID name;
    };

    void busArrived(sd_bus* arrived) override;
    void busLeft() override;

    static int keySignalled(sd_bus_message* signal, void* data, sd_bus_error* error);
    static int settingsSignalled(sd_bus_message* signal, void* data, sd_bus_error* error);

    void keyPressed(const char* action);
    void ownerChanged();
    void renew();
    void actOnPresses();

    /// Registers, and borrows where that is needed and wanted.
    [[nodiscard]] OSStatus take(const Registered& registered);
    [[nodiscard]] OSStatus establish(const Registered& registered);
    void clearLeftovers();
    /// Gives back, in a later turn, what is borrowed and not registered by then.
    void settleLater();
    void settle();
    void keepReassigned();
    void later(void (HotKeys::*work)());
    [[nodiscard]] bool isRegistered(std::int32_t key) const;

    linux::MainLoop& mainLoop;
    Naming naming;
    sd_bus* bus = nullptr;
    GlobalAccel accel;
    KeyLoans loans;
    bool borrows = false;
    /// Refused, and to be had by borrowing.
    std::set<std::int32_t> lendable;
    /// Keys that the user has just given to other actions.
    std::vector<std::pair<std::int32_t, AccelAction>> reassigned;
    linux::NameOwner owner;
    /// The owner of the service that holds our keys; empty while there is none.
    std::string server;
    bool areLeftoversCleared = false;
    linux::OwnedSlot keySignals;
    linux::OwnedSlot settingsSignals;
    std::map<std::uint64_t, Registered> registrations;
    std::uint64_t lastReference = 0;
    std::function<void()> beforePress;
    /// The action whose press was reported and whose key is still down.
    std::string heldAction;
    std::deque<std::string> pressedActions;
    std::shared_ptr<HotKeys*> self = std::make_shared<HotKeys*>(this);
};

} // namespace platform::kwin
