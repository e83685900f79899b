#include "Tests/Platform/I3Ipc/FakeSway.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <nlohmann/json.hpp>
#include <utility>

namespace {

constexpr std::size_t headerLength = 14;

} // namespace

FakeSway::FakeSway() {
    beginServing();
}

FakeSway::~FakeSway() {
    endServing();
}

std::string FakeSway::message(std::uint32_t type, std::string_view payload) {
    const auto length = static_cast<std::uint32_t>(payload.size());
    std::string bytes("i3-ipc");
    for (const std::uint32_t number : {length, type}) {
        std::array<char, 4> raw{};
        std::memcpy(raw.data(), &number, raw.size());
        bytes.append(raw.data(), raw.size());
    }
    return bytes.append(payload);
}

void FakeSway::behave(Manners newManners) {
    const std::scoped_lock lock(mutex);
    manners = newManners;
}

void FakeSway::setTree(std::string json) {
    const std::scoped_lock lock(mutex);
    tree = std::move(json);
}

void FakeSway::setConfiguration(std::string text) {
    const std::scoped_lock lock(mutex);
    configuration = std::move(text);
}

void FakeSway::setMode(std::string name) {
    const std::scoped_lock lock(mutex);
    mode = std::move(name);
}

void FakeSway::onCommands(std::function<void(const std::string&)> function) {
    const std::scoped_lock lock(mutex);
    carryOut = std::move(function);
}

void FakeSway::onTree(std::function<void()> function) {
    const std::scoped_lock lock(mutex);
    changeTree = std::move(function);
}

void FakeSway::refuse(std::string words) {
    const std::scoped_lock lock(mutex);
    refused = std::move(words);
}

void FakeSway::send(std::uint32_t event, std::string_view json) {
    sendRaw(message(event, json));
}

std::vector<std::string> FakeSway::takeCommands() {
    const std::scoped_lock lock(mutex);
    return std::exchange(commands, {});
}

int FakeSway::treeReadings() {
    const std::scoped_lock lock(mutex);
    return readings;
}

bool FakeSway::handle(Peer& peer) {
    while (peer.unread.size() >= headerLength) {
        std::array<std::uint32_t, 2> numbers{};
        std::memcpy(numbers.data(), peer.unread.data() + 6, sizeof numbers);
        if (peer.unread.size() < headerLength + numbers[0]) {
            break;
        }
        const std::string payload = peer.unread.substr(headerLength, numbers[0]);
        peer.unread.erase(0, headerLength + numbers[0]);
        if (manners == Manners::closing) {
            return false;
        }
        answer(peer, numbers[1], payload);
    }
    return true;
}

void FakeSway::answer(Peer& peer, std::uint32_t type, const std::string& payload) {
    peer.hasSubscribed = peer.hasSubscribed || type == 2;
    switch (manners) {
    case Manners::good:
    case Manners::refusing:
        sendAll(peer, message(type, result(type, payload)));
        break;
    case Manners::twice: {
        const std::string once = message(type, result(type, payload));
        sendAll(peer, once + once);
        break;
    }
    case Manners::garbled:
        sendAll(peer, "HTTP/1.1 400 Bad Request\r\n\r\n");
        break;
    case Manners::malformed:
        sendAll(peer, message(type, R"({"type": "root", "nodes": [)"));
        break;
    case Manners::nonsense:
        sendAll(peer, message(type, R"([17, "root", null])"));
        break;
    case Manners::endless:
        sendAll(peer, message(type, "").replace(6, 4, "\xff\xff\xff\x7f"));
        break;
    case Manners::silent:
    case Manners::closing:
        break;
    }
}

std::string FakeSway::result(std::uint32_t type, const std::string& payload) {
    switch (type) {
    case 0:
        commands.push_back(payload);
        if (carryOut) {
            carryOut(payload);
        }
        {
            const bool isRefused = !refused.empty() && payload.find(refused) != std::string::npos;
            const auto count = 1 + std::ranges::count(payload, ';') + std::ranges::count(payload, ',');
            return nlohmann::json(std::vector(static_cast<std::size_t>(count), nlohmann::json{{"success", !isRefused}}))
                .dump();
        }
    case 2:
        return manners == Manners::refusing ? R"({"success": false})" : R"({"success": true})";
    case 4:
        ++readings;
        if (changeTree) {
            changeTree();
        }
        return tree;
    case 7:
        return nlohmann::json{{"variant", "sway"}, {"loaded_config_file_name", folder / "config"}}.dump();
    case 9:
        return nlohmann::json{{"config", configuration}}.dump();
    case 12:
        return nlohmann::json{{"name", mode}}.dump();
    default:
        return "null";
    }
}
