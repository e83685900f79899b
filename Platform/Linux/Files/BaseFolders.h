#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::linux {

/// The folders of the XDG Base Directory Specification 0.8, the most important one first. Absolute, without a slash at
/// the end, each once; they need not exist.
struct BaseFolders {
    /// The environment's words, each possibly unset.
    struct Variables {
        std::optional<std::string> home = {};
        std::optional<std::string> dataHome = {};             ///< `XDG_DATA_HOME`
        std::optional<std::string> dataFolders = {};          ///< `XDG_DATA_DIRS`
        std::optional<std::string> configurationHome = {};    ///< `XDG_CONFIG_HOME`
        std::optional<std::string> configurationFolders = {}; ///< `XDG_CONFIG_DIRS`
        std::optional<std::string> stateHome = {};            ///< `XDG_STATE_HOME`
    };

    std::optional<std::string> home = {};
    /// `$XDG_DATA_HOME`, `$XDG_DATA_DIRS`, and after them, unless the session names them itself, the folders into which
    /// Flatpak and Snap install programs.
    std::vector<std::string> data = {};
    /// `$XDG_CONFIG_HOME`; nothing without a home folder.
    std::optional<std::string> userConfiguration = {};
    /// `$XDG_CONFIG_DIRS`.
    std::vector<std::string> systemConfiguration = {};
    /// `$XDG_STATE_HOME`; nothing without a home folder.
    std::optional<std::string> userState = {};

    [[nodiscard]] static BaseFolders of(const Variables& variables);

    /// Reads the environment, and the password database where `HOME` is unset or not absolute: main thread. Not
    /// `g_get_user_config_dir` and the like, which take relative paths as well.
    [[nodiscard]] static BaseFolders ofThisProcess();

    /// The folders of desktop entries: "applications" in the data folders.
    [[nodiscard]] std::vector<std::string> applications() const;
};

/// The user's folder for sockets and the like: `$XDG_RUNTIME_DIR`. Where that is not set, as in a task of cron's, it is
/// where systemd has the folder (pam_systemd(8)), which need not exist. Reads the environment: main thread.
[[nodiscard]] std::string runtimeFolder();

/// The names in `XDG_CURRENT_DESKTOP`, the most particular first. Reads the environment: main thread.
[[nodiscard]] std::vector<std::string> currentDesktops();

/// The folders of programs, with colons between them: `PATH`. Reads the environment: main thread.
[[nodiscard]] std::string programSearchPath();

/// The parts of a text between colons, without empty ones.
[[nodiscard]] std::vector<std::string> partsBetweenColons(std::string_view text);

/// A variable of this process's environment; empty if it is not set. Main thread.
[[nodiscard]] std::optional<std::string> environmentVariable(const char* name);

} // namespace platform::linux
