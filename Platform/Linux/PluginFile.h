#pragma once

#include <expected>
#include <filesystem>
#include <string>

namespace platform::linux {

/// The address of a function in a shared library, which is loaded if it is not yet and stays loaded. The error is a
/// sentence that says what is wrong with the file.
[[nodiscard]] std::expected<void*, std::string> functionOfPlugin(const std::filesystem::path& file, const char* name);

} // namespace platform::linux
