#include "Platform/Linux/SessionLock.h"

#include "Platform/Linux/Bus/BusVariant.h"
#include "Platform/Linux/Bus/Calls.h"
#include "Platform/Linux/LaterWork.h"

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

/// Announces a lock in a turn of its own: the handler may drop the watch, with the bus that is just being read.
class SessionLock::Announcement {
public:
    Announcement(MainLoop& mainLoop, std::function<void()> locked)
        : locked(std::move(locked))
        , later(mainLoop) {}

    void make() const { later.post(locked); }

private:
    std::function<void()> locked;
    LaterWork later;
};

class SessionLock::LoginManager final : private SessionBus::Listener {
public:
    LoginManager(SessionBus& systemBus, std::string session, const Announcement& announcement, bool asks)
        : Listener(systemBus)
        , session(std::move(session))
        , announcement(announcement)
        , asks(asks) {}

private:
    void busArrived(sd_bus* bus) override {
        char* raw = nullptr;
        if (session.empty() || sd_bus_path_encode(loginSessionPath, session.c_str(), &raw) < 0) {
            return;
        }
        const OwnedText path(raw);
        lock = listen(bus, {loginName, path.get(), loginSessionInterface, "Lock"}, &LoginManager::asked, this);
        properties = listen(bus, {loginName, path.get(), "org.freedesktop.DBus.Properties", "PropertiesChanged"},
                            &LoginManager::changed, this);
        if (asks) {
            question = call(bus, {loginName, path.get(), "org.freedesktop.DBus.Properties", "Get"},
                            &LoginManager::answered, this, "ss", loginSessionInterface, "LockedHint");
        }
    }

    void busLeft() override {
        lock.reset();
        properties.reset();
        question.reset();
    }

    static int answered(sd_bus_message* answer, void* data, sd_bus_error* /*error*/) {
        if (sd_bus_message_is_method_error(answer, nullptr) == 0 && readVariant<int>(answer, "b").value_or(0) != 0) {
            static_cast<LoginManager*>(data)->announcement.make();
        }
        return 0;
    }

    static int asked(sd_bus_message* /*signal*/, void* data, sd_bus_error* /*error*/) {
        static_cast<LoginManager*>(data)->announcement.make();
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
                static_cast<LoginManager*>(data)->announcement.make();
            }
            if (sd_bus_message_exit_container(signal) < 0) {
                return 0;
            }
        }
        return 0;
    }

    std::string session;
    const Announcement& announcement;
    bool asks;
    OwnedSlot lock;
    OwnedSlot properties;
    OwnedSlot question;
};

class SessionLock::ScreenSaver final : private SessionBus::Listener {
public:
    ScreenSaver(SessionBus& sessionBus, const Announcement& announcement)
        : Listener(sessionBus)
        , announcement(announcement) {}

private:
    void busArrived(sd_bus* bus) override {
        changes = listen(bus, "type='signal',member='ActiveChanged'", &ScreenSaver::changed, this);
    }

    void busLeft() override { changes.reset(); }

    static int changed(sd_bus_message* signal, void* data, sd_bus_error* /*error*/) {
        int isActive = 0;
        if (std::string_view(sd_bus_message_get_interface(signal)).ends_with(screenSaverInterface) &&
            sd_bus_message_has_signature(signal, "b") > 0 && sd_bus_message_read(signal, "b", &isActive) > 0 &&
            isActive != 0) {
            static_cast<ScreenSaver*>(data)->announcement.make();
        }
        return 0;
    }

    const Announcement& announcement;
    OwnedSlot changes;
};

class SessionLock::Watch final : public LockWatch {
public:
    Watch(const SessionLock& lock, std::function<void()> locked, bool asks)
        : announcement(lock.mainLoop, std::move(locked))
        , systemBus(lock.mainLoop, lock.systemAddress)
        , loginManager(systemBus, lock.session, announcement, asks)
        , screenSaver(lock.sessionBus, announcement) {}

private:
    Announcement announcement;
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
    return std::make_unique<Watch>(*this, std::move(locked), false);
}

std::unique_ptr<LockWatch> SessionLock::watchAndAsk(std::function<void()> locked) {
    return std::make_unique<Watch>(*this, std::move(locked), true);
}

} // namespace platform::linux
