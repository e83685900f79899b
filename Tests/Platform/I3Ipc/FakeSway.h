#pragma once

#include "Tests/Platform/Linux/SocketServer.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// A peer that behaves like sway, or violates the protocol.
class FakeSway : public SocketServer {
public:
    enum class Manners : std::uint8_t {
        good,
        /// It sends each reply twice.
        twice,
        /// It accepts requests and never replies.
        silent,
        /// It replies with bytes that are no message.
        garbled,
        /// It replies with a message that is no JSON.
        malformed,
        /// It replies with JSON of another kind.
        nonsense,
        /// It announces a reply that is too long.
        endless,
        /// It closes the connection instead of a reply.
        closing,
        /// It refuses subscriptions.
        refusing,
    };

    FakeSway();
    ~FakeSway() override;

    void behave(Manners manners);

    /// The replies to GET_TREE, GET_CONFIG and GET_BINDING_STATE.
    void setTree(std::string json);
    void setConfiguration(std::string text);
    void setMode(std::string name);
    /// Called with each list of commands, on the other thread; may set the tree.
    void onCommands(std::function<void(const std::string&)> carryOut);
    /// Called before each reply to GET_TREE, likewise.
    void onTree(std::function<void()> change);
    /// The results of lists that contain these words: failure instead of success.
    void refuse(std::string words);

    /// Sends an event to every connection with any subscription.
    void send(std::uint32_t event, std::string_view json);

    /// The lists of commands since the last call.
    [[nodiscard]] std::vector<std::string> takeCommands();
    /// The number of requests for the tree.
    [[nodiscard]] int treeReadings();

    [[nodiscard]] static std::string message(std::uint32_t type, std::string_view payload);

private:
    bool handle(Peer& peer) override;
    void answer(Peer& peer, std::uint32_t type, const std::string& payload);
    [[nodiscard]] std::string result(std::uint32_t type, const std::string& payload);

    Manners manners = Manners::good;
    std::string tree = R"({"type":"root","nodes":[]})";
    std::string configuration;
    std::string mode = "default";
    std::function<void(const std::string&)> carryOut;
    std::function<void()> changeTree;
    std::string refused;
    std::vector<std::string> commands;
    int readings = 0;
};
