#pragma once

#include "Platform/Linux/Bus/BusHandles.h"
#include "Platform/Seam/Desktop/MainActor.h"

#include <filesystem>
#include <functional>

namespace platform::kwin {

/// Loads a script into KWin and unloads it, by org.kde.kwin.Scripting. Main thread only.
///
/// The script is started together with all others that wait: after a script was unloaded, KWin 5 assigns numbers that
/// are in use already, so a start by number may start another script.
class ScriptLoader {
public:
    /// KWin's own name on the bus.
    static constexpr const char* kwinName = "org.kde.KWin";

    /// `failed` is called while the bus is being read, and must only record the failure.
    ScriptLoader(std::filesystem::path script, std::function<void()> failed);
    ScriptLoader(const ScriptLoader&) = delete;
    ScriptLoader& operator=(const ScriptLoader&) = delete;
    ~ScriptLoader() = default;

    /// Unloads an earlier script, loads ours and starts it; does not wait. The script's first call shows success.
    void load(sd_bus* bus);
    /// Cancels the loading.
    void abandon() { step.reset(); }
    /// Unloads the script, and waits until KWin has done so or the timeout is over.
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
