#include "Platform/Linux/Program/ElfNote.h"

#include <elf.h>
#include <link.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

namespace platform::linux {

namespace {

using Header = ElfW(Ehdr);
using Segment = ElfW(Phdr);
using NoteHeader = ElfW(Nhdr);

constexpr unsigned char ownClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;

std::optional<std::string> bytesAt(const FileDescriptor& file, std::uint64_t place, std::size_t count) {
    std::string bytes(count, '\0');
    const ssize_t read = ::pread(file.get(), bytes.data(), bytes.size(), static_cast<off_t>(place));
    return read == static_cast<ssize_t>(count) ? std::optional(std::move(bytes)) : std::nullopt;
}

template <typename Value>
std::optional<Value> valueAt(const FileDescriptor& file, std::uint64_t place) {
    const std::optional<std::string> bytes = bytesAt(file, place, sizeof(Value));
    if (!bytes) {
        return std::nullopt;
    }
    Value value{};
    std::memcpy(&value, bytes->data(), sizeof(Value));
    return value;
}

/// The note among those of one segment, in which each part begins at a multiple of `alignment`.
std::optional<std::string> noteAmong(std::string_view notes, std::size_t alignment, std::string_view owner,
                                     std::uint32_t type) {
    const auto aligned = [alignment](std::size_t size) { return (size + alignment - 1) / alignment * alignment; };
    while (notes.size() >= sizeof(NoteHeader)) {
        NoteHeader header{};
        std::memcpy(&header, notes.data(), sizeof(header));
        const std::size_t name = sizeof(header);
        const std::size_t content = aligned(name + header.n_namesz);
        const std::size_t end = content + header.n_descsz;
        if (end > notes.size()) {
            return std::nullopt;
        }
        // The owner's name ends with a zero, which counts.
        if (header.n_type == type && header.n_namesz == owner.size() + 1 && notes.substr(name, owner.size()) == owner) {
            return std::string(notes.substr(content, header.n_descsz));
        }
        notes.remove_prefix(std::min(aligned(end), notes.size()));
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> elfNote(const FileDescriptor& file, std::string_view owner, std::uint32_t type) {
    const auto header = valueAt<Header>(file, 0);
    if (!header || std::memcmp(header->e_ident, ELFMAG, SELFMAG) != 0 || header->e_ident[EI_CLASS] != ownClass ||
        header->e_phentsize != sizeof(Segment)) {
        return std::nullopt;
    }
    for (std::uint64_t index = 0; index < header->e_phnum; ++index) {
        const auto segment = valueAt<Segment>(file, header->e_phoff + index * sizeof(Segment));
        constexpr std::size_t longest = std::size_t{1} << 16U;
        if (!segment || segment->p_type != PT_NOTE || segment->p_filesz > longest) {
            continue;
        }
        constexpr std::size_t usualAlignment = 4;
        constexpr std::size_t wideAlignment = 8;
        const auto notes = bytesAt(file, segment->p_offset, segment->p_filesz);
        const std::size_t alignment = segment->p_align == wideAlignment ? wideAlignment : usualAlignment;
        if (auto found = notes ? noteAmong(*notes, alignment, owner, type) : std::nullopt) {
            return found;
        }
    }
    return std::nullopt;
}

std::optional<std::string> buildIdentity(const FileDescriptor& file) {
    return elfNote(file, ELF_NOTE_GNU, NT_GNU_BUILD_ID);
}

} // namespace platform::linux
