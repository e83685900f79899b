#include "Platform/Linux/Applications/SearchTerms.h"

#include "Platform/Linux/Applications/DesktopEntry.h"
#include "Platform/Linux/Applications/ExecLine.h"
#include "Platform/Linux/Applications/KeyFile.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <optional>
#include <utility>

namespace platform::linux {

std::vector<std::string> searchTerms(std::string_view contents) {
    const std::optional<KeyFile> file = KeyFile::parse(contents);
    const std::optional<DesktopEntry> entry = file ? DesktopEntry::from(*file) : std::nullopt;
    if (!entry || !entry->isApplication || entry->isHidden) {
        return {};
    }
    std::vector<std::string> terms;
    const auto add = [&](std::optional<std::string> text) {
        if (text && !text->empty()) {
            terms.push_back(*std::move(text));
        }
    };
    add(file->text(DesktopEntry::group, "Name"));
    add(file->text(DesktopEntry::group, "GenericName"));
    add(file->localizedText(DesktopEntry::group, "GenericName"));
    std::ranges::move(file->texts(DesktopEntry::group, "Keywords"), std::back_inserter(terms));
    std::ranges::move(file->localizedTexts(DesktopEntry::group, "Keywords"), std::back_inserter(terms));
    if (entry->flatpak.empty()) {
        if (const auto program = ExecLine::program(entry->exec)) {
            add(std::filesystem::path(program->name).filename());
        }
    }
    return terms;
}

} // namespace platform::linux
