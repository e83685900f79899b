#include "Platform/Sway/Desktop.h"

#include <unistd.h>

namespace platform::sway {

Desktop::Desktop(linux::MainLoop& mainLoop, const std::string& socketPath)
    : session(mainLoop, socketPath)
    , access(session, table, mainLoop, ::getpid())
    , windows(mainLoop, table, access)
    , end(mainLoop, compositor::absenceOf(socketPath), compositor::endOfLoop(mainLoop, "sway"))
    , lastCommands(socketPath)
    , hotKeys((session.follow(*this), session), i3ipc::includedFiles,
              [this](const std::string& commands) { lastCommands.set(commands); })
    , holders(mainLoop, [this](const corvid::Shortcut& shortcut) { return hotKeys.holderOf(shortcut); }) {
    end.await();
    session.start();
}

} // namespace platform::sway
