#include "Platform/Linux/Applications/DesktopEntryIndex.h"

#include "Platform/Linux/Applications/DesktopEntry.h"
#include "Platform/Linux/Applications/ExecLine.h"
#include "Platform/Linux/Applications/FolderTree.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace platform::linux {
namespace {

constexpr std::string_view ending = ".desktop";

} // namespace

class DesktopEntryIndex::Reader {
public:
    explicit Reader(std::span<const std::string> desktops)
        : desktops(desktops) {}

    void readFolder(const std::string& folder) {
        const std::string prefix = folder + "/";
        for (const std::string& file : FolderTree::read(folder, std::string(ending)).files) {
            std::string identifier = desktopEntryIdentifier(file);
            if (identifier.empty() || identifiers.contains(identifier)) {
                continue;
            }
            const std::optional<DesktopEntry> entry = DesktopEntry::read(prefix + file, desktops);
            if (!entry || (!entry->isApplication && !entry->isHidden)) {
                continue;
            }
            if (!entry->isHidden) {
                add(identifier, file, *entry);
            }
            identifiers.insert(std::move(identifier));
        }
        index.folders.push_back(folder);
    }

    DesktopEntryIndex take() {
        index.records.shrink_to_fit();
        index.texts.shrink_to_fit();
        return std::move(index);
    }

private:
    void add(const std::string& identifier, std::string_view file, const DesktopEntry& entry) {
        const std::optional<ExecLine::Program> program = ExecLine::program(entry.exec);
        const bool isInFolderItself = file.size() == identifier.size() + ending.size() && !file.contains('/');
        index.records.push_back({
            .identifier = index.keep(identifier),
            .path = isInFolderItself ? Place{0} : index.keep(file),
            .windowClass = index.keep(entry.windowClass),
            .program = program ? index.keep(program->name) : Place{0},
            .tryProgram = index.keep(entry.tryExec),
            .flatpak = index.keep(entry.flatpak),
            .snapInstance = index.keep(entry.snapInstance),
            .folder = static_cast<std::uint16_t>(index.folders.size()),
            .isShown = entry.isListed && entry.isForThisDesktop,
            .hasArguments = program && program->hasArguments,
            .needsTerminal = entry.needsTerminal,
        });
    }

    std::span<const std::string> desktops;
    /// Those that are taken, hidden ones too.
    std::unordered_set<std::string> identifiers;
    DesktopEntryIndex index;
};

DesktopEntryIndex DesktopEntryIndex::read(std::span<const std::string> folders,
                                          std::span<const std::string> currentDesktops) {
    Reader reader(currentDesktops);
    for (const std::string& folder : folders) {
        reader.readFolder(folder);
    }
    return reader.take();
}

DesktopEntryIndex::Entry DesktopEntryIndex::operator[](std::size_t number) const {
    const Record& record = records.at(number);
    return {
        .identifier = text(record.identifier),
        .windowClass = text(record.windowClass),
        .program = text(record.program),
        .tryProgram = text(record.tryProgram),
        .flatpak = text(record.flatpak),
        .snapInstance = text(record.snapInstance),
        .folder = record.folder,
        .isShown = record.isShown,
        .hasArguments = record.hasArguments,
        .needsTerminal = record.needsTerminal,
    };
}

std::optional<std::size_t> DesktopEntryIndex::find(std::string_view identifier) const {
    const auto found =
        std::ranges::find(records, identifier, [this](const Record& record) { return text(record.identifier); });
    return found == records.end() ? std::nullopt : std::optional(static_cast<std::size_t>(found - records.begin()));
}

std::string DesktopEntryIndex::path(std::size_t number) const {
    const Record& record = records.at(number);
    std::string path = folders.at(record.folder) + "/";
    if (record.path != 0) {
        return path.append(text(record.path));
    }
    return path.append(text(record.identifier)).append(ending);
}

std::size_t DesktopEntryIndex::footprint() const {
    return records.capacity() * sizeof(Record) + texts.capacity();
}

std::string_view DesktopEntryIndex::text(Place place) const {
    return texts.data() + place;
}

DesktopEntryIndex::Place DesktopEntryIndex::keep(std::string_view text) {
    // No name of an application is longer, so a longer one would never be searched for.
    constexpr std::size_t longest = 4096;
    constexpr std::size_t room = std::size_t{64} << 20U;
    if (text.empty() || text.size() > longest || texts.size() > room) {
        return 0;
    }
    const auto place = static_cast<Place>(texts.size());
    texts.append(text).push_back('\0');
    return place;
}

std::string desktopEntryIdentifier(std::string_view pathInFolder) {
    if (!pathInFolder.ends_with(ending)) {
        return "";
    }
    pathInFolder.remove_suffix(ending.size());
    std::string identifier(pathInFolder);
    std::ranges::replace(identifier, '/', '-');
    return identifier;
}

} // namespace platform::linux
