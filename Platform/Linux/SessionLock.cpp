#include "Platform/Linux/SessionLock.h"

#include "Platform/Linux/Control/BusVariant.h"

#include <systemd/sd-login.h>

#include <unistd.h>

#include <cstdlib>
#include <string_view>
#include <utility>

namespace platform::linux {

namespace {

constexpr const char* loginName = "org.freedesktop.login1";
constexpr const char* loginSessionPath = "/org/freedesktop/login1/session";
constexpr const char* loginSessionInterface = "org.freedesktop.login1.Session";
/// Each desktop's screensaver has an interface of its own, which ends in this.
constexpr std::string_view screenSaverInterface = ".ScreenSaver";

struct FreeText {
    void operator()(char* text) const { std::free(text); }
};

using OwnedText = std::unique_ptr<char, FreeText>;

} // namespace

std::string loginSession() {
    // Nothing in the program changes its environment.
    if (const char* named = std::getenv("XDG_SESSION_ID");
        named != nullptr && *named != '\0') { // NOLINT(concurrency-mt-unsafe)
        return named;
    }
    char* raw = nullptr;
    if (sd_pid_get_session(0, &raw) < 0 && sd_uid_get_display(::getuid(), &raw) < 0) {
        return {};
    }
    const OwnedText name(raw);
    return name.get();
}

/// Tells in a turn of its own: whoever is told may drop the watch, with the bus that is just being read.
class SessionLock::Teller {
public:
    Teller(MainLoop& mainLoop, std::function<void()> locked)
        : mainLoop(mainLoop)
        , locked(std::make_shared<std::function<void()>>(std::move(locked))) {}

    void tell() const {
        mainLoop.post([watched = std::weak_ptr(locked)] {
            if (const auto function = watched.lock()) {
                (*function)();
            }
        });
    }

private:
    MainLoop& mainLoop;
    std::shared_ptr<std::function<void()>> locked;
};

class SessionLock::LoginManager final : private SessionBus::Listener {
public:
    LoginManager(SessionBus& systemBus, std::string session, const Teller& teller)
        : Listener(systemBus)
        , session(std::move(session))
        , teller(teller) {}

private:
    void busArrived(sd_bus* bus) override {
        char* raw = nullptr;
        if (session.empty() || sd_bus_path_encode(loginSessionPath, session.c_str(), &raw) < 0) {
            return;
        }
        const OwnedText path(raw);
        sd_bus_slot* slot = nullptr;
        sd_bus_match_signal_async(bus, &slot, loginName, path.get(), loginSessionInterface, "Lock",
                                  &LoginManager::asked, &ignoreReply, this);
        lock.reset(std::exchange(slot, nullptr));
        sd_bus_match_signal_async(bus, &slot, loginName, path.get(), "org.freedesktop.DBus.Properties",
                                  "PropertiesChanged", &LoginManager::changed, &ignoreReply, this);
        properties.reset(slot);
    }

    void busLeft() override {
        lock.reset();
        properties.reset();
    }

    static int asked(sd_bus_message* /*signal*/, void* data, sd_bus_error* /*error*/) {
        static_cast<LoginManager*>(data)->teller.tell();
        return 0;
    }

    static int changed(sd_bus_message* signal, void* data, sd_bus_error* /*error*/) {
        const char* interface = nullptr;
        if (sd_bus_message_read(signal, "s", &interface) <= 0 || std::string_view(interface) != loginSessionInterface ||
            sd_bus_message_enter_container(signal, SD_BUS_TYPE_ARRAY, "{sv}") <= 0) {
            return 0;
        }
        while (sd_bus_message_enter_container(signal, SD_BUS_TYPE_DICT_ENTRY, "sv") > 0) {
            const char* name = nullptr;
            if (sd_bus_message_read(signal, "s", &name) <= 0) {
                return 0;
            }
            const bool isHint = std::string_view(name) == "LockedHint";
            if (readVariant<int>(signal, "b").value_or(0) != 0 && isHint) {
                static_cast<LoginManager*>(data)->teller.tell();
            }
            if (sd_bus_message_exit_container(signal) < 0) {
                return 0;
            }
        }
        return 0;
    }

    std::string session;
    const Teller& teller;
    OwnedSlot lock;
    OwnedSlot properties;
};

class SessionLock::ScreenSaver final : private SessionBus::Listener {
public:
    ScreenSaver(SessionBus& sessionBus, const Teller& teller)
        : Listener(sessionBus)
        , teller(teller) {}

private:
    void busArrived(sd_bus* bus) override {
        sd_bus_slot* slot = nullptr;
        sd_bus_add_match_async(bus, &slot, "type='signal',member='ActiveChanged'", &ScreenSaver::changed, &ignoreReply,
                               this);
        changes.reset(slot);
    }

    void busLeft() override { changes.reset(); }

    static int changed(sd_bus_message* signal, void* data, sd_bus_error* /*error*/) {
        int isActive = 0;
        if (std::string_view(sd_bus_message_get_interface(signal)).ends_with(screenSaverInterface) &&
            sd_bus_message_has_signature(signal, "b") > 0 && sd_bus_message_read(signal, "b", &isActive) > 0 &&
            isActive != 0) {
            static_cast<ScreenSaver*>(data)->teller.tell();
        }
        return 0;
    }

    const Teller& teller;
    OwnedSlot changes;
};

class SessionLock::Watch final : public LockWatch {
public:
    Watch(const SessionLock& lock, std::function<void()> locked)
        : teller(lock.mainLoop, std::move(locked))
        , systemBus(lock.mainLoop, lock.systemAddress)
        , loginManager(systemBus, lock.session, teller)
        , screenSaver(lock.sessionBus, teller) {}

private:
    Teller teller;
    SessionBus systemBus;
    LoginManager loginManager;
    ScreenSaver screenSaver;
};

SessionLock::SessionLock(MainLoop& mainLoop, SessionBus& sessionBus, std::optional<std::string> systemAddress,
                         std::string session)
    : mainLoop(mainLoop)
    , sessionBus(sessionBus)
    , systemAddress(std::move(systemAddress))
    , session(std::move(session)) {
}

std::unique_ptr<LockWatch> SessionLock::watch(std::function<void()> locked) {
    return std::make_unique<Watch>(*this, std::move(locked));
}

} // namespace platform::linux
