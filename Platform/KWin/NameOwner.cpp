#include "Platform/KWin/NameOwner.h"

#include <utility>

namespace platform::kwin {

namespace {

constexpr const char* busName = "org.freedesktop.DBus";
constexpr const char* busPath = "/org/freedesktop/DBus";

} // namespace

NameOwner::NameOwner(std::string name, std::function<void()> changed)
    : name(std::move(name))
    , changed(std::move(changed)) {
}

void NameOwner::follow(sd_bus* bus) {
    const std::string match = std::string("type='signal',sender='") + busName + "',path='" + busPath + "',interface='" +
                              busName + "',member='NameOwnerChanged',arg0='" + name + "'";
    sd_bus_slot* slot = nullptr;
    sd_bus_add_match_async(bus, &slot, match.c_str(), &ownerChanged, &linux::ignoreReply, this);
    changes.reset(std::exchange(slot, nullptr));
    sd_bus_call_method_async(bus, &slot, busName, busPath, busName, "GetNameOwner", &ownerTold, this, "s",
                             name.c_str());
    question.reset(slot);
}

void NameOwner::forget() {
    changes.reset();
    question.reset();
    unique.clear();
}

bool NameOwner::sent(sd_bus_message* message) const {
    const char* sender = sd_bus_message_get_sender(message);
    return sender != nullptr && !unique.empty() && unique == sender;
}

int NameOwner::ownerChanged(sd_bus_message* signal, void* data, sd_bus_error* /*error*/) {
    const char* changedName = nullptr;
    const char* former = nullptr;
    const char* present = nullptr;
    auto& self = *static_cast<NameOwner*>(data);
    // Anybody may send a signal to this connection alone; the bus's own name is the bus's.
    const char* sender = sd_bus_message_get_sender(signal);
    if (sender != nullptr && std::string_view(sender) == busName &&
        sd_bus_message_read(signal, "sss", &changedName, &former, &present) > 0 && self.name == changedName) {
        self.question.reset();
        self.set(present);
    }
    return 0;
}

int NameOwner::ownerTold(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
    const char* owner = nullptr;
    const bool hasOne =
        sd_bus_message_is_method_error(reply, nullptr) == 0 && sd_bus_message_read(reply, "s", &owner) > 0;
    static_cast<NameOwner*>(data)->set(hasOne ? owner : "");
    return 0;
}

void NameOwner::set(const char* owner) {
    unique = owner;
    changed();
}

} // namespace platform::kwin
