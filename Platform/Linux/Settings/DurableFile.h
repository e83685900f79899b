#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// Small files that must never be seen half written and never be lost. Paths are absolute. Errors are texts that say
/// what failed and where.
namespace platform::linux::DurableFile {

/// Where a path leads when it is a symbolic link, or a chain of them: the path of the file itself, which need not
/// exist. Any other path is given back as it is.
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

/// Replaces a file, or makes it, with mode 0600, so that whatever happens the path holds the old contents or the new
/// ones, and the new ones are on the disk when this succeeds. Missing folders are made with mode 0700.
///
/// The contents are written to ".<name>.new" in the same folder, which is then given the name. A process that dies in
/// between leaves that file behind; the next replacement takes it up. It is locked meanwhile, from before `renewed` is
/// asked for the new contents: what that reads at the path is what is replaced. Another process that is at it is waited
/// for, not long; then this fails. Anything at the path but a regular file is left alone, as an error; an error of
/// `renewed` is given back. Not `g_file_set_contents_full`: a process that dies in it leaves one more file
/// each time, and it locks nothing.
[[nodiscard]] std::expected<void, std::string>
renew(const std::string& path, const std::function<std::expected<std::string, std::string>()>& renewed);

/// The same with contents that do not depend on what was there.
[[nodiscard]] std::expected<void, std::string> replace(const std::string& path, std::string_view contents);

/// Renames a file in its folder to "<name>.unreadable-<UTC time>", with "-2" and so on appended when that is taken, and
/// gives the new path; nothing when there is no such file. Never replaces another file.
[[nodiscard]] std::expected<std::optional<std::string>, std::string> keepBeside(const std::string& path);

} // namespace platform::linux::DurableFile
