#include "CorvidKit/AppInfo.h"

#include "Platform/Seam/Desktop/MainBundle.h"
#include "Platform/Seam/Platform.h"

#include <utility>

namespace corvid::AppInfo {

namespace {
/// The subsystem of a program whose bundle has no identifier.
constexpr const char* fallbackSubsystem = "org.corvid";
} // namespace

std::string version() {
    const PropertyListValue::Dictionary& info = platform::current().mainBundle.infoDictionary;
    const auto found = info.find("CFBundleShortVersionString");
    const auto* text = found == info.end() ? nullptr : found->second.text();
    return text == nullptr ? "dev" : *text;
}

std::optional<std::string> identifier() {
    return platform::current().mainBundle.identifier;
}

Logger logger(std::string category) {
    return {identifier().value_or(fallbackSubsystem), std::move(category)};
}

} // namespace corvid::AppInfo
