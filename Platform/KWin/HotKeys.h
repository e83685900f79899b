#pragma once

#include "Platform/KWin/GlobalAccel.h"
#include "Platform/KWin/KeyLoans.h"
#include "Platform/Linux/Bus/NameOwner.h"
#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/HotKeys/HandledHotKeys.h"
#include "Platform/Linux/Log/Log.h"
#include "Platform/Linux/Loop/LaterWork.h"
#include "Platform/Linux/Loop/MainLoop.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace platform::kwin {

/// Global hot keys through KGlobalAccel (org.kde.KGlobalAccel), which is part of KWin on Wayland and a program of its
/// own on X11. The system's settings list the keys under the program's name while they are registered, and no longer:
/// after the program has ended nothing holds them.
///
/// KGlobalAccel identifies keys by their symbol, not by position: a key is the symbol that an American layout has at
/// its position.
///
/// Up to Plasma 6.5, KGlobalAccel refuses a key that another program has. Plasma 6.7's grants it to both, and sends
/// presses only to the one that registered first. So this class asks who gets a key's presses; a key whose presses go
/// to another program counts as held, with every version.
///
/// A borrowed key is taken out of the list of its holder's action in the system's settings (see `KeyLoans`) and put
/// back when it is not registered any more, when this ends, and after the next start of a program that was killed. A
/// key that the user gives to another program meanwhile stays there until the consent is given anew.
///
/// A key is lost that somebody else holds when KGlobalAccel was started anew, that the system's settings give to
/// another program, or for which KGlobalAccel did not answer in time. Main thread only.
class HotKeys final : public linux::HandledHotKeys, private linux::SessionBus::Listener {
public:
    /// The text for a combination (Carbon key code and modifiers) in the system's settings.
    using Naming = std::function<std::string(std::uint32_t keyCode, std::uint32_t modifiers)>;

    /// All arguments must outlive this. Registering waits for the bus's replies. `loans` is the absolute path of the
    /// note of borrowed keys; without one, none is borrowed.
    HotKeys(linux::MainLoop& mainLoop, linux::SessionBus& sessionBus, Naming naming,
            std::optional<std::string> loans = std::nullopt, linux::Log log = linux::logToStandardError);
    /// Gives all keys back.
    ~HotKeys() override;

    [[nodiscard]] Registration registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                              EventHotKeyID name) override;
    void unregisterHotKey(EventHotKeyRef reference) override;

    /// A repeated consent counts as a new one.
    void setBorrows(bool consent) override;
    [[nodiscard]] HotKeyLoan loan(std::uint32_t keyCode, std::uint32_t modifiers) const override;
    [[nodiscard]] std::optional<LoanObstacle> loanObstacle(std::uint32_t keyCode,
                                                           std::uint32_t modifiers) const override;

    [[nodiscard]] bool borrowingChangesSettings() const override { return true; }

    /// The action that a combination is borrowed from; null if it is not borrowed.
    [[nodiscard]] const AccelAction* lender(std::int32_t key) const;

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

    /// Registers a key, and borrows it if that is needed and allowed.
    [[nodiscard]] OSStatus take(const Registered& registered);
    [[nodiscard]] OSStatus establish(const Registered& registered);
    /// The same for a key that another program has.
    [[nodiscard]] OSStatus borrow(const Registered& registered);
    void clearLeftovers();
    /// Gives back, in a later turn, the keys that are borrowed but not registered by then.
    void settleLater();
    void settle();
    void keepReassigned();
    [[nodiscard]] bool isRegistered(std::int32_t key) const;

    linux::MainLoop& mainLoop;
    Naming naming;
    sd_bus* bus = nullptr;
    GlobalAccel accel;
    KeyLoans loans;
    bool borrows = false;
    linux::RefusedKeys<std::int32_t> refused;
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
    /// The action whose press was reported and whose key is still down.
    std::string heldAction;
    std::deque<std::string> pressedActions;
    linux::LaterWork later{mainLoop};
};

} // namespace platform::kwin
