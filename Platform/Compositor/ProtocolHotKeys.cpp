#include "Platform/Compositor/ProtocolHotKeys.h"

#include "Platform/Compositor/WaylandLibrary.h"
#include "Platform/Linux/Files/LocalSocket.h"
#include "vicinae-hotkey-v1-client-protocol.h"
#include "xx-hotkey-v1-client-protocol.h"

#include <poll.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <map>
#include <optional>
#include <span>
#include <utility>

namespace platform::compositor {

namespace {

using Kind = ProtocolHotKeys::Answer::Kind;

/// The version that is spoken, of everything.
constexpr std::uint32_t firstVersion = 1;

wl_argument number(std::uint32_t value) {
    wl_argument argument{};
    argument.u = value;
    return argument;
}

wl_argument text(const char* value) {
    wl_argument argument{};
    argument.s = value;
    return argument;
}

/// The place of a new object.
wl_argument nothing() {
    wl_argument argument{};
    argument.o = nullptr;
    return argument;
}

} // namespace

class ProtocolHotKeys::Connection {
public:
    Connection(linux::MainLoop& mainLoop, const WaylandLibrary& library, wl_display* display, int descriptor,
               Handlers handlers)
        : mainLoop(mainLoop)
        , library(library)
        , display(display)
        , descriptor(descriptor)
        , handlers(std::move(handlers))
        , later(mainLoop) {}

    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    ~Connection() {
        watch.reset();
        for (auto& [key, each] : keys) {
            giveBack(each);
        }
        for (wl_proxy* proxy : {manager, registry}) {
            if (proxy != nullptr) {
                library.destroy(proxy);
            }
        }
        library.flush(display);
        library.disconnect(display);
    }

    [[nodiscard]] bool start(const std::string& applicationId, Instant deadline);
    [[nodiscard]] Answer bind(std::uint64_t name, std::uint32_t keysym, std::uint32_t modifiers,
                              const std::string& description, Instant deadline);
    void release(std::uint64_t name);

private:
    /// A global object of the compositor.
    struct Global {
        std::uint32_t name = 0;
        bool isThere = false;
    };

    struct Key {
        Connection* owner = nullptr;
        std::uint64_t number = 0;
        wl_proxy* proxy = nullptr;
        Answer answer;
    };

    static wl_proxy* proxyOf(wl_display* display) {
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): a display is a proxy (wayland-client-core.h).
        return reinterpret_cast<wl_proxy*>(display);
    }

    wl_proxy* send(wl_proxy* object, std::uint32_t request, const wl_interface* result,
                   std::span<wl_argument> arguments, std::uint32_t flags = 0) const {
        return library.marshal(object, request, result, firstVersion, flags, arguments.data());
    }

    /// Hears the events of an object; a listener of the protocol is an array of functions.
    template <typename Listener>
    void listen(wl_proxy* proxy, const Listener& heard, void* data) const {
        using Functions = void (**)();
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-*-cast): as the generated code does.
        library.addListener(proxy, reinterpret_cast<Functions>(const_cast<Listener*>(&heard)), data);
    }

    /// Reads and acts on events until the condition holds; false if the deadline comes first, or the connection breaks.
    template <typename Condition>
    [[nodiscard]] bool await(const Condition& condition, Instant deadline);
    [[nodiscard]] bool awaitEverything(Instant deadline);
    /// Acts on what has come; false if the connection is broken.
    [[nodiscard]] bool readOnce(int milliseconds);
    void serve();
    void giveBack(Key& key) const;

    static Connection& connectionOf(void* data) { return *static_cast<Connection*>(data); }

    static Key& keyOf(void* data) { return *static_cast<Key*>(data); }

    static void globalCame(void* data, wl_registry* /*registry*/, std::uint32_t name, const char* interface,
                           std::uint32_t /*version*/);

    static void globalWent(void* /*data*/, wl_registry* /*registry*/, std::uint32_t /*name*/) {}

    static void everythingCame(void* data, wl_callback* /*callback*/, std::uint32_t /*serial*/) {
        *static_cast<bool*>(data) = true;
    }

    template <typename Object>
    static void bound(void* data, Object* /*object*/) {
        keyOf(data).answer = {.kind = Kind::bound};
    }

    template <typename Object>
    static void denied(void* data, Object* /*object*/, std::uint32_t /*reason*/, const char* message) {
        keyOf(data).answer = {.kind = Kind::denied, .message = message};
    }

    static void revokedByOld(void* data, vicinae_hotkey_v1* /*object*/, std::uint32_t /*reason*/,
                             const char* /*message*/) {
        reportLoss(keyOf(data));
    }

    static void revoked(void* data, xx_hotkey_v1* /*object*/, const char* /*message*/) { reportLoss(keyOf(data)); }

    template <typename Object>
    static void pressed(void* data, Object* /*object*/, std::uint32_t /*serial*/, std::uint32_t /*time*/) {
        const Key& key = keyOf(data);
        // The library is not re-entrant, and each press has a turn of its own.
        key.owner->later.post([owner = key.owner, number = key.number] {
            if (owner->keys.contains(number)) {
                owner->handlers.pressed(number);
            }
        });
    }

    template <typename Object>
    static void released(void* /*data*/, Object* /*object*/, std::uint32_t /*serial*/, std::uint32_t /*time*/) {}

    static void reportLoss(const Key& key) {
        key.owner->later.post([owner = key.owner, number = key.number] {
            if (owner->keys.contains(number)) {
                owner->release(number);
                owner->handlers.revoked(number);
            }
        });
    }

    static constexpr wl_registry_listener registryListener{.global = globalCame, .global_remove = globalWent};
    static constexpr wl_callback_listener callbackListener{.done = everythingCame};
    static constexpr vicinae_hotkey_v1_listener oldListener{.bound = bound<vicinae_hotkey_v1>,
                                                            .denied = denied<vicinae_hotkey_v1>,
                                                            .revoked = revokedByOld,
                                                            .pressed = pressed<vicinae_hotkey_v1>,
                                                            .released = released<vicinae_hotkey_v1>};
    static constexpr xx_hotkey_v1_listener listener{.bound = bound<xx_hotkey_v1>,
                                                    .denied = denied<xx_hotkey_v1>,
                                                    .revoked = revoked,
                                                    .triggered = pressed<xx_hotkey_v1>,
                                                    .released = released<xx_hotkey_v1>};

    linux::MainLoop& mainLoop;
    const WaylandLibrary& library;
    wl_display* display;
    int descriptor;
    Handlers handlers;
    wl_proxy* registry = nullptr;
    wl_proxy* manager = nullptr;
    Global vicinae;
    Global xx;
    std::string applicationId;
    bool isGone = false;
    /// Their places in memory do not change.
    std::map<std::uint64_t, Key> keys;
    std::unique_ptr<linux::DescriptorWatch> watch;
    linux::LaterWork later;
};

void ProtocolHotKeys::Connection::globalCame(void* data, wl_registry* /*registry*/, std::uint32_t name,
                                             const char* interface, std::uint32_t /*version*/) {
    Connection& self = connectionOf(data);
    const std::string_view kind(interface);
    if (kind == vicinae_hotkey_manager_v1_interface.name) {
        self.vicinae = {.name = name, .isThere = true};
    } else if (kind == xx_hotkey_manager_v1_interface.name) {
        self.xx = {.name = name, .isThere = true};
    }
}

bool ProtocolHotKeys::Connection::start(const std::string& application, Instant deadline) {
    applicationId = application;
    std::array forRegistry{nothing()};
    registry = send(proxyOf(display), WL_DISPLAY_GET_REGISTRY, library.registryInterface, forRegistry);
    listen(registry, registryListener, this);
    if (!awaitEverything(deadline) || (!vicinae.isThere && !xx.isThere)) {
        return false;
    }
    // The older one says who holds a combination.
    const wl_interface& interface =
        vicinae.isThere ? vicinae_hotkey_manager_v1_interface : xx_hotkey_manager_v1_interface;
    const Global& global = vicinae.isThere ? vicinae : xx;
    std::array binding{number(global.name), text(interface.name), number(firstVersion), nothing()};
    manager = send(registry, WL_REGISTRY_BIND, &interface, binding);
    if (!vicinae.isThere) {
        std::array name{text(applicationId.c_str())};
        send(manager, XX_HOTKEY_MANAGER_V1_SET_APP_ID, nullptr, name);
    }
    watch = mainLoop.watch(descriptor, [] { return false; }, [this] { serve(); });
    return true;
}

ProtocolHotKeys::Answer ProtocolHotKeys::Connection::bind(std::uint64_t name, std::uint32_t keysym,
                                                          std::uint32_t modifiers, const std::string& description,
                                                          Instant deadline) {
    if (isGone) {
        return {};
    }
    release(name);
    Key& key =
        keys.insert_or_assign(name, Key{.owner = this, .number = name, .proxy = nullptr, .answer = {}}).first->second;
    if (vicinae.isThere) {
        std::array arguments{nothing(),
                             number(keysym),
                             number(modifiers),
                             number(0),
                             text(applicationId.c_str()),
                             text(description.c_str())};
        key.proxy = send(manager, VICINAE_HOTKEY_MANAGER_V1_BIND, &vicinae_hotkey_v1_interface, arguments);
        listen(key.proxy, oldListener, &key);
    } else {
        std::array object{nothing()};
        key.proxy = send(manager, XX_HOTKEY_MANAGER_V1_CREATE_HOTKEY, &xx_hotkey_v1_interface, object);
        listen(key.proxy, listener, &key);
        std::array words{text(description.c_str())};
        send(key.proxy, XX_HOTKEY_V1_SET_DESCRIPTION, nullptr, words);
        std::array trigger{number(keysym), number(modifiers)};
        send(key.proxy, XX_HOTKEY_V1_SET_KEY_TRIGGER, nullptr, trigger);
        send(key.proxy, XX_HOTKEY_V1_COMMIT, nullptr, {});
    }
    static_cast<void>(await([&] { return key.answer.kind != Kind::none; }, deadline));
    Answer answer = key.answer;
    if (answer.kind != Kind::bound) {
        release(name);
    }
    return answer;
}

void ProtocolHotKeys::Connection::release(std::uint64_t name) {
    const auto found = keys.find(name);
    if (found != keys.end()) {
        giveBack(found->second);
        keys.erase(found);
        library.flush(display);
    }
}

void ProtocolHotKeys::Connection::giveBack(Key& key) const {
    // The destructor is the first request of both.
    static_assert(VICINAE_HOTKEY_V1_DESTROY == XX_HOTKEY_V1_DESTROY);
    send(key.proxy, XX_HOTKEY_V1_DESTROY, nullptr, {}, WL_MARSHAL_FLAG_DESTROY);
}

template <typename Condition>
bool ProtocolHotKeys::Connection::await(const Condition& condition, Instant deadline) {
    while (!condition()) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - mainLoop.now());
        if (left.count() <= 0 || !readOnce(static_cast<int>(left.count()))) {
            return false;
        }
    }
    return true;
}

bool ProtocolHotKeys::Connection::awaitEverything(Instant deadline) {
    bool isDone = false;
    std::array forCallback{nothing()};
    wl_proxy* callback = send(proxyOf(display), WL_DISPLAY_SYNC, library.callbackInterface, forCallback);
    listen(callback, callbackListener, &isDone);
    const bool hasCome = await([&] { return isDone; }, deadline);
    library.destroy(callback);
    return hasCome;
}

bool ProtocolHotKeys::Connection::readOnce(int milliseconds) {
    while (library.prepareRead(display) != 0) {
        if (library.dispatchPending(display) < 0) {
            return false;
        }
    }
    // The rest is sent before the next wait.
    const bool isSent = library.flush(display) >= 0 || errno == EAGAIN;
    pollfd state{.fd = descriptor, .events = POLLIN, .revents = 0};
    if (!isSent || ::poll(&state, 1, milliseconds) <= 0) {
        library.cancelRead(display);
        return isSent;
    }
    return library.readEvents(display) == 0 && library.dispatchPending(display) >= 0;
}

void ProtocolHotKeys::Connection::serve() {
    if (!readOnce(0) || library.error(display) != 0) {
        isGone = true;
        // In a turn of its own: the watch must not go while it is served.
        later.post([this] {
            watch.reset();
            // This object may end meanwhile.
            const auto gone = handlers.gone;
            gone();
        });
    }
}

ProtocolHotKeys::ProtocolHotKeys(std::unique_ptr<Connection> connection)
    : connection(std::move(connection)) {
}

ProtocolHotKeys::~ProtocolHotKeys() = default;

std::unique_ptr<ProtocolHotKeys> ProtocolHotKeys::open(linux::MainLoop& mainLoop, const std::string& socket,
                                                       const std::string& applicationId, Handlers handlers,
                                                       Instant deadline) {
    linux::FileDescriptor descriptor = linux::connectedTo(socket);
    const WaylandLibrary* library = descriptor ? WaylandLibrary::loaded() : nullptr;
    if (library == nullptr) {
        return nullptr;
    }
    const int number = descriptor.get();
    // The display closes it, also where there is none for want of memory.
    wl_display* display = library->connectToDescriptor(descriptor.release());
    if (display == nullptr) {
        return nullptr;
    }
    auto connection = std::make_unique<Connection>(mainLoop, *library, display, number, std::move(handlers));
    if (!connection->start(applicationId, deadline)) {
        return nullptr;
    }
    return std::unique_ptr<ProtocolHotKeys>(new ProtocolHotKeys(std::move(connection)));
}

ProtocolHotKeys::Answer ProtocolHotKeys::bind(std::uint64_t number, std::uint32_t keysym, std::uint32_t modifiers,
                                              const std::string& description, Instant deadline) {
    return connection->bind(number, keysym, modifiers, description, deadline);
}

void ProtocolHotKeys::release(std::uint64_t number) {
    connection->release(number);
}

} // namespace platform::compositor
