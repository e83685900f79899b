#include "RequestInterruption.h"

#include <xcb/xcbext.h>

#include <dlfcn.h>

#include <cstdlib>
#include <utility>

namespace platform::x11 {

namespace {

RequestInterruption* present = nullptr;

} // namespace

RequestInterruption::RequestInterruption(xcb_connection_t* other, std::size_t number, std::function<void()> happening)
    : other(other)
    , left(number)
    , happening(std::move(happening)) {
    present = this;
}

RequestInterruption::~RequestInterruption() {
    present = nullptr;
}

void RequestInterruption::beforeRequest(xcb_connection_t* connection) {
    if (present != nullptr && !present->isOver && present->other != connection) {
        present->count(connection);
    }
}

void RequestInterruption::count(xcb_connection_t* connection) {
    if (--left > 0) {
        return;
    }
    isOver = true;
    std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    happening();
}

} // namespace platform::x11

// xcb's functions for the single requests all call this one, and find it before the library's own.
extern "C" unsigned int xcb_send_request(xcb_connection_t* connection, int flags, iovec* parts,
                                         const xcb_protocol_request_t* request) {
    static const auto send = reinterpret_cast<decltype(&xcb_send_request)>(dlsym(RTLD_NEXT, "xcb_send_request"));
    platform::x11::RequestInterruption::beforeRequest(connection);
    return send(connection, flags, parts, request);
}
