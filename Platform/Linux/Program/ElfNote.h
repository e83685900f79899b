#pragma once

#include "Platform/Linux/Files/FileDescriptor.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform::linux {

/// The bytes of a note in a program's or library's file (elf(5), "Notes"). Only reads the file and runs none of its
/// code. Empty if the file has no such note or is not one that this process could load. Any thread.
[[nodiscard]] std::optional<std::string> elfNote(const FileDescriptor& file, std::string_view owner,
                                                 std::uint32_t type);

/// The linker's identifier of a build (NT_GNU_BUILD_ID). It differs whenever anything in the file differs.
[[nodiscard]] std::optional<std::string> buildIdentity(const FileDescriptor& file);

} // namespace platform::linux
