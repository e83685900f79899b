#include "Tests/Platform/Linux/Control/MessageBus.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <thread>

namespace {

bool canConnect(const std::string& path) {
    sockaddr_un name{};
    name.sun_family = AF_UNIX;
    std::ranges::copy(path, std::begin(name.sun_path));
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool connected = ::connect(socket, reinterpret_cast<const sockaddr*>(&name), sizeof(name)) == 0;
    ::close(socket);
    return connected;
}

} // namespace

MessageBus::MessageBus() {
    ::mkdir((folder / "services").c_str(), S_IRWXU);
    write(folder / "bus.conf",
          "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN\"\n"
          "  \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
          "<busconfig><type>session</type><listen>" +
              address() + "</listen><servicedir>" + folder / "services" +
              "</servicedir><policy context=\"default\"><allow send_destination=\"*\"/><allow eavesdrop=\"false\"/>"
              "<allow own=\"*\"/></policy></busconfig>\n");
}

MessageBus::~MessageBus() {
    stop();
}

void MessageBus::start() {
    std::string configuration = "--config-file=" + folder / "bus.conf";
    std::string program = "dbus-daemon";
    std::string stay = "--nofork";
    const std::array<char*, 4> words{program.data(), configuration.data(), stay.data(), nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    // It complains about limits that do not matter here.
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    ASSERT_EQ(::posix_spawnp(&process, "dbus-daemon", &actions, nullptr, words.data(), environ), 0);
    posix_spawn_file_actions_destroy(&actions);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!canConnect(folder / "bus")) {
        ASSERT_LT(std::chrono::steady_clock::now(), deadline) << "the message bus does not listen";
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
}

void MessageBus::stop() {
    if (process > 0) {
        ::kill(process, SIGKILL);
        ::waitpid(process, nullptr, 0);
        process = 0;
        ::unlink((folder / "bus").c_str());
    }
}

void MessageBus::offerToStart(const std::string& name) const {
    write(folder / ("services/" + name + ".service"), "[D-BUS Service]\nName=" + name + "\nExec=/bin/false\n");
}
