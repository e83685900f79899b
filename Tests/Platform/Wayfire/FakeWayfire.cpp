#include "Tests/Platform/Wayfire/FakeWayfire.h"

#include <cstring>
#include <utility>

namespace {

constexpr std::size_t headerLength = 4;

nlohmann::json rect(int x, int y, int width, int height) {
    return {{"x", x}, {"y", y}, {"width", width}, {"height", height}};
}

nlohmann::json output(int number, int x, int width, int height, int panel) {
    return {{"id", number},
            {"geometry", rect(x, 0, width, height)},
            {"workarea", rect(0, panel, width, height - panel)},
            {"workspace", {{"x", 1}, {"y", 0}, {"grid_width", 3}, {"grid_height", 2}}}};
}

} // namespace

FakeWayfire::FakeWayfire() {
    beginServing();
}

FakeWayfire::~FakeWayfire() {
    endServing();
}

std::string FakeWayfire::message(std::string_view text) {
    std::string bytes;
    for (std::size_t place = 0; place < headerLength; ++place) {
        bytes += static_cast<char>(text.size() >> (8 * place));
    }
    return bytes.append(text);
}

void FakeWayfire::behave(Manners newManners) {
    const std::scoped_lock lock(mutex);
    manners = newManners;
}

void FakeWayfire::setMethod(const std::string& method, bool isThere) {
    const std::scoped_lock lock(mutex);
    if (isThere) {
        missing.erase(method);
    } else {
        missing.insert(method);
    }
}

void FakeWayfire::setOption(const std::string& path, Json value) {
    const std::scoped_lock lock(mutex);
    options.insert_or_assign(path, std::move(value));
}

nlohmann::json FakeWayfire::view(std::int64_t number, const Json& more) {
    Json view{{"id", number},
              {"pid", 100},
              {"title", "A window"},
              {"app-id", "org.example.Editor"},
              {"geometry", rect(100, 200, 700, 500)},
              {"base-geometry", rect(100, 200, 700, 500)},
              {"parent", -1},
              {"output-id", 1},
              {"role", "toplevel"},
              {"type", "toplevel"},
              {"mapped", true},
              {"tiled-edges", 0},
              {"fullscreen", false},
              {"min-size", {{"width", 0}, {"height", 0}}},
              {"max-size", {{"width", 0}, {"height", 0}}}};
    view.update(more);
    return view;
}

void FakeWayfire::setViews(std::vector<Json> newViews) {
    const std::scoped_lock lock(mutex);
    views = std::move(newViews);
}

void FakeWayfire::setFocused(std::int64_t number) {
    const std::scoped_lock lock(mutex);
    focused = {{"id", number}};
}

void FakeWayfire::setLayout(Json newLayout) {
    const std::scoped_lock lock(mutex);
    layout = std::move(newLayout);
}

void FakeWayfire::onConfigure(std::function<void(const Json&)> function) {
    const std::scoped_lock lock(mutex);
    carryOut = std::move(function);
}

void FakeWayfire::send(const Json& event) {
    sendRaw(message(event.dump()));
}

void FakeWayfire::reportView(std::string_view event, const Json& view) {
    send({{"event", event}, {"view", view}});
}

void FakeWayfire::press(std::uint64_t binding) {
    send({{"event", "command-binding"}, {"binding-id", binding}});
}

std::vector<std::string> FakeWayfire::takeChanges() {
    const std::scoped_lock lock(mutex);
    return std::exchange(changes, {});
}

int FakeWayfire::readings() {
    const std::scoped_lock lock(mutex);
    return listings;
}

std::map<std::uint64_t, std::string> FakeWayfire::bindings() {
    const std::scoped_lock lock(mutex);
    std::map<std::uint64_t, std::string> present;
    for (const auto& [number, binding] : bound) {
        for (const auto& peer : peers) {
            if (peer.get() == binding.owner) {
                present.emplace(number, binding.keys);
            }
        }
    }
    return present;
}

bool FakeWayfire::handle(Peer& peer) {
    while (peer.unread.size() >= headerLength) {
        std::uint32_t length = 0;
        std::memcpy(&length, peer.unread.data(), headerLength);
        if (peer.unread.size() < headerLength + length) {
            break;
        }
        const Json request = Json::parse(peer.unread.substr(headerLength, length));
        peer.unread.erase(0, headerLength + length);
        if (manners == Manners::closing) {
            return false;
        }
        answer(peer, request);
    }
    return true;
}

void FakeWayfire::answer(Peer& peer, const Json& request) {
    switch (manners) {
    case Manners::good:
    case Manners::refusing:
        sendAll(peer, message(result(peer, request["method"], request["data"]).dump()));
        break;
    case Manners::twice: {
        const std::string once = message(result(peer, request["method"], request["data"]).dump());
        sendAll(peer, once + once);
        break;
    }
    case Manners::garbled:
        sendAll(peer, "HTTP/1.1 400 Bad Request\r\n\r\n");
        break;
    case Manners::malformed:
        sendAll(peer, message(R"({"result": "ok", "methods": [)"));
        break;
    case Manners::nonsense:
        sendAll(peer, message(R"({"result": 17, "value": null})"));
        break;
    case Manners::silent:
    case Manners::closing:
        break;
    }
}

nlohmann::json FakeWayfire::result(Peer& peer, const std::string& method, const Json& data) {
    const Json ok{{"result", "ok"}};
    if (method == "list-methods") {
        Json methods = Json::array();
        for (const char* each : {"window-rules/configure-view", "command/register-binding"}) {
            if (!missing.contains(each)) {
                methods.push_back(each);
            }
        }
        return {{"methods", methods}};
    }
    if (missing.contains(method)) {
        return {{"error", "No such method found!"}};
    }
    if (method == "window-rules/events/watch") {
        if (manners == Manners::refusing) {
            return {{"error", "Event not found"}};
        }
        peer.hasSubscribed = true;
        return ok;
    }
    if (method == "window-rules/list-outputs") {
        // In another order than that of their places.
        return {output(2, 1920, 1280, 1024, 0), output(1, 0, 1920, 1080, 30)};
    }
    if (method == "window-rules/list-views") {
        ++listings;
        return views;
    }
    if (method == "window-rules/view-info") {
        for (const Json& each : views) {
            if (each["id"] == data["id"]) {
                return {{"result", "ok"}, {"info", each}};
            }
        }
        return {{"error", "no such view"}};
    }
    if (method == "window-rules/get-focused-view") {
        return {{"result", "ok"}, {"info", focused}};
    }
    if (method == "simple-tile/get-layout") {
        return layout.is_null() ? Json{{"error", "No such method found!"}} : Json{{"result", "ok"}, {"layout", layout}};
    }
    if (method == "window-rules/get_cursor_position") {
        return {{"result", "ok"}, {"pos", {{"x", 17.5}, {"y", 4.0}}}};
    }
    if (method == "wayfire/configuration") {
        return {{"plugin-xml-dir", "/metadata"}};
    }
    if (method == "wayfire/get-config-option") {
        const auto found = options.find(data["option"]);
        return found == options.end() ? Json{{"error", "Option not found!"}}
                                      : Json{{"result", "ok"}, {"value", found->second}};
    }
    return changed(peer, method, data);
}

nlohmann::json FakeWayfire::changed(const Peer& peer, const std::string& method, const Json& data) {
    changes.push_back(method + " " + data.dump());
    if (method == "command/register-binding") {
        bound[++lastBinding] = {.keys = data["binding"], .owner = &peer};
        return {{"result", "ok"}, {"binding-id", lastBinding}};
    }
    if (method == "command/unregister-binding") {
        bound.erase(data["binding-id"]);
    }
    if (method == "window-rules/configure-view" && carryOut) {
        carryOut(data);
    } else if (method == "window-rules/configure-view") {
        for (Json& each : views) {
            if (each["id"] == data["id"]) {
                each["geometry"] = each["base-geometry"] = data["geometry"];
                each["output-id"] = data["output_id"];
                each["tiled-edges"] = 0;
                reportView("view-geometry-changed", each);
            }
        }
    }
    return {{"result", "ok"}};
}
