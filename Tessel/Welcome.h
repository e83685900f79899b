#pragma once

#include "CorvidKit/Lifetime.h"
#include "CorvidKit/Publisher.h"
#include "CorvidKitCore/PreferenceStore.h"
#include "Platform/Seam/Desktop/MainActor.h"
#include "Platform/Seam/Desktop/SessionLock.h"
#include "Tessel/AppState.h"

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace tessel {

/// Opens the popover by itself for news that the user might miss: once at the first start ever, once if a start finds
/// that windows cannot be moved, and once if one finds shortcuts taken. The settings keep these reasons, so no later
/// start opens it for the same one. It stays closed while the program is switched off, and from a locked session until
/// the next start.
///
/// Says that the program is ready once windows can be moved, if the user had to log out and in for it. The note of that
/// is in the settings, so the next start says it, whoever starts the program and whenever.
///
/// Main thread only.
class Welcome {
public:
    struct Commands {
        /// Opens the popover; nothing happens where it is open or cannot be had.
        std::function<void()> open;
        /// Shows a text, in the user's language, outside of the program's windows.
        std::function<void(const std::string& text)> notify;
        /// Reports a lock, also one that holds already, for as long as what it gives lives.
        std::function<std::unique_ptr<platform::LockWatch>(std::function<void()> locked)> watchLock;
    };

    /// When a first start opens the popover: the panel has taken the item by then, so the popover hangs at it.
    static constexpr platform::Duration settling = std::chrono::seconds(1);

    /// The time after which a later start looks for obstacles: by then a new session has its window manager, and the
    /// state knows it.
    static constexpr platform::Duration patience = std::chrono::seconds(20);

    /// How long the need of a log-in must hold to be noted: at the start of a session, the extension is loaded a little
    /// later than the program asks for it. A user who has read the card needs longer to log out.
    static constexpr platform::Duration certainty = std::chrono::seconds(5);

    /// To be made before the first state over these settings, which leaves its notes in them. The settings must outlive
    /// this.
    explicit Welcome(corvid::PreferenceStore& preferences);
    Welcome(const Welcome&) = delete;
    Welcome& operator=(const Welcome&) = delete;
    ~Welcome() = default;

    /// To be called once, when the program has started. The state must outlive this.
    void begin(AppState& state, Commands commands);

private:
    /// Whether it was opened for something, by the reasons' names in the settings.
    using Reasons = std::map<std::string, bool, std::less<>>;

    /// The former reasons and those that hold now.
    [[nodiscard]] Reasons reasons() const;

    /// Opens it a little later if there is a reason then, and nobody locks the session in the meantime.
    void openSoon();
    void openIfNeeded();
    void look();

    /// Keeps that the user has to log in again, as long as that is so.
    void noteLogin();
    void follow();
    void sayIfReady();

    [[nodiscard]] bool needsLogin() const;

    [[nodiscard]] std::unique_ptr<platform::ScheduledWork> after(platform::Duration delay, void (Welcome::*work)());

    corvid::PreferenceStore& preferences;
    bool isFirstStart = false;
    AppState* state = nullptr;
    Commands commands;
    std::unique_ptr<platform::LockWatch> lockWatch;
    std::unique_ptr<platform::ScheduledWork> opening;
    std::unique_ptr<platform::ScheduledWork> looking;
    std::unique_ptr<platform::ScheduledWork> noting;
    corvid::Subscription changes;
    corvid::Lifetime lifetime;
};

} // namespace tessel
