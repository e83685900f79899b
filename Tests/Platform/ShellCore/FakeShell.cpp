#include "Tests/Platform/ShellCore/FakeShell.h"

#include "Platform/ShellCore/Protocol.h"
#include "Tests/Platform/Linux/Tray/MessageText.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace Protocol = platform::shellcore::Protocol;

namespace {

platform::linux::OwnedBus connected(const std::string& address) {
    sd_bus* raw = nullptr;
    if (sd_bus_new(&raw) < 0) {
        throw std::runtime_error("no bus");
    }
    platform::linux::OwnedBus bus(raw);
    if (sd_bus_set_address(raw, address.c_str()) < 0 || sd_bus_set_bus_client(raw, 1) < 0 || sd_bus_start(raw) < 0) {
        throw std::runtime_error("the shell cannot connect to the bus");
    }
    return bus;
}

} // namespace

struct FakeShell::Handlers {
    static int call(sd_bus_message* message, void* data, sd_bus_error* /*error*/) {
        static_cast<FakeShell*>(data)->handle(message);
        return 1;
    }
};

FakeShell::FakeShell(const std::string& address, const Place& place)
    : wakeUp(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    , bus(connected(address))
    , stranger(connected(address)) {
    for (const char* path : {Protocol::objectPath, place.path}) {
        sd_bus_add_object(bus.get(), nullptr, path, &Handlers::call, this);
    }
    if (sd_bus_request_name(bus.get(), place.name, 0) < 0) {
        throw std::runtime_error("the shell cannot have its name");
    }
    if (place.isProgramNameTaken && sd_bus_request_name(stranger.get(), Protocol::busName, 0) < 0) {
        throw std::runtime_error("the stranger cannot have the program's name");
    }
    thread = std::thread([this] { serve(); });
}

FakeShell::~FakeShell() {
    run([this] { isEnding = true; });
    thread.join();
}

void FakeShell::setCore(bool isOn, const std::string& newSession) {
    run([&] {
        hasCore = isOn;
        session = newSession;
        if (isOn) {
            emit(bus.get(), "Opened",
                 [&](sd_bus_message* signal) { sd_bus_message_append(signal, "s", session.c_str()); });
        } else {
            emit(bus.get(), "Closed", nullptr);
        }
    });
}

void FakeShell::setContents(const std::string& newMembers) {
    run([&] { members = newMembers; });
}

void FakeShell::answer(const std::string& method, Answer newAnswer) {
    run([&] { answers[method] = std::move(newAnswer); });
}

void FakeShell::send(const std::string& signal, const Arguments& arguments) {
    run([&] { emit(bus.get(), signal, arguments); });
}

void FakeShell::sendAsStranger(const std::string& signal, const Arguments& arguments) {
    run([&] {
        emit(stranger.get(), signal, arguments);
        sd_bus_flush(stranger.get());
    });
}

void FakeShell::releaseProgramName() {
    run([&] { sd_bus_release_name(stranger.get(), Protocol::busName); });
}

std::vector<std::string> FakeShell::calls() {
    const std::scoped_lock lock(mutex);
    return received;
}

bool FakeShell::wasCalled(const std::string& call) {
    const std::vector<std::string> all = calls();
    return std::ranges::find(all, call) != all.end();
}

void FakeShell::run(const std::function<void()>& job) {
    std::unique_lock lock(mutex);
    if (std::this_thread::get_id() == thread.get_id()) {
        job();
        return;
    }
    work.push_back(&job);
    constexpr std::uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(wakeUp.get(), &one, sizeof one);
    done.wait(lock, [&] { return std::ranges::find(work, &job) == work.end(); });
}

void FakeShell::serve() {
    while (!isEnding) {
        // Sending may read pending messages, which the socket then no longer signals.
        do {
            sd_bus_flush(bus.get());
        } while (sd_bus_process(bus.get(), nullptr) > 0);
        std::array<pollfd, 2> sources{{{.fd = sd_bus_get_fd(bus.get()), .events = POLLIN, .revents = 0},
                                       {.fd = wakeUp.get(), .events = POLLIN, .revents = 0}}};
        ::poll(sources.data(), sources.size(), -1);
        std::uint64_t count = 0;
        [[maybe_unused]] const auto read = ::read(wakeUp.get(), &count, sizeof count);
        const std::unique_lock lock(mutex);
        while (!work.empty()) {
            (*work.front())();
            work.pop_front();
            done.notify_all();
        }
    }
}

void FakeShell::handle(sd_bus_message* call) {
    const std::string method = sd_bus_message_get_member(call);
    const bool isForCore = std::string_view(sd_bus_message_get_path(call)) == Protocol::objectPath;
    Answer chosen;
    {
        const std::scoped_lock lock(mutex);
        const std::string arguments = messageText(call);
        received.push_back(method + (arguments.empty() ? "" : " " + arguments));
        sd_bus_message_rewind(call, 1);
        if (!isForCore || hasCore) {
            const auto found = answers.find(method);
            chosen = found == answers.end() ? nullptr : found->second;
        }
    }
    if (chosen) {
        chosen(call);
    } else if (isForCore && hasCore && method == "Hello") {
        const std::string text = R"({"version":1,"session":")" + session + "\"," + members + "}";
        sd_bus_reply_method_return(call, "s", text.c_str());
    } else if (isForCore && hasCore) {
        sd_bus_reply_method_return(call, "");
    } else {
        sd_bus_reply_method_errorf(call, SD_BUS_ERROR_UNKNOWN_OBJECT, "nothing is there");
    }
}

void FakeShell::emit(sd_bus* from, const std::string& signal, const Arguments& arguments) {
    sd_bus_message* raw = nullptr;
    sd_bus_message_new_signal(from, &raw, Protocol::objectPath, Protocol::interface, signal.c_str());
    const platform::linux::OwnedMessage message(raw);
    sd_bus_message_set_destination(raw, Protocol::busName);
    if (arguments) {
        arguments(raw);
    }
    sd_bus_send(from, raw, nullptr);
}
