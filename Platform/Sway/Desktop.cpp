#include "Platform/Sway/Desktop.h"

#include "Platform/Linux/Log/Log.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace platform::sway {

Desktop::Desktop(linux::MainLoop& mainLoop, const std::string& socketPath)
    : session(mainLoop, socketPath)
    , access(session, table, mainLoop, ::getpid())
    , windows(mainLoop, table, access)
    , end(
          mainLoop,
          [socketPath] {
              std::error_code ignored;
              return !std::filesystem::exists(socketPath, ignored);
          },
          [&mainLoop] {
              linux::logToStandardError("sway is gone");
              mainLoop.end(EXIT_FAILURE);
          })
    , lastCommands(socketPath)
    , hotKeys((session.follow(*this), session), i3ipc::includedFiles,
              [this](const std::string& commands) { lastCommands.set(commands); })
    , holders(mainLoop, hotKeys) {
    end.await();
    session.start();
}

} // namespace platform::sway
