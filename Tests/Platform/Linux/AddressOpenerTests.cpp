#include "Platform/Linux/AddressOpener.h"
#include "Tests/Platform/Linux/Control/MessageBus.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace platform::linux {
namespace {

using std::chrono::milliseconds;

constexpr const char* portalName = "org.freedesktop.portal.Desktop";

/// A desktop portal that notes what it is to open.
class Portal final : private SessionBus::Listener {
public:
    explicit Portal(SessionBus& bus)
        : Listener(bus) {}

    std::vector<std::string> opened;
    bool isUnwilling = false;
    bool isThere = false;

private:
    void busArrived(sd_bus* bus) override {
        EXPECT_GE(sd_bus_add_object(bus, nullptr, "/org/freedesktop/portal/desktop", &Portal::called, this), 0);
        EXPECT_GE(sd_bus_request_name_async(bus, nullptr, portalName, 0, &Portal::named, this), 0);
    }

    void busLeft() override {}

    static int named(sd_bus_message* /*reply*/, void* data, sd_bus_error* /*error*/) {
        static_cast<Portal*>(data)->isThere = true;
        return 0;
    }

    static int called(sd_bus_message* call, void* data, sd_bus_error* error) {
        auto& self = *static_cast<Portal*>(data);
        const char* parent = nullptr;
        const char* address = nullptr;
        EXPECT_TRUE(sd_bus_message_is_method_call(call, "org.freedesktop.portal.OpenURI", "OpenURI"));
        EXPECT_STREQ(sd_bus_message_get_signature(call, 1), "ssa{sv}");
        EXPECT_GT(sd_bus_message_read(call, "ss", &parent, &address), 0);
        if (self.isUnwilling) {
            return sd_bus_error_set(error, "org.freedesktop.portal.Error.NotAllowed", "not this one");
        }
        self.opened.emplace_back(address);
        return sd_bus_reply_method_return(call, "o", "/org/freedesktop/portal/desktop/request/1/t");
    }
};

/// Programs of the test's own in the path, each of which notes its name and arguments.
class Programs {
public:
    explicit Programs(const std::vector<std::string>& names) {
        for (const std::string& name : names) {
            write(folder / name, "#!/bin/sh\necho \"" + name + " $*\" >'" + folder / "making" + "'\n/bin/mv '" +
                                     folder / "making" + "' '" + folder / "ran" + "'\n");
            EXPECT_EQ(::chmod((folder / name).c_str(), S_IRWXU), 0);
        }
        ::setenv("PATH", folder.path.c_str(), 1);
    }

    /// What has run, or an empty text.
    [[nodiscard]] std::string ran() const {
        const bool isThere = ::access((folder / "ran").c_str(), F_OK) == 0;
        return isThere ? contentsOf(folder / "ran") : "";
    }

private:
    TemporaryFolder folder;
};

/// Runs the loop until a condition holds; says whether it came to hold.
bool runUntil(MainLoop& loop, const std::function<bool()>& holds) {
    const Instant deadline = loop.now() + std::chrono::seconds(10);
    bool hasEnded = false;
    while (!holds() && loop.now() < deadline && !hasEnded) {
        hasEnded = sd_event_run(loop.handle(), std::uint64_t{2000}) < 0;
    }
    return holds();
}

/// A test's body, in a process whose environment it may change.
void onDesktop(const std::vector<std::string>& names, const std::function<void(MainLoop&, const Programs&)>& body) {
    inChildProcess([&] {
        const Programs programs(names);
        MainLoop loop;
        body(loop, programs);
    });
}

TEST(AddressOpener, OnlyAddressesAreOpened) {
    onDesktop({"xdg-open"}, [](MainLoop& loop, const Programs& programs) {
        SessionBus bus(loop, std::nullopt);
        AddressOpener opener(bus);
        for (const std::string& text :
             {std::string(), std::string("example.org"), std::string("https"), std::string("https:"),
              std::string(":rest"), std::string("1http://a"), std::string("-option"), std::string("--version:x"),
              std::string("ht tp://a"), std::string("https://a b"), std::string("https://a\nb"),
              std::string("https://ü"), std::string("https://a/%zz"), std::string("https://a/%2"),
              std::string("https://a/\"b\""), std::string("https://a/<b>"), std::string("/etc/passwd")}) {
            EXPECT_FALSE(opener.open(text)) << text.substr(0, 50);
        }
        EXPECT_EQ(programs.ran(), "");
    });
}

TEST(AddressOpener, WithoutABusXdgOpenTakesTheAddress) {
    onDesktop({"xdg-open"}, [](MainLoop& loop, const Programs& programs) {
        SessionBus bus(loop, std::nullopt);
        AddressOpener opener(bus);
        EXPECT_TRUE(opener.open("https://example.org/?a=b&c='d'"));
        EXPECT_TRUE(runUntil(loop, [&] { return !programs.ran().empty(); }));
        EXPECT_EQ(programs.ran(), "xdg-open https://example.org/?a=b&c='d'\n");
    });
}

TEST(AddressOpener, WithoutAnybodyItSaysSo) {
    onDesktop({}, [](MainLoop& loop, const Programs& /*programs*/) {
        SessionBus bus(loop, std::nullopt);
        AddressOpener opener(bus);
        EXPECT_FALSE(opener.open("https://example.org"));
    });
}

/// Opens an address on a bus with a portal; gives what the portal opened once `isDone`.
void withPortal(bool isUnwilling, const std::function<void(MainLoop&, Portal&, AddressOpener&)>& body) {
    // Before the test's programs take the place of the path.
    MessageBus daemon;
    daemon.start();
    onDesktop({"xdg-open"}, [&](MainLoop& loop, const Programs& programs) {
        SessionBus portalBus(loop, daemon.address());
        Portal portal(portalBus);
        portal.isUnwilling = isUnwilling;
        EXPECT_TRUE(runUntil(loop, [&] { return portal.isThere; }));
        SessionBus bus(loop, daemon.address());
        AddressOpener opener(bus);
        body(loop, portal, opener);
        EXPECT_TRUE(runUntil(loop, [&] { return !portal.opened.empty() || !programs.ran().empty(); }));
        EXPECT_EQ(programs.ran(), isUnwilling ? "xdg-open https://example.org\n" : "");
    });
}

/// Opens the address once whatever was sent to the bus has been answered.
void openWhenSettled(MainLoop& loop, AddressOpener& opener) {
    for (int turns = 0; turns < 50; ++turns) {
        sd_event_run(loop.handle(), std::uint64_t{2000});
    }
    EXPECT_TRUE(opener.open("https://example.org"));
}

TEST(AddressOpener, APortalThatRunsTakesTheAddress) {
    withPortal(false, [](MainLoop& loop, Portal& portal, AddressOpener& opener) {
        openWhenSettled(loop, opener);
        EXPECT_TRUE(runUntil(loop, [&] { return !portal.opened.empty(); }));
        EXPECT_EQ(portal.opened, std::vector<std::string>{"https://example.org"});
    });
}

TEST(AddressOpener, WhatThePortalRefusesXdgOpenTakes) {
    withPortal(true, [](MainLoop& loop, Portal& /*portal*/, AddressOpener& opener) { openWhenSettled(loop, opener); });
}

TEST(AddressOpener, APortalThatCannotBeStartedIsPassedOver) {
    MessageBus daemon;
    daemon.offerToStart(portalName);
    daemon.start();
    onDesktop({"xdg-open"}, [&](MainLoop& loop, const Programs& programs) {
        SessionBus bus(loop, daemon.address());
        AddressOpener opener(bus);
        openWhenSettled(loop, opener);
        EXPECT_TRUE(runUntil(loop, [&] { return !programs.ran().empty(); }));
        EXPECT_EQ(programs.ran(), "xdg-open https://example.org\n");
    });
}

TEST(AddressOpener, ALinkToSettingsOpensThePageOfTheDesktop) {
    const std::string link = "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility";
    onDesktop({"xdg-open", "xfce4-accessibility-settings"}, [&](MainLoop& loop, const Programs& programs) {
        SessionBus bus(loop, std::nullopt);
        AddressOpener opener(bus);
        ::unsetenv("XDG_CURRENT_DESKTOP");
        EXPECT_FALSE(opener.open(link));
        ::setenv("XDG_CURRENT_DESKTOP", "GNOME", 1);
        EXPECT_FALSE(opener.open(link)) << "its program is not installed";
        ::setenv("XDG_CURRENT_DESKTOP", "XFCE", 1);
        EXPECT_FALSE(opener.open("x-apple.systempreferences:unknown"));
        EXPECT_TRUE(opener.open(link));
        EXPECT_TRUE(runUntil(loop, [&] { return !programs.ran().empty(); }));
        EXPECT_EQ(programs.ran(), "xfce4-accessibility-settings \n");
    });
}

} // namespace
} // namespace platform::linux
