#pragma once

#include "Platform/Linux/Bus/BusHandles.h"
#include "Platform/MainActor.h"

#include <filesystem>
#include <functional>

namespace platform::kwin {

/// Puts a script into KWin and takes it out again, by org.kde.kwin.Scripting. Main thread only.
///
/// The script is started with all others that wait for it: KWin 5 gives out numbers that are in use already when a
/// script was unloaded before, so starting one by its number may start another.
class ScriptLoader {
public:
    /// KWin's own name on the bus.
    static constexpr const char* kwinName = "org.kde.KWin";

    /// `failed` is called while the bus is being read; it must only take note.
    ScriptLoader(std::filesystem::path script, std::function<void()> failed);
    ScriptLoader(const ScriptLoader&) = delete;
    ScriptLoader& operator=(const ScriptLoader&) = delete;
    ~ScriptLoader() = default;

    /// Takes a former one out, puts ours in and starts it; does not wait. That it works shows when it calls.
    void load(sd_bus* bus);
    /// Does not go on with loading.
    void abandon() { step.reset(); }
    /// Takes the script out, and waits until KWin has done so or the time is over.
    void unload(sd_bus* bus, Duration atMost);

private:
    static int unloaded(sd_bus_message* reply, void* data, sd_bus_error* error);
    static int loaded(sd_bus_message* reply, void* data, sd_bus_error* error);
    static int started(sd_bus_message* reply, void* data, sd_bus_error* error);

    std::filesystem::path script;
    std::function<void()> failed;
    linux::OwnedSlot step;
};

} // namespace platform::kwin
