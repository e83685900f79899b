#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/Hyprland/Instance.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

/// As the compositor writes an address: "0x7".
[[nodiscard]] std::string writtenAddress(std::uint64_t address);

/// A compositor that speaks both sides of Hyprland's IPC, or violates it: its sockets, both languages, and what its
/// dispatchers do to windows. It answers on a thread of its own, because the requester waits for it.
class FakeHyprland {
public:
    enum class Manners : std::uint8_t {
        good,
        /// It accepts requests and never answers.
        silent,
        /// It knows no request.
        unknowing,
        /// It answers with a text that is no JSON.
        malformed,
        /// It answers with JSON of another kind.
        nonsense,
        /// It writes without end.
        endless,
        /// It closes the connection instead of an answer.
        closing,
    };

    enum class Configuration : std::uint8_t {
        lua,
        hyprlang,
        /// Lua, in a version that does not tell so.
        unnamedLua,
    };

    struct Window {
        std::uint64_t address = 0;
        int process = 100;
        std::string appId = "editor";
        std::string title = "Text";
        /// Of its contents.
        corvid::CGRect box{{20, 20}, {600, 400}};
        bool isFloating = false;
        bool isHidden = false;
        bool isPinned = false;
        bool isX11 = false;
        /// 1: maximized, 2: fullscreen.
        int fullscreen = 0;
        corvid::CGSize smallest{1, 1};
        /// Its border by window rules, in the layout and out of it; negative: the configured one.
        int tiledBorder = -1;
        int floatingBorder = -1;
        /// The readings of its box until the program has answered to a new size.
        int slowness = 2;
        /// Those that are left.
        int pending = 0;
    };

    struct Monitor {
        int x = 0;
        int y = 0;
        /// In pixels.
        int width = 1920;
        int height = 1080;
        std::string scale = "1.00";
        int transform = 0;
        std::array<int, 4> reserved{};
    };

    struct Bind {
        int modifiers = 0;
        std::string key = {};
        int keyCode = 0;
        std::string submap = {};
        std::string dispatcher = {};
        std::string argument = {};
        std::string description = {};
        /// The variable of Lua that has its handle.
        std::string name = {};
    };

    FakeHyprland();
    FakeHyprland(const FakeHyprland&) = delete;
    FakeHyprland& operator=(const FakeHyprland&) = delete;
    ~FakeHyprland();

    [[nodiscard]] platform::hyprland::InstanceFacts facts() const {
        return {.runtimeFolder = folder.path, .signature = "first", .display = "wayland-7"};
    }

    void behave(Manners manners);
    void speak(Configuration configuration);
    /// As if it had crashed.
    void stop();
    /// Listens again, in the folder of another instance.
    void start(const std::string& signature = "first");

    void setWindows(std::vector<Window> present);
    void setMonitors(std::vector<Monitor> present);
    void setBinds(std::vector<Bind> present);
    /// The answer about the hot keys of programs.
    void setGlobalShortcuts(std::string present);
    void setFocused(std::uint64_t address);
    void setBorder(int width);

    [[nodiscard]] Window window(std::uint64_t address);
    [[nodiscard]] std::vector<Bind> binds();

    /// A window as it opens, with its event; and the end of one.
    void open(const Window& window);
    void close(std::uint64_t address);

    /// Sends a line to those that listen to events.
    void send(const std::string& line);
    void sendRaw(std::string_view bytes);
    [[nodiscard]] int listeners();

    /// The requests that change something, since the last call.
    [[nodiscard]] std::vector<std::string> takeOrders();
    /// The number of requests for the windows.
    [[nodiscard]] int readings();

    /// Called with each order before it is carried out, on the other thread.
    void onOrder(std::function<void(const std::string&)> function);

private:
    struct Peer;

    void serve();
    void accept(int listening, bool isForEvents);
    [[nodiscard]] bool read(Peer& peer);
    void answer(Peer& peer);
    /// Whether there is more to send, and somebody who may read it.
    [[nodiscard]] static bool flood(Peer& peer);
    [[nodiscard]] std::string result(const std::string& request);
    [[nodiscard]] std::string order(const std::string& request);
    [[nodiscard]] std::string evaluate(const std::string& code);
    [[nodiscard]] std::string dispatch(const std::string& words);
    void carryOut(std::uint64_t address, const std::string& dispatcher, const std::string& arguments);
    [[nodiscard]] std::string bindOrder(const std::string& request);
    [[nodiscard]] std::string clients();
    [[nodiscard]] std::string monitorList() const;
    [[nodiscard]] std::string bindList() const;
    [[nodiscard]] std::string property(const std::string& request);
    [[nodiscard]] int borderOf(const Window& each) const;
    [[nodiscard]] Window* find(std::uint64_t address);
    void resize(Window& each, corvid::CGSize size);
    void wake() const;

    TemporaryFolder folder;
    std::recursive_mutex mutex;
    Manners manners = Manners::good;
    Configuration configuration = Configuration::lua;
    std::string instance = "first";
    std::vector<Window> windows;
    std::vector<Monitor> monitors{Monitor{}};
    std::vector<Bind> bindings;
    std::string globalShortcuts = "[]";
    std::uint64_t focused = 0;
    int border = 0;
    std::vector<std::string> orders;
    std::function<void(const std::string&)> reported;
    int windowReadings = 0;
    int requestListener = -1;
    int eventListener = -1;
    int wakeReading = -1;
    int wakeWriting = -1;
    bool isEnding = false;
    std::vector<std::unique_ptr<Peer>> peers;
    std::thread thread;
};
