#include "CorvidKit/Logger.h"

#include "Platform/Log.h"
#include "Platform/Platform.h"

namespace corvid {

void Logger::error(std::string_view message) const {
    platform::current().log.error(subsystem, category, message);
}

} // namespace corvid
