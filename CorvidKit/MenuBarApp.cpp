#include "CorvidKit/MenuBarApp.h"

#include "CorvidKit/Concurrency.h"
#include "Platform/Seam/Desktop/ThisApplication.h"
#include "Platform/Seam/Platform.h"

#include <optional>
#include <utility>

namespace corvid::MenuBarApp {

namespace {

/// The handler of the event loop's events in the program's life.
class Delegate {
public:
    explicit Delegate(Launch launch)
        : launch(std::move(launch)) {}

    Delegate(const Delegate&) = delete;
    Delegate& operator=(const Delegate&) = delete;

    /// Nothing is to hold on to a desktop that goes once the loop has ended.
    ~Delegate() { MenuBarController::releaseShared(); }

    void applicationDidFinishLaunching() {
        assertIsolated({.file = "CorvidKit/MenuBarApp", .line = __LINE__});
        Parts made = launch();
        made.menuBar->showUpdateBadge(made.updates);
        parts = std::move(made);
    }

private:
    Launch launch;
    std::optional<Parts> parts;
};

} // namespace

int run(Launch launch) {
    Delegate delegate(std::move(launch));
    return platform::current().thisApplication.run([&delegate] { delegate.applicationDidFinishLaunching(); });
}

} // namespace corvid::MenuBarApp
