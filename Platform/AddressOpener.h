#pragma once

#include <string_view>

namespace platform {

/// Opens web addresses and settings pages with the program that the user has chosen for them. Main thread only.
class AddressOpener {
public:
    AddressOpener() = default;
    AddressOpener(const AddressOpener&) = delete;
    AddressOpener& operator=(const AddressOpener&) = delete;
    virtual ~AddressOpener() = default;

    /// Hands an address over without waiting for it to be shown. False where it is not an address or nothing on this
    /// desktop takes addresses of its scheme.
    virtual bool open(std::string_view address) = 0;
};

} // namespace platform
