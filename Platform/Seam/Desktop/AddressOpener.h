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

    /// Passes an address on without waiting for it to be shown. False if it is not an address or the desktop has no
    /// handler for its scheme.
    virtual bool open(std::string_view address) = 0;
};

} // namespace platform
