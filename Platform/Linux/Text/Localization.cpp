#include "Platform/Linux/Text/Localization.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

namespace platform::linux {

Localization::Localization(const std::string& domain, const std::filesystem::path& folder,
                           std::span<const std::string> languages) {
    std::vector<std::string> wanted(languages.begin(), languages.end());
    if (std::ranges::find(wanted, "en") == wanted.end()) {
        wanted.emplace_back("en");
    }
    for (const std::string& language : wanted) {
        if (auto catalogue = MessageCatalogue::read(folder / language / "LC_MESSAGES" / (domain + ".mo"))) {
            catalogues.push_back(*std::move(catalogue));
        }
    }
}

std::string Localization::text(std::string_view table, std::string_view key) const {
    for (const MessageCatalogue& catalogue : catalogues) {
        if (const auto found = catalogue.text(table, key)) {
            return std::string(*found);
        }
    }
    return std::string(key);
}

std::string Localization::text(std::string_view table, std::string_view key, std::uint64_t count) const {
    std::string result(key);
    for (const MessageCatalogue& catalogue : catalogues) {
        if (const auto found = catalogue.text(table, key, count)) {
            result = *found;
            break;
        }
    }
    constexpr std::string_view placeholder = "%n";
    if (const std::size_t place = result.find(placeholder); place != std::string::npos) {
        result.replace(place, placeholder.size(), std::to_string(count));
    }
    return result;
}

} // namespace platform::linux
