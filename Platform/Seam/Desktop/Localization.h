#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

/// The program's texts in the user's language, for use without the toolkit. Main thread only.
class Localization {
public:
    Localization() = default;
    Localization(const Localization&) = delete;
    Localization& operator=(const Localization&) = delete;
    virtual ~Localization() = default;

    /// The translation of an English text of that table ("Tessel", "CorvidKit"); the text itself without a translation.
    [[nodiscard]] virtual std::string text(std::string_view table, std::string_view key) const = 0;

    /// The same for a counted text: the form for `count`, its "%n" replaced by the number.
    [[nodiscard]] virtual std::string text(std::string_view table, std::string_view key, std::uint64_t count) const = 0;

    /// A text in the form that searches compare: without letter case, accents and other marks that people may leave
    /// out. Any text, any language.
    [[nodiscard]] virtual std::string searchKey(std::string_view text) const = 0;
};

} // namespace platform
