#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// Small files that must never be half written or lost. Paths are absolute. Errors are texts with the failed operation
/// and the path.
namespace platform::linux::DurableFile {

/// The target of a path that is a symbolic link, or a chain of them: the path of the file itself, which need not exist.
/// Any other path is returned unchanged.
[[nodiscard]] std::expected<std::string, std::string> followLinks(std::string path);

struct ReadFailure {
    enum class Kind : std::uint8_t {
        /// A regular file that could not be read.
        unreadable,
        /// No regular file: a folder, a device, a pipe. It was not touched.
        notAFile,
    };

    Kind kind{};
    std::string reason;
};

/// The contents of a regular file; nothing when there is no such file or no such folder. Never waits on a pipe.
[[nodiscard]] std::expected<std::optional<std::string>, ReadFailure> read(const std::string& path);

/// Replaces a file, or creates it, with mode 0600. At any time the path has the old contents or the new ones, and the
/// new ones are on the disk when this succeeds. Missing folders are created with mode 0700.
///
/// The contents are written to ".<name>.new" in the same folder, which is then renamed. A process that dies in between
/// leaves that file behind; the next replacement reuses it. It is locked meanwhile, from before the call of `renewed`
/// for the new contents: `renewed` reads at the path exactly the file that is replaced. If another process holds the
/// lock, this waits for a short time, then fails. Anything at the path but a regular file stays, and is an error; an
/// error of `renewed` is returned. Not `g_file_set_contents_full`: a process that dies in it leaves one more file each
/// time, and it locks nothing.
[[nodiscard]] std::expected<void, std::string>
renew(const std::string& path, const std::function<std::expected<std::string, std::string>()>& renewed);

/// The same with contents that do not depend on the former ones.
[[nodiscard]] std::expected<void, std::string> replace(const std::string& path, std::string_view contents);

/// Renames a file in its folder to "<name>.unreadable-<UTC time>", with "-2" and so on appended when that is taken, and
/// returns the new path; empty if there is no such file. Never replaces another file.
[[nodiscard]] std::expected<std::optional<std::string>, std::string> keepBeside(const std::string& path);

} // namespace platform::linux::DurableFile
