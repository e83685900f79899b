#include "Tests/Platform/Linux/Control/MessageBus.h"

#include "Platform/Linux/Files/FileDescriptor.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <string>

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
    constexpr int addressDescriptor = 3;
    std::string addressOption = "--print-address=" + std::to_string(addressDescriptor);
    const std::array<char*, 5> words{program.data(), configuration.data(), stay.data(), addressOption.data(), nullptr};
    std::array<int, 2> pipeEnds{};
    ASSERT_EQ(::pipe2(pipeEnds.data(), O_CLOEXEC), 0);
    const platform::linux::FileDescriptor address(pipeEnds[0]);
    platform::linux::FileDescriptor writing(pipeEnds[1]);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    // It warns about limits that do not matter here.
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, writing.get(), addressDescriptor);
    ASSERT_EQ(::posix_spawnp(&process, "dbus-daemon", &actions, nullptr, words.data(), environ), 0);
    posix_spawn_file_actions_destroy(&actions);
    writing = platform::linux::FileDescriptor();
    // It prints its address once it listens there; at its end the pipe is only closed.
    constexpr int patience = 10'000;
    pollfd listening{.fd = address.get(), .events = POLLIN, .revents = 0};
    ASSERT_EQ(::poll(&listening, 1, patience), 1) << "the message bus does not listen";
    ASSERT_TRUE((listening.revents & POLLIN) != 0) << "the message bus ended";
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
