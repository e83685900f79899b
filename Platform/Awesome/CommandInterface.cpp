#include "Platform/Awesome/CommandInterface.h"

#include "Platform/Linux/Bus/Calls.h"

#include <cstdint>
#include <utility>

namespace platform::awesome {

namespace {

struct Reply {
    bool hasCome = false;
    std::optional<std::string> text;
};

int takeReply(sd_bus_message* message, void* data, sd_bus_error* /*error*/) {
    auto& reply = *static_cast<Reply*>(data);
    const char* text = nullptr;
    reply.hasCome = true;
    if (sd_bus_message_is_method_error(message, nullptr) == 0 && sd_bus_message_read(message, "s", &text) > 0) {
        reply.text = text;
    }
    return 0;
}

} // namespace

/// The bus's messages; `data` is the command interface.
struct CommandInterface::Answers {
    static int processCame(sd_bus_message* message, void* data, sd_bus_error* /*error*/) {
        auto& commands = *static_cast<CommandInterface*>(data);
        std::uint32_t process = 0;
        commands.isKnown = true;
        if (sd_bus_message_is_method_error(message, nullptr) == 0 && sd_bus_message_read(message, "u", &process) > 0) {
            commands.present = {.connection = commands.name.owner(),
                                .process = static_cast<ProcessIdentifier>(process)};
        }
        return 0;
    }
};

CommandInterface::CommandInterface(linux::SessionBus& bus)
    : linux::SessionBus::Listener(bus)
    , sessionBus(bus)
    , name("org.awesomewm.awful", [this] { ownerChanged(); }) {
}

void CommandInterface::await(Instant deadline) {
    sessionBus.await(deadline, [this] { return isKnown; });
}

std::optional<std::string> CommandInterface::evaluate(const std::string& script, Instant deadline) {
    if (bus == nullptr || present.connection.empty()) {
        return std::nullopt;
    }
    Reply reply;
    // To the connection, because another process may take the name over.
    const linux::OwnedSlot call =
        linux::call(bus, {present.connection.c_str(), "/", "org.awesomewm.awful.Remote", "Eval"}, &takeReply, &reply,
                    "s", script.c_str());
    sessionBus.await(deadline, [&reply] { return reply.hasCome; });
    return std::move(reply.text);
}

void CommandInterface::busArrived(sd_bus* arrived) {
    bus = arrived;
    name.follow(bus);
}

void CommandInterface::busLeft() {
    name.forget();
    question.reset();
    present = {};
    bus = nullptr;
    isKnown = true;
}

void CommandInterface::ownerChanged() {
    present = {};
    question.reset();
    isKnown = name.owner().empty();
    if (!isKnown) {
        question = linux::call(bus, linux::methodOfBus("GetConnectionUnixProcessID"), &Answers::processCame, this, "s",
                               name.owner().c_str());
    }
}

} // namespace platform::awesome
