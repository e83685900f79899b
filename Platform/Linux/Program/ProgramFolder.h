#pragma once

#include <filesystem>

namespace platform::linux {

/// The folder of the program's own file, with symbolic links resolved (/proc/self/exe, proc_pid_exe(5)); empty where
/// the kernel does not report it. Any thread.
[[nodiscard]] std::filesystem::path programFolder();

} // namespace platform::linux
