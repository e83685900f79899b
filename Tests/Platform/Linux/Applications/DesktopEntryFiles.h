#pragma once

#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <filesystem>
#include <string>
#include <string_view>

/// Writes a file, and creates its folders.
inline void writeBelow(const std::string& path, std::string_view contents) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    write(path, contents);
}

/// Writes the desktop entry of an application: its lines after `Type` and `Name`.
inline void install(const std::string& path, std::string_view lines = "") {
    writeBelow(path, "[Desktop Entry]\nType=Application\nName=" + std::filesystem::path(path).stem().string() + "\n" +
                         std::string(lines) + "\n");
}
