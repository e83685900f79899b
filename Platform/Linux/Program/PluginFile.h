#pragma once

#include "Platform/Linux/Files/FileDescriptor.h"

#include <expected>
#include <filesystem>
#include <string>

namespace platform::linux {

/// A shared library that this program loads when it is first needed, and that works with no other build of it: its note
/// "Tessel" of type 1 has the build identity of the program that it was made for.
///
/// An upgrade may put the library of another build in its place before that. So the file is kept open from the start,
/// which takes no memory: what an upgrade replaces, this process still has. Main thread.
class PluginFile {
public:
    /// The file need not be there yet.
    explicit PluginFile(std::filesystem::path path);

    /// The address of a function in it. The library is loaded if it is not yet, and stays loaded; no code of another
    /// build's library runs. The error is a sentence with the fault of the file.
    [[nodiscard]] std::expected<void*, std::string> function(const char* name);

private:
    [[nodiscard]] std::expected<void, std::string> examine(const FileDescriptor& candidate) const;

    std::filesystem::path path;
    FileDescriptor file;
};

} // namespace platform::linux
