#pragma once

#include "Platform/Linux/Log/Log.h"

#include <sys/types.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// A temporary folder for a test, removed with its contents.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    [[nodiscard]] std::string operator/(std::string_view name) const { return path + "/" + std::string{name}; }

    std::string path;
};

[[nodiscard]] std::string contentsOf(const std::string& file);
void write(const std::string& file, std::string_view contents);

/// The names in a folder, sorted.
[[nodiscard]] std::vector<std::string> namesIn(const std::string& folder);

/// The permission bits of a file, a link not followed.
[[nodiscard]] mode_t modeOf(const std::string& path);

/// The logged lines.
struct LogRecord {
    std::vector<std::string> lines;

    [[nodiscard]] platform::linux::Log sink() {
        return [this](std::string_view line) { lines.emplace_back(line); };
    }
};

/// Runs a test's body in a child process, so that its changes to the process end with it. Failures in the body are
/// reported as this test's failures.
void inChildProcess(const std::function<void()>& body);

/// Runs a test's body in a child process as an ordinary user, because root ignores permissions; the folder is given to
/// that user.
void asOrdinaryUser(const TemporaryFolder& folder, const std::function<void()>& body);
