#pragma once

#include "Platform/Linux/Bus/BusHandles.h"
#include "Platform/Linux/Files/FileDescriptor.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

/// A shell as the bus sees it, GNOME's or Cinnamon's, simulated in a thread of its own, because the program waits for
/// some of its replies.
class FakeShell {
public:
    /// Answers a call, or leaves it pending. Runs in the shell's thread.
    using Answer = std::function<void(sd_bus_message* call)>;
    /// Writes the arguments of a signal.
    using Arguments = std::function<void(sd_bus_message* signal)>;

    /// The shell's name on the bus, and its own object.
    struct Place {
        const char* name = "org.gnome.Shell";
        const char* path = "/org/gnome/Shell";
        /// Whether another client owns the program's name, until `releaseProgramName`.
        bool isProgramNameTaken = false;
    };

    /// Starts without the core: calls to it get the error for a missing object.
    explicit FakeShell(const std::string& address, const Place& place);
    FakeShell(const FakeShell&) = delete;
    FakeShell& operator=(const FakeShell&) = delete;
    ~FakeShell();

    /// Adds or removes the core. An added core announces itself to the owner of the program's name. Any thread.
    void setCore(bool isOn, const std::string& session = "first");

    /// The core's data on windows and screens, as the members of a JSON object.
    void setContents(const std::string& members);

    /// Sets the reply to a method, in the core or in the shell itself.
    void answer(const std::string& method, Answer answer);

    /// A reply with values.
    template <typename... Values>
    void answerWith(const std::string& method, const char* types, Values... values) {
        answer(method, [=](sd_bus_message* call) { sd_bus_reply_method_return(call, types, values...); });
    }

    void answerWithText(const std::string& method, const std::string& text) {
        answer(method, [=](sd_bus_message* call) { sd_bus_reply_method_return(call, "s", text.c_str()); });
    }

    /// Sends a signal to the program alone.
    void send(const std::string& signal, const Arguments& arguments = nullptr);
    /// The same, from a connection that is not the shell.
    void sendAsStranger(const std::string& signal, const Arguments& arguments = nullptr);

    void releaseProgramName();

    /// The calls so far, as "METHOD arguments".
    [[nodiscard]] std::vector<std::string> calls();
    [[nodiscard]] bool wasCalled(const std::string& call);

    /// Runs a function in the shell's thread, and returns when it is done. An answer runs there already.
    void run(const std::function<void()>& job);

private:
    struct Handlers;

    void serve();
    void handle(sd_bus_message* call);
    void emit(sd_bus* from, const std::string& signal, const Arguments& arguments);

    platform::linux::FileDescriptor wakeUp;
    platform::linux::OwnedBus bus;
    platform::linux::OwnedBus stranger;
    std::mutex mutex;
    std::condition_variable done;
    std::deque<const std::function<void()>*> work;
    std::map<std::string, Answer> answers;
    std::vector<std::string> received;
    std::string session;
    std::string members = R"("windows":[],"focused":null,"outputs":[])";
    bool hasCore = false;
    bool isEnding = false;
    std::thread thread;
};
