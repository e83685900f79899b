#include "SettingsPortal.h"

#include <gtest/gtest.h>

namespace platform::linux {

namespace {

constexpr const char* path = "/org/freedesktop/portal/desktop";
constexpr const char* interface = "org.freedesktop.portal.Settings";

int append(sd_bus_message* message, const SettingsPortal::Value& value) {
    if (const auto* number = std::get_if<std::uint32_t>(&value)) {
        return sd_bus_message_append(message, "v", "u", *number);
    }
    if (const auto* boolean = std::get_if<bool>(&value)) {
        return sd_bus_message_append(message, "v", "b", static_cast<int>(*boolean));
    }
    return sd_bus_message_append(message, "v", "s", std::get<std::string>(value).c_str());
}

} // namespace

void SettingsPortal::set(const Key& key, const Value& value) {
    settings.insert_or_assign(key, value);
    sd_bus_message* raw = nullptr;
    ASSERT_GE(sd_bus_message_new_signal(bus, &raw, path, interface, "SettingChanged"), 0);
    const OwnedMessage signal(raw);
    ASSERT_GE(sd_bus_message_append(raw, "ss", key.first.c_str(), key.second.c_str()), 0);
    ASSERT_GE(append(raw, value), 0);
    ASSERT_GE(sd_bus_send(bus, raw, nullptr), 0);
}

bool SettingsPortal::hasFlushed() const {
    std::uint64_t waiting = 0;
    return sd_bus_get_n_queued_write(bus, &waiting) >= 0 && waiting == 0;
}

void SettingsPortal::busArrived(sd_bus* arrived) {
    bus = arrived;
    knowsBus = true;
    if (settings.empty()) {
        return;
    }
    sd_bus_slot* slot = nullptr;
    EXPECT_GE(sd_bus_add_object(bus, &slot, path, &SettingsPortal::called, this), 0);
    object.reset(std::exchange(slot, nullptr));
    EXPECT_GE(sd_bus_request_name_async(bus, &slot, name, 0, &SettingsPortal::named, this), 0);
    naming.reset(slot);
}

int SettingsPortal::named(sd_bus_message* /*reply*/, void* data, sd_bus_error* /*error*/) {
    static_cast<SettingsPortal*>(data)->isThere = true;
    return 0;
}

int SettingsPortal::called(sd_bus_message* call, void* data, sd_bus_error* error) {
    auto& self = *static_cast<SettingsPortal*>(data);
    EXPECT_TRUE(sd_bus_message_is_method_call(call, interface, "ReadAll"));
    EXPECT_STREQ(sd_bus_message_get_signature(call, 1), "as");
    ++self.questions;
    if (self.isUnwilling) {
        return sd_bus_error_set(error, "org.freedesktop.portal.Error.NotFound", "no settings here");
    }
    return self.answer(call);
}

int SettingsPortal::answer(sd_bus_message* call) const {
    sd_bus_message* raw = nullptr;
    sd_bus_message_new_method_return(call, &raw);
    const OwnedMessage reply(raw);
    sd_bus_message_open_container(raw, SD_BUS_TYPE_ARRAY, "{sa{sv}}");
    // The keys are sorted: those of a namespace follow each other.
    for (auto setting = settings.begin(); setting != settings.end();) {
        const std::string& space = setting->first.first;
        sd_bus_message_open_container(raw, SD_BUS_TYPE_DICT_ENTRY, "sa{sv}");
        sd_bus_message_append(raw, "s", space.c_str());
        sd_bus_message_open_container(raw, SD_BUS_TYPE_ARRAY, "{sv}");
        for (; setting != settings.end() && setting->first.first == space; ++setting) {
            sd_bus_message_open_container(raw, SD_BUS_TYPE_DICT_ENTRY, "sv");
            sd_bus_message_append(raw, "s", setting->first.second.c_str());
            append(raw, setting->second);
            sd_bus_message_close_container(raw);
        }
        sd_bus_message_close_container(raw);
        sd_bus_message_close_container(raw);
    }
    sd_bus_message_close_container(raw);
    return sd_bus_message_send(raw);
}

} // namespace platform::linux
