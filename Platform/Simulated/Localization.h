#pragma once

#include "Platform/Seam/Desktop/Localization.h"

#include <map>
#include <string>
#include <string_view>

namespace platform::simulated {

/// The texts of a test, and all other texts in English.
class Localization final : public platform::Localization {
public:
    [[nodiscard]] std::string text(std::string_view table, std::string_view key) const override {
        const auto found = texts.find(std::string(table) + "/" + std::string(key));
        return found == texts.end() ? std::string(key) : found->second;
    }

    [[nodiscard]] std::string text(std::string_view table, std::string_view key, std::uint64_t count) const override {
        std::string result = text(table, key);
        if (const std::size_t place = result.find("%n"); place != std::string::npos) {
            result.replace(place, 2, std::to_string(count));
        }
        return result;
    }

    /// Without the case of English letters and the accent of é.
    [[nodiscard]] std::string searchKey(std::string_view text) const override {
        std::string key;
        for (const char character : text) {
            key += character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
        }
        for (const std::string_view accented : {"é", "É"}) {
            for (std::size_t place = 0; (place = key.find(accented)) != std::string::npos;) {
                key.replace(place, accented.size(), "e");
            }
        }
        return key;
    }

    /// By "table/key".
    std::map<std::string, std::string, std::less<>> texts;
};

} // namespace platform::simulated
