#include "Platform/ShellCore/ShellLink.h"

#include "Platform/Linux/Bus/Calls.h"
#include "Platform/ShellCore/Protocol.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace platform::shellcore {

using linux::OwnedMessage;

namespace {

constexpr const char* signalRule = "type='signal',path='/org/corvid/Tessel/Windows',"
                                   "interface='org.corvid.Tessel.Windows1'";
constexpr const char* nameRule = "type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
                                 "member='NameAcquired',arg0='org.corvid.Tessel.Windows'";

std::string_view senderOf(sd_bus_message* message) {
    const char* sender = sd_bus_message_get_sender(message);
    return sender == nullptr ? std::string_view() : std::string_view(sender);
}

} // namespace

/// The bus's messages; `data` is the link.
struct ShellLink::Answers {
    static ShellLink& self(void* data) { return *static_cast<ShellLink*>(data); }

    static int helloSaid(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
        ShellLink& link = self(data);
        link.question.reset();
        link.take(reply);
        return 0;
    }

    static int signalCame(sd_bus_message* signal, void* data, sd_bus_error* /*error*/) {
        ShellLink& link = self(data);
        const std::string_view member = sd_bus_message_get_member(signal);
        if (link.shell.empty() || senderOf(signal) != link.shell) {
            return 0;
        }
        if (member == "Opened") {
            const char* session = nullptr;
            if (sd_bus_message_read(signal, "s", &session) > 0 && (!link.isOpen() || link.session != session)) {
                link.ask();
            }
        } else if (member == "Closed") {
            link.close(Obstacle::noCore);
        } else if (link.isOpen()) {
            for (Listener* listener : link.listeners) {
                sd_bus_message_rewind(signal, 1);
                listener->signalArrived(member, signal);
            }
        }
        return 0;
    }

    static int nameAcquired(sd_bus_message* /*signal*/, void* data, sd_bus_error* /*error*/) {
        ShellLink& link = self(data);
        // A core of the former owner may end without a signal to this client.
        if (link.present == Obstacle::otherClient) {
            link.ask();
        }
        return 0;
    }
};

ShellLink::Listener::Listener(ShellLink& link)
    : link(link) {
    link.listeners.push_back(this);
}

ShellLink::Listener::~Listener() {
    std::erase(link.listeners, this);
}

ShellLink::ShellLink(linux::MainLoop& mainLoop, linux::SessionBus& bus, std::string shellName)
    : linux::SessionBus::Listener(bus)
    , mainLoop(mainLoop)
    , sessionBus(bus)
    , shellName(std::move(shellName))
    , owner(this->shellName, [this] { ownerChanged(); }) {
}

ShellLink::~ShellLink() = default;

void ShellLink::await(Instant deadline) {
    sessionBus.await(deadline, [this] { return present != Obstacle::unknown; });
}

bool ShellLink::isPast(Instant deadline) const {
    return deadline <= mainLoop.now();
}

void ShellLink::busArrived(sd_bus* arrived) {
    bus = arrived;
    sd_bus_request_name_async(bus, nullptr, Protocol::busName, SD_BUS_NAME_QUEUE, &linux::ignoreReply, nullptr);
    signals = linux::listen(bus, signalRule, &Answers::signalCame, this);
    naming = linux::listen(bus, nameRule, &Answers::nameAcquired, this);
    owner.followChanges(bus);
    ask();
}

void ShellLink::busLeft() {
    signals.reset();
    naming.reset();
    owner.forget();
    question.reset();
    bus = nullptr;
    shell.clear();
    close(Obstacle::noShell);
}

void ShellLink::ownerChanged() {
    if (owner.owner() != shell) {
        shell = owner.owner();
        close(shell.empty() ? Obstacle::noShell : Obstacle::noCore);
        if (!shell.empty()) {
            ask();
        }
    }
}

void ShellLink::ask() {
    if (const OwnedMessage message = newCall("Hello")) {
        question = linux::send(bus, message.get(), &Answers::helloSaid, this);
    }
}

void ShellLink::take(sd_bus_message* answer) {
    const std::string_view sender = senderOf(answer);
    const bool isFromBus = sender.empty() || linux::isFromBus(answer);
    if (!isFromBus) {
        shell = sender;
    }
    const char* text = nullptr;
    if (sd_bus_message_is_method_error(answer, nullptr) != 0 || sd_bus_message_read(answer, "s", &text) <= 0) {
        close(obstacleIn(answer, isFromBus));
        return;
    }
    const std::optional<Hello> hello = parseHello(text);
    if (!hello || hello->version != Protocol::version) {
        close(Obstacle::otherVersion);
        return;
    }
    const bool isNew = !isOpen() || session != hello->session;
    session = hello->session;
    present = Obstacle::none;
    for (Listener* listener : listeners) {
        listener->opened(*hello, isNew);
    }
}

ShellLink::Obstacle ShellLink::obstacleIn(sd_bus_message* answer, bool isFromBus) {
    if (isFromBus) {
        return Obstacle::noShell;
    }
    if (sd_bus_message_is_method_error(answer, Protocol::denied) > 0) {
        return Obstacle::otherClient;
    }
    if (sd_bus_message_is_method_error(answer, Protocol::unusable) > 0) {
        const char* names = sd_bus_message_get_error(answer)->message;
        missingNames = names == nullptr ? "" : names;
        return Obstacle::unfitShell;
    }
    return Obstacle::noCore;
}

void ShellLink::close(Obstacle reason) {
    question.reset();
    if (std::exchange(present, reason) != reason) {
        for (Listener* listener : listeners) {
            listener->closed();
        }
    }
}

OwnedMessage ShellLink::newCall(const char* method) const {
    sd_bus_message* raw = nullptr;
    if (bus == nullptr || sd_bus_message_new_method_call(bus, &raw, shellName.c_str(), Protocol::objectPath,
                                                         Protocol::interface, method) < 0) {
        return nullptr;
    }
    // The call must not start a service.
    sd_bus_message_set_auto_start(raw, 0);
    return OwnedMessage(raw);
}

ShellLink::Answer ShellLink::answerTo(sd_bus_message* message, Instant deadline) {
    const auto left = std::chrono::duration_cast<std::chrono::microseconds>(deadline - mainLoop.now());
    if (left.count() <= 0 || bus == nullptr) {
        return std::unexpected(Failure{});
    }
    sd_bus_error error{};
    sd_bus_message* reply = nullptr;
    const int result = sd_bus_call(bus, message, static_cast<std::uint64_t>(left.count()), &error, &reply);
    OwnedMessage owned(reply);
    // The library uses this name as well for its own error after a timeout.
    const std::string_view name = error.name == nullptr ? "" : error.name;
    Failure failure{.name = name == SD_BUS_ERROR_NO_REPLY || name == SD_BUS_ERROR_TIMEOUT ? "" : std::string(name)};
    sd_bus_error_free(&error);
    if (result < 0) {
        return std::unexpected(std::move(failure));
    }
    return owned;
}

void ShellLink::sendUnanswered(sd_bus_message* message) {
    sd_bus_message_set_expect_reply(message, 0);
    sd_bus_send(bus, message, nullptr);
}

} // namespace platform::shellcore
