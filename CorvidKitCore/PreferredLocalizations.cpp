#include "CorvidKitCore/PreferredLocalizations.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace corvid {
namespace {

/// A language as a locale's name has it: language[_Script][_COUNTRY][.codeset][@modifier], all in lower case.
struct Language {
    std::string code;
    std::string script;
    std::string country;

    bool operator==(const Language&) const = default;
};

std::string lowered(std::string_view text) {
    std::string result(text);
    for (char& letter : result) {
        if (letter >= 'A' && letter <= 'Z') {
            letter = static_cast<char>(letter - 'A' + 'a');
        }
    }
    return result;
}

std::vector<std::string_view> parts(std::string_view text, std::string_view separators) {
    std::vector<std::string_view> result;
    while (!text.empty()) {
        const std::size_t end = text.find_first_of(separators);
        result.push_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return result;
}

/// The script of a text in that language, where the name does not say it and the language has two. Four letters, as in
/// ISO 15924.
std::string usualScript(const Language& language) {
    constexpr std::array<std::string_view, 3> traditional{"tw", "hk", "mo"};
    if (language.code == "zh") {
        return std::ranges::find(traditional, language.country) != traditional.end() ? "hant" : "hans";
    }
    return "";
}

Language parsed(std::string_view name) {
    const std::size_t modifierStart = std::min(name.find('@'), name.size());
    const std::string_view modifier = name.substr(std::min(modifierStart + 1, name.size()));
    std::string_view plain = name.substr(0, modifierStart);
    plain = plain.substr(0, plain.find('.'));

    Language result;
    constexpr std::size_t scriptLength = 4;
    for (const std::string_view part : parts(plain, "_-")) {
        if (result.code.empty()) {
            result.code = lowered(part);
        } else if (part.size() == scriptLength) {
            result.script = lowered(part);
        } else if (result.country.empty()) {
            result.country = lowered(part);
        }
    }
    if (modifier == "latin") {
        result.script = "latn";
    } else if (modifier == "cyrillic") {
        result.script = "cyrl";
    }
    if (result.script.empty()) {
        result.script = usualScript(result);
    }
    return result;
}

/// The available language that serves a wanted one best.
std::optional<std::string> bestOf(std::span<const std::string> available, const Language& wanted) {
    const auto among = [&](auto&& serves) -> std::optional<std::string> {
        const auto match = std::ranges::find_if(available, serves, parsed);
        return match != available.end() ? std::optional{*match} : std::nullopt;
    };
    const auto isSameWriting = [&](const Language& other) {
        return other.code == wanted.code && other.script == wanted.script;
    };
    if (auto exact = among([&](const Language& other) { return other == wanted; })) {
        return exact;
    }
    if (auto general = among([&](const Language& other) { return isSameWriting(other) && other.country.empty(); })) {
        return general;
    }
    return among(isSameWriting);
}

} // namespace

std::vector<std::string> preferredLocalizations(std::span<const std::string> available,
                                                std::span<const std::string> wanted) {
    std::vector<std::string> result;
    for (const std::string& names : wanted) {
        for (const std::string_view name : parts(names, ":")) {
            const Language language = parsed(name);
            if (language.code == "c" || language.code == "posix") {
                return result;
            }
            const std::optional<std::string> match = bestOf(available, language);
            if (match && std::ranges::find(result, *match) == result.end()) {
                result.push_back(*match);
            }
        }
    }
    return result;
}

} // namespace corvid
