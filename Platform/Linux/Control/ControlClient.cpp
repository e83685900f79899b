#include "Platform/Linux/Control/ControlClient.h"

#include "Platform/Linux/Control/ControlMessages.h"
#include "Platform/Linux/Control/SingleInstance.h"

#include <algorithm>
#include <cerrno>
#include <thread>
#include <utility>

namespace platform::linux {

namespace {

using Kind = ControlRefusal::Kind;

ControlRefusal notRunning() {
    return {.kind = Kind::notRunning, .reason = "not running in this session"};
}

ControlRefusal noAnswer() {
    return {.kind = Kind::noAnswer, .reason = "the running program does not answer"};
}

/// A failure of the connection itself.
ControlRefusal broken(int error) {
    if (error == EPERM) {
        return {.kind = Kind::notRunning,
                .reason = "not running in this session; a process of another user has taken the name of its socket"};
    }
    return error == ETIMEDOUT || error == EAGAIN ? noAnswer() : notRunning();
}

OwnedBus newBus() {
    sd_bus* raw = nullptr;
    return sd_bus_new(&raw) < 0 ? OwnedBus() : OwnedBus(raw);
}

/// The reply, kept for the caller.
int keepReply(sd_bus_message* message, void* data, sd_bus_error* /*error*/) {
    static_cast<OwnedMessage*>(data)->reset(sd_bus_message_ref(message));
    return 0;
}

} // namespace

ControlClient ControlClient::ofSession(const Session& session) {
    const auto deadline = Clock::now() + patience;
    std::expected<FileDescriptor, int> connection = SingleInstance::connect(session);
    // If the listen queue is full, no event announces a free place.
    while (!connection && connection.error() == EAGAIN && Clock::now() < deadline) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        connection = SingleInstance::connect(session);
    }
    if (!connection) {
        return {nullptr, broken(connection.error()), true, deadline};
    }
    OwnedBus bus = newBus();
    if (!bus || sd_bus_set_fd(bus.get(), connection->get(), connection->get()) < 0) {
        return {nullptr, notRunning(), true, deadline};
    }
    [[maybe_unused]] const int given = connection->release();
    if (sd_bus_negotiate_fds(bus.get(), 0) < 0 || sd_bus_start(bus.get()) < 0) {
        bus.reset();
    }
    return {std::move(bus), notRunning(), true, deadline};
}

ControlClient ControlClient::onBus(const std::optional<std::string>& address) {
    OwnedBus bus = address ? newBus() : OwnedBus();
    if (bus && (sd_bus_set_address(bus.get(), address->c_str()) < 0 || sd_bus_set_bus_client(bus.get(), 1) < 0 ||
                sd_bus_start(bus.get()) < 0)) {
        bus.reset();
    }
    return {std::move(bus), notRunning(), false, Clock::now() + patience};
}

ControlClient::ControlClient(OwnedBus bus, ControlRefusal refusal, bool isPeer, Clock::time_point deadline)
    : bus(std::move(bus))
    , absence(std::move(refusal))
    , isPeer(isPeer)
    , deadline(deadline) {
}

int ControlClient::turn() {
    const int result = sd_bus_process(bus.get(), nullptr);
    if (result != 0) {
        return result;
    }
    const auto left = std::chrono::duration_cast<std::chrono::microseconds>(deadline - Clock::now());
    if (left <= std::chrono::microseconds::zero()) {
        return -ETIMEDOUT;
    }
    const int woken = sd_bus_wait(bus.get(), static_cast<std::uint64_t>(left.count()));
    return woken == -EINTR ? 0 : woken;
}

ControlAnswer<OwnedMessage> ControlClient::call(const char* member, std::initializer_list<std::string_view> arguments) {
    if (!bus) {
        return std::unexpected(absence);
    }
    sd_bus_message* raw = nullptr;
    int result = sd_bus_message_new_method_call(bus.get(), &raw, isPeer ? nullptr : ControlMessages::busName,
                                                ControlMessages::objectPath, ControlMessages::interfaceName, member);
    const OwnedMessage request(raw);
    if (result >= 0) {
        // To ask whether it runs must not start it.
        result = sd_bus_message_set_auto_start(raw, 0);
    }
    for (const std::string_view argument : arguments) {
        if (result >= 0) {
            result = sd_bus_message_append(raw, "s", std::string(argument).c_str());
        }
    }
    if (result == -EINVAL) {
        return std::unexpected(ControlRefusal{.kind = Kind::invalid, .reason = "an argument is not UTF-8"});
    }
    OwnedMessage reply;
    sd_bus_slot* rawSlot = nullptr;
    if (result >= 0) {
        result = sd_bus_call_async(bus.get(), &rawSlot, raw, &keepReply, &reply, 0);
    }
    const OwnedSlot slot(rawSlot);
    while (result >= 0 && !reply) {
        result = turn();
    }
    if (!reply) {
        return std::unexpected(broken(-result));
    }
    if (const sd_bus_error* error = sd_bus_message_get_error(reply.get())) {
        ControlRefusal refusal = ControlMessages::refusal(*error);
        // The library words these two for programmers.
        if (refusal.kind == Kind::notRunning) {
            refusal = notRunning();
        } else if (refusal.kind == Kind::noAnswer) {
            refusal = noAnswer();
        }
        return std::unexpected(std::move(refusal));
    }
    return reply;
}

ControlAnswer<void> ControlClient::order(const char* member, std::initializer_list<std::string_view> arguments) {
    const ControlAnswer<OwnedMessage> reply = call(member, arguments);
    return reply ? ControlAnswer<void>() : std::unexpected(reply.error());
}

ControlAnswer<void> ControlClient::open() {
    return order("Open", {});
}

ControlAnswer<ControlStatus> ControlClient::status() {
    ControlAnswer<OwnedMessage> reply = call("Status", {});
    if (!reply) {
        return std::unexpected(std::move(reply.error()));
    }
    std::optional<ControlStatus> status = ControlMessages::readStatus(reply->get());
    if (!status) {
        return std::unexpected(
            ControlRefusal{.kind = Kind::failed, .reason = "the running program is of another version"});
    }
    return *std::move(status);
}

void ControlClient::perform(std::string_view action, Answered answered) {
    answered(order("Perform", {action}));
}

ControlAnswer<void> ControlClient::setRule(std::string_view bundleIdentifier, std::string_view action) {
    return order("SetRule", {bundleIdentifier, action});
}

ControlAnswer<void> ControlClient::setBorrowsShortcuts(bool borrows) {
    return order(borrows ? "TakeShortcuts" : "GiveBackShortcuts", {});
}

ControlAnswer<void> ControlClient::quit() {
    ControlAnswer<void> answer = order("Quit", {});
    if (answer && isPeer) {
        int result = 0;
        while (result >= 0 && sd_bus_is_open(bus.get()) > 0) {
            result = turn();
        }
        if (result == -ETIMEDOUT) {
            return std::unexpected(
                ControlRefusal{.kind = Kind::noAnswer, .reason = "the running program has not ended yet"});
        }
    }
    return answer;
}

} // namespace platform::linux
