#pragma once

#include "Platform/Linux/FileDescriptor.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform::linux {

/// What a note in a program's or library's file says (elf(5), "Notes"): its bytes. Reads the file alone and runs
/// nothing of it. Nothing where the file has no such note or is not one that this process could load. Any thread.
[[nodiscard]] std::optional<std::string> elfNote(const FileDescriptor& file, std::string_view owner,
                                                 std::uint32_t type);

/// What the linker calls a build by (NT_GNU_BUILD_ID): another one whenever anything in the file is another.
[[nodiscard]] std::optional<std::string> buildIdentity(const FileDescriptor& file);

} // namespace platform::linux
