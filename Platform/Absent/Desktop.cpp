#include "Platform/Absent/Desktop.h"

namespace platform::absent {

namespace {

/// An empty element, which equals only itself.
class NoElement final : public AXElementStorage {
public:
    [[nodiscard]] bool isEqual(const AXElementStorage& other) const override { return this == &other; }
};

} // namespace

AXUIElement Accessibility::applicationElement(ProcessIdentifier /*process*/) {
    return AXUIElement(std::make_shared<const NoElement>());
}

} // namespace platform::absent
