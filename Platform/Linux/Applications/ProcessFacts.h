#pragma once

#include "Platform/Seam/Desktop/Accessibility.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Facts about another process, read from the kernel. The process may end, lie or belong to another user: every read is
/// bounded, and a missing fact gives nothing. Process ids are positive. Any thread.
namespace platform::linux::ProcessFacts {

/// The kernel's folder of processes; tests have their own.
inline constexpr std::string_view standardFolder = "/proc";

/// The id of the Flatpak application whose sandbox the process is in (`[Application] name` in the sandbox's
/// "/.flatpak-info", flatpak-metadata(5)).
[[nodiscard]] std::optional<std::string> flatpakApplication(const std::string& folder, ProcessIdentifier process);

/// The instance name and the application of a snap, from its security label: "snap.INSTANCE.APPLICATION (enforce)".
struct SnapApplication {
    std::string instance;
    std::string application;

    friend bool operator==(const SnapApplication&, const SnapApplication&) = default;
};

[[nodiscard]] std::optional<SnapApplication> snapApplication(const std::string& folder, ProcessIdentifier process);
[[nodiscard]] std::optional<SnapApplication> snapOfLabel(std::string_view label);

/// The application id of the systemd unit of the user's manager that the process is in.
[[nodiscard]] std::optional<std::string> scopeApplication(const std::string& folder, ProcessIdentifier process);

/// The same of the contents of a process's "cgroup" file. The unit is named
/// "app[-LAUNCHER]-APPLICATION-RANDOM.scope" or "app[-LAUNCHER]-APPLICATION[@RANDOM].service", each part escaped as in
/// systemd.unit(5) (systemd, Desktop Environment Integration, XDG standardization for applications).
[[nodiscard]] std::optional<std::string> applicationOfUnit(std::string_view controlGroups);

/// The program that a process runs.
struct Program {
    /// The file's absolute path. Empty where the file is an interpreter reading a script.
    std::string path;
    /// The script's path as the interpreter was given it; empty where there is none.
    std::string script;

    /// The path or the script, whichever there is.
    [[nodiscard]] const std::string& name() const { return script.empty() ? path : script; }

    friend bool operator==(const Program&, const Program&) = default;
};

[[nodiscard]] std::optional<Program> program(const std::string& folder, ProcessIdentifier process);

/// The words of a process's "cmdline", which may lack its last zero.
[[nodiscard]] std::vector<std::string> commandWords(std::string_view commandLine);

} // namespace platform::linux::ProcessFacts
