#pragma once

#include "Platform/Compositor/OwnPlaces.h"
#include "Platform/Compositor/TableReader.h"
#include "Platform/Compositor/WindowAccess.h"
#include "Platform/Compositor/WindowKinds.h"
#include "Platform/Compositor/WindowTable.h"
#include "Platform/Sway/Session.h"
#include "Platform/Sway/Tree.h"

#include <chrono>
#include <map>
#include <optional>
#include <set>
#include <string>

namespace platform::sway {

/// Access to the windows of sway. Windows are named by the number of their container.
///
/// No event carries geometry, so the layout is read for each question about it. Events only say that windows have
/// come or gone or that the focus has moved, upon which it is read once for all of them.
class WindowAccess final : public compositor::WindowAccess, private Session::Follower {
public:
    /// How long a window must keep its frame to count as settled: programs reply within some milliseconds, and one that
    /// restores its frame does so then.
    static constexpr std::chrono::milliseconds rest{40};

    /// All must outlive this. `ownProcess`: this program's.
    WindowAccess(Session& session, compositor::WindowTable& table, linux::MainLoop& mainLoop,
                 ProcessIdentifier ownProcess);

    void refresh(Instant deadline) override { reader.update(deadline); }

    AXError place(const compositor::WindowIdentifier& window, const corvid::CGRect& frame, Instant deadline) override;

    [[nodiscard]] AccessObstacle obstacle() const override {
        return {.kind = AccessObstacle::Kind::silentCompositor, .desktop = "sway"};
    }

    /// sway does not report it.
    [[nodiscard]] std::optional<corvid::CGPoint> pointer() override { return std::nullopt; }
    void placeOwnWindow(const std::string& title, corvid::CGPoint topLeft) override;

private:
    void sessionOpened() override { reader.begin(); }

    void sessionClosed() override;
    void sessionReported(i3ipc::EventType type, const i3ipc::Json& content) override;

    void sessionIsQuiet() override { reader.catchUp(); }

    [[nodiscard]] std::optional<compositor::WindowTable::Contents> read(Instant deadline);
    void takeKinds(Tree& tree);
    void takeHiddenWorkspaces(const Tree& tree);
    void placeOwnWindows(const Tree& tree);

    Session& session;
    compositor::WindowTable& table;
    linux::MainLoop& mainLoop;
    ProcessIdentifier ownProcess;
    compositor::TableReader reader;
    compositor::WindowKinds kinds;
    /// The hidden workspaces of windows.
    std::map<compositor::WindowIdentifier, std::string> hiddenWorkspaces;
    compositor::OwnPlaces ownPlaces;
    /// The rules for windows of ours that the compositor has already.
    std::set<std::string> ownWindowRules;
};

} // namespace platform::sway
