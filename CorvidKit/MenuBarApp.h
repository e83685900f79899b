#pragma once

#include "CorvidKit/MenuBarController.h"
#include "CorvidKit/UpdateCenter.h"

#include <functional>
#include <memory>

/// The shell of a program that lives in the panel.
namespace corvid::MenuBarApp {

/// The program's parts, kept as long as it runs.
struct Parts {
    std::shared_ptr<MenuBarController> menuBar;
    /// Decides on the dot; must outlive the shell.
    std::reference_wrapper<UpdateCenter> updates;
};

/// Makes the parts. Called once, on the main thread, when the event loop runs.
using Launch = std::function<Parts()>;

/// Runs the program until its end, and returns its exit status. Main thread only.
[[nodiscard]] int run(Launch launch);

} // namespace corvid::MenuBarApp
