#include "TesselCore/AppName.h"

namespace tessel::AppName {

std::string display(std::optional<std::string_view> fileName, std::string_view bundleID) {
    if (!fileName || fileName->empty()) {
        return std::string{bundleID};
    }
    constexpr std::string_view suffix = ".app";
    std::string_view name = *fileName;
    if (name.ends_with(suffix)) {
        name.remove_suffix(suffix.size());
    }
    return std::string{name};
}

} // namespace tessel::AppName
