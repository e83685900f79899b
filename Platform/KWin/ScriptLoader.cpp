#include "Platform/KWin/ScriptLoader.h"

#include "Platform/Linux/Bus/Calls.h"

#include <chrono>
#include <cstdint>
#include <utility>

namespace platform::kwin {

namespace {

constexpr const char* scriptingPath = "/Scripting";
constexpr const char* scriptingInterface = "org.kde.kwin.Scripting";
/// The name of our script in KWin.
constexpr const char* scriptName = "org.corvid.Tessel";

constexpr linux::BusMember scripting(const char* method) {
    return {ScriptLoader::kwinName, scriptingPath, scriptingInterface, method};
}

} // namespace

ScriptLoader::ScriptLoader(std::filesystem::path script, std::function<void()> failed)
    : script(std::move(script))
    , failed(std::move(failed)) {
}

void ScriptLoader::load(sd_bus* bus) {
    step = linux::call(bus, scripting("unloadScript"), &unloaded, this, "s", scriptName);
    if (step == nullptr) {
        failed();
    }
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
    // It does not matter whether there was one.
    self.step = linux::call(sd_bus_message_get_bus(reply), scripting("loadScript"), &loaded, data, "ss",
                            self.script.c_str(), scriptName);
    if (self.step == nullptr) {
        self.failed();
    }
    return 0;
}

int ScriptLoader::loaded(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
    auto& self = *static_cast<ScriptLoader*>(data);
    std::int32_t number = -1;
    const bool isLoaded = sd_bus_message_is_method_error(reply, nullptr) == 0 &&
                          sd_bus_message_read(reply, "i", &number) > 0 && number >= 0;
    self.step = isLoaded ? linux::call(sd_bus_message_get_bus(reply), scripting("start"), &started, data, "") : nullptr;
    if (self.step == nullptr) {
        self.failed();
    }
    return 0;
}

int ScriptLoader::started(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
    if (sd_bus_message_is_method_error(reply, nullptr) != 0) {
        static_cast<ScriptLoader*>(data)->failed();
    }
    return 0;
}

} // namespace platform::kwin
