#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace platform::linux {

/// The applications that folders of desktop entries describe, by their ids (Desktop Entry Specification, File naming).
/// A few dozen bytes for each: names and icons are read from the files when they are wanted.
///
/// The first entry of an id counts, and one that is hidden hides those of the same id in later folders. Other files,
/// and entries that are no application, do not count.
class DesktopEntryIndex {
public:
    /// The texts belong to the index.
    struct Entry {
        /// The desktop file id without ".desktop".
        std::string_view identifier;
        std::string_view windowClass;
        std::string_view program;    ///< of `Exec`, see `ExecLine::program`
        std::string_view tryProgram; ///< `TryExec`
        std::string_view flatpak;
        std::string_view snapInstance;
        /// The number of its folder among those that were read.
        std::size_t folder = 0;
        /// Listed among the applications to choose from, on this desktop.
        bool isShown = false;
        /// Started with words of its own, so it may be a part or a certain use of its program.
        bool hasArguments = false;
        /// The program has windows that are not its own, but a terminal emulator's.
        bool needsTerminal = false;
    };

    DesktopEntryIndex() = default;

    /// `currentDesktops` are the names in `XDG_CURRENT_DESKTOP`.
    [[nodiscard]] static DesktopEntryIndex read(std::span<const std::string> folders,
                                                std::span<const std::string> currentDesktops);

    [[nodiscard]] std::size_t size() const { return records.size(); }

    [[nodiscard]] Entry operator[](std::size_t number) const;

    /// The number of the entry with exactly that id.
    [[nodiscard]] std::optional<std::size_t> find(std::string_view identifier) const;

    /// The absolute path of an entry's file.
    [[nodiscard]] std::string path(std::size_t number) const;

    /// The bytes of memory that it takes.
    [[nodiscard]] std::size_t footprint() const;

private:
    class Reader;

    /// A text's place in `texts`, where it ends with a zero. 0 is the empty text.
    using Place = std::uint32_t;

    struct Record {
        Place identifier = 0;
        /// Within its folder; empty where it is the id and ".desktop".
        Place path = 0;
        Place windowClass = 0;
        Place program = 0;
        Place tryProgram = 0;
        Place flatpak = 0;
        Place snapInstance = 0;
        std::uint16_t folder = 0;
        bool isShown = false;
        bool hasArguments = false;
        bool needsTerminal = false;
    };

    [[nodiscard]] std::string_view text(Place place) const;
    Place keep(std::string_view text);

    std::vector<std::string> folders;
    std::vector<Record> records;
    std::string texts = std::string(1, '\0');
};

/// The id, without ".desktop", of the file with that path within a folder of desktop entries.
[[nodiscard]] std::string desktopEntryIdentifier(std::string_view pathInFolder);

} // namespace platform::linux
