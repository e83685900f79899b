#pragma once

#include "Platform/Compositor/WindowTable.h"
#include "Platform/Linux/Tray/TrayPlace.h"
#include "Platform/ShellCore/ShellLink.h"

#include <memory>
#include <optional>
#include <string>

namespace platform::gnomeshell {

/// The shell's top bar, which shows no status items by itself: our extension adds the item. A click runs the item's
/// action, a secondary click or the keyboard opens the menu. Main thread only.
class TopBar final : public linux::TrayPlace, private shellcore::ShellLink::Listener {
public:
    /// All of them must outlive the place. `iconThemePath` is the folder of the program's own icons.
    TopBar(linux::MainLoop& mainLoop, shellcore::ShellLink& link, const compositor::WindowTable& table,
           std::string iconThemePath);

    [[nodiscard]] bool isOffered() const override { return link.isOpen(); }
    void show(const linux::TrayContents& newContents) override;
    void hide() override;
    void update(Change change) override;
    [[nodiscard]] bool isShown() const override { return link.isOpen() && contents != nullptr; }
    [[nodiscard]] std::optional<corvid::CGRect> frame() const override;

private:
    void opened(const shellcore::Hello& hello, bool isNew) override;
    void closed() override;
    void signalArrived(std::string_view signal, sd_bus_message* message) override;

    void send() const;
    void clicked(const corvid::CGRect& item) const;
    void chosen(std::size_t line) const;
    /// From the shell's space to the screen space.
    [[nodiscard]] std::optional<corvid::CGRect> inScreenSpace(const corvid::CGRect& rectangle) const;

    linux::MainLoop& mainLoop;
    shellcore::ShellLink& link;
    const compositor::WindowTable& table;
    std::string iconThemePath;
    const linux::TrayContents* contents = nullptr;
};

} // namespace platform::gnomeshell
