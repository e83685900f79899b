#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform::linux {

/// The texts of one language, in a file as msgfmt makes it (GNU gettext manual, "The Format of GNU MO Files").
///
/// The C library has a reader of its own. It takes the language from the locale in force and from `LANGUAGE`, and
/// translates nothing where the locale is "C" (since glibc 2.41 also "C.UTF-8"), which need not be the user's language.
class MessageCatalogue {
public:
    /// No file of ours is nearly that large, in bytes.
    static constexpr std::size_t largestFile = std::size_t{1} << 20U;

    /// Empty if the file is missing or of another kind.
    [[nodiscard]] static std::optional<MessageCatalogue> read(const std::string& path);

    /// The same from the contents of a file, however malformed.
    [[nodiscard]] static std::optional<MessageCatalogue> parse(std::string contents);

    /// The translation of a text in a context; empty without one. Valid as long as this is. UTF-8.
    [[nodiscard]] std::optional<std::string_view> text(std::string_view context, std::string_view key) const;

    /// The form of it for a number of things.
    [[nodiscard]] std::optional<std::string_view> text(std::string_view context, std::string_view key,
                                                       std::uint64_t count) const;

private:
    explicit MessageCatalogue(std::string file)
        : contents(std::move(file)) {}

    [[nodiscard]] std::optional<std::uint32_t> number(std::size_t place) const;
    /// The text that entry `index` of the table at `table` points to.
    [[nodiscard]] std::optional<std::string_view> entry(std::size_t table, std::size_t index) const;
    /// All forms of a translation, with zeros between them.
    [[nodiscard]] std::optional<std::string_view> translation(std::string_view identifier) const;
    [[nodiscard]] std::size_t form(std::uint64_t count) const;

    std::string contents;
    bool isBigEndian = false;
};

} // namespace platform::linux
