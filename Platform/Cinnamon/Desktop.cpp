#include "Platform/Cinnamon/Desktop.h"

#include <utility>

namespace platform::cinnamon {

Desktop::Desktop(linux::MainLoop& mainLoop, std::filesystem::path core)
    : bus(mainLoop)
    , link(mainLoop, bus, CoreLoader::cinnamonName)
    , loader(mainLoop, link, std::move(core))
    , access(link, table,
             {.show = [this] { loader.retry(); },
              .obstacle = [this] { return loader.obstacle().value_or(CoreLoader::silence()); }})
    , windows(mainLoop, table, access)
    , hotKeys(mainLoop, link)
    , holders(mainLoop, link, {.name = "Cinnamon", .settings = linux::settings::cinnamon})
    , bell(link) {
    loader.onRefusal([this] { windows.announceAccess(); });
    const Instant deadline = mainLoop.now() + startPatience;
    bus.awaitArrival(deadline);
    bus.await(deadline, [this] {
        const std::optional<AccessObstacle> obstacle = loader.obstacle();
        return !obstacle || *obstacle != CoreLoader::silence();
    });
}

} // namespace platform::cinnamon
