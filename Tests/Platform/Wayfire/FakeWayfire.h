#pragma once

#include "Tests/Platform/Linux/SocketServer.h"

#include <cstdint>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/// A peer that behaves like Wayfire, or violates the protocol. It has two outputs side by side.
class FakeWayfire : public SocketServer {
public:
    using Json = nlohmann::json;

    enum class Manners : std::uint8_t {
        good,
        /// It accepts requests and never replies.
        silent,
        /// It replies with bytes that announce a message that is too long.
        garbled,
        /// It replies with a message that is no JSON.
        malformed,
        /// It replies with JSON of another kind.
        nonsense,
        /// It replies twice.
        twice,
        /// It closes the connection instead of a reply.
        closing,
        /// It does not know the events.
        refusing,
    };

    FakeWayfire();
    ~FakeWayfire() override;

    void behave(Manners manners);

    /// Removes a method, as if its plugin was not loaded, or adds it again.
    void setMethod(const std::string& method, bool isThere);
    void setOption(const std::string& path, Json value);

    /// A view of the user's on the first output.
    [[nodiscard]] static Json view(std::int64_t number, const Json& more = Json::object());
    void setViews(std::vector<Json> views);
    void setFocused(std::int64_t number);

    /// The layout of the plugin "simple-tile", as if it was loaded.
    void setLayout(Json layout);

    /// Called with each request to configure a view, on the other thread; may set the views and tell events. Without
    /// one, the view takes the geometry, and that is told.
    void onConfigure(std::function<void(const Json& data)> carryOut);

    /// Sends an event to every connection that watches any.
    void send(const Json& event);
    void reportView(std::string_view event, const Json& view);
    /// The event of a binding, to the connection that has it.
    void press(std::uint64_t binding);

    /// The requests since the last call that change something, as "method data".
    [[nodiscard]] std::vector<std::string> takeChanges();
    /// The number of requests for the list of views.
    [[nodiscard]] int readings();
    /// The combinations that are bound now, by number.
    [[nodiscard]] std::map<std::uint64_t, std::string> bindings();

    [[nodiscard]] static std::string message(std::string_view text);

private:
    struct Binding {
        std::string keys;
        const Peer* owner = nullptr;
    };

    bool handle(Peer& peer) override;
    void answer(Peer& peer, const Json& request);
    [[nodiscard]] Json result(Peer& peer, const std::string& method, const Json& data);
    [[nodiscard]] Json changed(const Peer& peer, const std::string& method, const Json& data);

    Manners manners = Manners::good;
    std::set<std::string> missing;
    std::map<std::string, Json> options;
    std::vector<Json> views;
    Json focused;
    Json layout;
    std::function<void(const Json&)> carryOut;
    std::vector<std::string> changes;
    std::map<std::uint64_t, Binding> bound;
    std::uint64_t lastBinding = 0xfedcba9876543210;
    int listings = 0;
};
