#pragma once

#include "Platform/GnomeShell/ShellLink.h"
#include "Platform/HotKeyEvents.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace platform::gnomeshell {

/// Global hot keys that the shell holds for us. It knows of all its own keys, so a combination that one of them has is
/// refused. With the link, the extension gives all of them back.
class HotKeys final : public HotKeyEvents, private ShellLink::Listener {
public:
    /// Presses are handled in a later turn of the loop. Loop and link must outlive the hot keys.
    HotKeys(linux::MainLoop& mainLoop, ShellLink& link);
    ~HotKeys() override;

    OSStatus installHandler(HotKeyEventHandler newHandler, void* userData) override;
    [[nodiscard]] Registration registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                              EventHotKeyID name) override;
    void unregisterHotKey(EventHotKeyRef reference) override;

    /// Whether a hot key was lost since this was last asked: held by somebody else when it was to be renewed.
    [[nodiscard]] bool takeLoss();

private:
    struct Registered {
        std::string accelerator;
        EventHotKeyID name;
    };

    void opened(const Hello& hello, bool isNew) override;
    void closed() override;
    void told(std::string_view signal, sd_bus_message* message) override;

    [[nodiscard]] bool grab(std::uint32_t number, const std::string& accelerator);
    void renew();
    void press(std::uint32_t number);

    linux::MainLoop& mainLoop;
    ShellLink& link;
    /// By the numbers under which the extension knows them.
    std::map<std::uint32_t, Registered> registrations;
    std::uint32_t lastNumber = 0;
    HotKeyEventHandler handler = nullptr;
    void* handlerData = nullptr;
    bool wasLost = false;
    std::unique_ptr<ScheduledWork> renewal;
    /// Work that outlives the hot keys finds nothing here.
    std::shared_ptr<HotKeys*> self = std::make_shared<HotKeys*>(this);
};

} // namespace platform::gnomeshell
