#pragma once

#include "Platform/Seam/Desktop/AddressOpener.h"
#include "Platform/Simulated/Trace.h"

#include <functional>
#include <set>
#include <string>
#include <string_view>

namespace platform::simulated {

/// Trace: "open https://…".
class AddressOpener final : public platform::AddressOpener {
public:
    explicit AddressOpener(Trace& trace)
        : trace(trace) {}

    bool open(std::string_view address) override {
        trace.record("open " + std::string(address));
        return !refused.contains(address);
    }

    /// From now on that address has no handler.
    void refuse(std::string_view address) { refused.emplace(address); }

private:
    Trace& trace;
    std::set<std::string, std::less<>> refused;
};

} // namespace platform::simulated
