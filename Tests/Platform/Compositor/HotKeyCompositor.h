#pragma once

#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <string>
#include <thread>
#include <vector>

struct wl_client;
struct wl_display;
struct wl_event_source;
struct wl_resource;

/// A Wayland compositor that offers hot keys by one of the protocols, or by neither. It runs on a thread of its own,
/// because the client waits for it.
class HotKeyCompositor {
public:
    enum class Offer : std::uint8_t {
        vicinae,
        xx,
        both,
        neither,
    };

    struct Key {
        std::uint32_t keysym = 0;
        std::uint32_t modifiers = 0;
        std::string application;
        std::string description;
        bool isBound = false;

        friend bool operator==(const Key&, const Key&) = default;
    };

    explicit HotKeyCompositor(Offer offer);
    HotKeyCompositor(const HotKeyCompositor&) = delete;
    HotKeyCompositor& operator=(const HotKeyCompositor&) = delete;
    ~HotKeyCompositor();

    [[nodiscard]] std::string path() const { return folder / "wayland-7"; }

    /// Denies requests for a symbol with these words, from now on.
    void deny(std::uint32_t keysym, const std::string& message);
    /// Answers no more requests for keys.
    void beSilent();

    /// The keys that clients have requested and not given back.
    [[nodiscard]] std::vector<Key> keys();

    /// A press of a key and its release, whoever has it.
    void press(std::uint32_t keysym);
    /// Takes a key back.
    void revoke(std::uint32_t keysym);
    /// Ends the connections of all clients.
    void disconnect();
    [[nodiscard]] int clients();

    // For the requests of clients.
    void add(wl_client* client, wl_resource* resource, const Key& key);
    void commit(wl_resource* resource);
    void remove(wl_resource* resource);

    struct Requested {
        wl_resource* resource = nullptr;
        bool isOld = false;
        Key key;
    };

    [[nodiscard]] Requested* find(wl_resource* resource);
    std::string application;

private:
    /// Does something on the compositor's thread.
    void run(const std::function<void()>& work);
    void serve();

    TemporaryFolder folder;
    wl_display* display;
    std::vector<std::function<void()>> waiting;
    wl_event_source* wakeSource = nullptr;
    int wakeReading = -1;
    int wakeWriting = -1;
    bool isEnding = false;
    bool isSilent = false;
    std::map<std::uint32_t, std::string> denials;
    std::list<Requested> requested;
    std::thread thread;
};
