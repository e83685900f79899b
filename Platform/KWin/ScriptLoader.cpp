#include "Platform/KWin/ScriptLoader.h"

#include <chrono>
#include <cstdint>
#include <utility>

namespace platform::kwin {

namespace {

constexpr const char* scriptingPath = "/Scripting";
constexpr const char* scriptingInterface = "org.kde.kwin.Scripting";
/// What KWin calls our script.
constexpr const char* scriptName = "org.corvid.Tessel";

} // namespace

ScriptLoader::ScriptLoader(std::filesystem::path script, std::function<void()> failed)
    : script(std::move(script))
    , failed(std::move(failed)) {
}

void ScriptLoader::load(sd_bus* bus) {
    sd_bus_slot* slot = nullptr;
    if (sd_bus_call_method_async(bus, &slot, kwinName, scriptingPath, scriptingInterface, "unloadScript", &unloaded,
                                 this, "s", scriptName) < 0) {
        failed();
    }
    step.reset(slot);
}

void ScriptLoader::unload(sd_bus* bus, Duration atMost) {
    abandon();
    sd_bus_message* raw = nullptr;
    if (sd_bus_message_new_method_call(bus, &raw, kwinName, scriptingPath, scriptingInterface, "unloadScript") < 0) {
        return;
    }
    const linux::OwnedMessage call(raw);
    if (sd_bus_message_append(raw, "s", scriptName) >= 0) {
        const auto patience = std::chrono::duration_cast<std::chrono::microseconds>(atMost);
        sd_bus_call(bus, raw, static_cast<std::uint64_t>(patience.count()), nullptr, nullptr);
    }
}

int ScriptLoader::unloaded(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
    auto& self = *static_cast<ScriptLoader*>(data);
    // Whether there was one does not matter.
    sd_bus_slot* slot = nullptr;
    if (sd_bus_call_method_async(sd_bus_message_get_bus(reply), &slot, kwinName, scriptingPath, scriptingInterface,
                                 "loadScript", &loaded, data, "ss", self.script.c_str(), scriptName) < 0) {
        self.failed();
    }
    self.step.reset(slot);
    return 0;
}

int ScriptLoader::loaded(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
    auto& self = *static_cast<ScriptLoader*>(data);
    std::int32_t number = -1;
    sd_bus_slot* slot = nullptr;
    if (sd_bus_message_is_method_error(reply, nullptr) != 0 || sd_bus_message_read(reply, "i", &number) <= 0 ||
        number < 0 ||
        sd_bus_call_method_async(sd_bus_message_get_bus(reply), &slot, kwinName, scriptingPath, scriptingInterface,
                                 "start", &started, data, nullptr) < 0) {
        self.failed();
    }
    self.step.reset(slot);
    return 0;
}

int ScriptLoader::started(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
    if (sd_bus_message_is_method_error(reply, nullptr) != 0) {
        static_cast<ScriptLoader*>(data)->failed();
    }
    return 0;
}

} // namespace platform::kwin
