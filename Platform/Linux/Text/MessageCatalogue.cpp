#include "Platform/Linux/Text/MessageCatalogue.h"

#include "Platform/Linux/Files/RegularFile.h"

#include <utility>

namespace platform::linux {

namespace {

constexpr std::uint32_t magic = 0x950412DE;

// The offsets of the header's fields.
constexpr std::size_t countPlace = 8;
constexpr std::size_t originalsPlace = 12;
constexpr std::size_t translationsPlace = 16;

/// The first of the texts between zeros, or a later one; the first where there are not so many.
std::string_view part(std::string_view texts, std::size_t index) {
    std::string_view rest = texts;
    for (; index > 0; --index) {
        const std::size_t end = rest.find('\0');
        if (end == std::string_view::npos) {
            rest = texts;
            break;
        }
        rest.remove_prefix(end + 1);
    }
    return rest.substr(0, rest.find('\0'));
}

} // namespace

std::optional<MessageCatalogue> MessageCatalogue::read(const std::string& path) {
    std::optional<std::string> contents = readRegularFile(path, largestFile, Excess::refused);
    return contents ? parse(*std::move(contents)) : std::nullopt;
}

std::optional<MessageCatalogue> MessageCatalogue::parse(std::string contents) {
    MessageCatalogue catalogue(std::move(contents));
    for (const bool isBigEndian : {false, true}) {
        catalogue.isBigEndian = isBigEndian;
        if (catalogue.number(0) == magic) {
            return catalogue;
        }
    }
    return std::nullopt;
}

std::optional<std::string_view> MessageCatalogue::text(std::string_view context, std::string_view key) const {
    return text(context, key, 1);
}

std::optional<std::string_view> MessageCatalogue::text(std::string_view context, std::string_view key,
                                                       std::uint64_t count) const {
    // So a context is put before a text (GNU gettext manual, "Contexts").
    const std::optional<std::string_view> forms = translation(std::string(context).append(1, '\004').append(key));
    return forms && !forms->empty() ? std::optional(part(*forms, form(count))) : std::nullopt;
}

std::optional<std::uint32_t> MessageCatalogue::number(std::size_t place) const {
    constexpr std::size_t size = sizeof(std::uint32_t);
    constexpr unsigned byteBits = 8;
    if (place > contents.size() || contents.size() - place < size) {
        return std::nullopt;
    }
    std::uint32_t value = 0;
    for (std::size_t index = 0; index < size; ++index) {
        const std::size_t offset = isBigEndian ? index : size - 1 - index;
        value = value << byteBits | static_cast<unsigned char>(contents[place + offset]);
    }
    return value;
}

std::optional<std::string_view> MessageCatalogue::entry(std::size_t table, std::size_t index) const {
    constexpr std::size_t entrySize = 8;
    const auto length = number(table + index * entrySize);
    const auto place = number(table + index * entrySize + entrySize / 2);
    if (!length || !place || *place > contents.size() || contents.size() - *place < *length) {
        return std::nullopt;
    }
    return std::string_view(contents).substr(*place, *length);
}

std::optional<std::string_view> MessageCatalogue::translation(std::string_view identifier) const {
    const auto count = number(countPlace);
    const auto originals = number(originalsPlace);
    const auto translations = number(translationsPlace);
    if (!count || !originals || !translations) {
        return std::nullopt;
    }
    // A few dozen texts: looking at each costs less than anything that would be kept in memory.
    for (std::size_t index = 0; index < *count; ++index) {
        const auto original = entry(*originals, index);
        if (!original) {
            return std::nullopt;
        }
        // A counted text is there with its plural.
        if (part(*original, 0) == identifier) {
            return entry(*translations, index);
        }
    }
    return std::nullopt;
}

std::size_t MessageCatalogue::form(std::uint64_t count) const {
    // The translation of the empty text is the header.
    const std::string_view header = translation("").value_or("");
    const auto says = [&](std::string_view rule) { return header.find(rule) != std::string_view::npos; };
    if (says("plural=0;")) {
        return 0;
    }
    if (says("plural=(n > 1);")) {
        return count > 1 ? 1 : 0;
    }
    return count != 1 ? 1 : 0;
}

} // namespace platform::linux
