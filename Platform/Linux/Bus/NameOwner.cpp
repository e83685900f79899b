#include "Platform/Linux/Bus/NameOwner.h"

#include "Platform/Linux/Bus/Calls.h"

#include <utility>

namespace platform::linux {

NameOwner::NameOwner(std::string name, std::function<void()> changed)
    : name(std::move(name))
    , changed(std::move(changed)) {
}

void NameOwner::follow(sd_bus* bus) {
    followChanges(bus);
    question = call(bus, methodOfBus("GetNameOwner"), &ownerAnswered, this, "s", name.c_str());
}

void NameOwner::followChanges(sd_bus* bus) {
    const std::string rule = "type='signal',sender='org.freedesktop.DBus',path='/org/freedesktop/DBus',"
                             "interface='org.freedesktop.DBus',member='NameOwnerChanged',arg0='" +
                             name + "'";
    changes = listen(bus, rule.c_str(), &ownerChanged, this);
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
    if (isFromBus(signal) && sd_bus_message_read(signal, "sss", &changedName, &former, &present) > 0 &&
        self.name == changedName) {
        self.question.reset();
        self.set(present);
    }
    return 0;
}

int NameOwner::ownerAnswered(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
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

} // namespace platform::linux
