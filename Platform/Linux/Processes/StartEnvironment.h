#pragma once

#include <string>
#include <vector>

namespace platform::linux {

/// The environment that this program was started with, each variable as "NAME=VALUE", which the kernel keeps (proc(5)).
/// Libraries that this program uses change its own for their sake. Empty where it cannot be read. Any thread.
[[nodiscard]] std::vector<std::string> startEnvironment();

/// Pointers to the texts, and a null pointer behind them, as the C library takes lists. Valid as long as the texts are.
[[nodiscard]] std::vector<char*> pointersTo(std::vector<std::string>& texts);

/// Becomes another program, with the environment that this one was started with, and without its descriptors but the
/// standard streams. Returns only where that fails, with errno set.
void becomeProgram(const std::string& path);

} // namespace platform::linux
