#pragma once

#include "Platform/Seam/Toolkit/View.h"
#include "Tessel/AppState.h"
#include "Tessel/MenuTab.h"

#include <memory>
#include <utility>

namespace tessel {

/// The root view of the interface: the state that it observes, and its first tab.
class MenuView final : public platform::View {
public:
    /// `state` outlives every view of it.
    explicit MenuView(AppState& state, MenuTab tab = MenuTab::shortcuts)
        : observed(&state)
        , tab(tab) {}

    /// Over a state of its own, which is destroyed with the view.
    explicit MenuView(std::shared_ptr<AppState> state, MenuTab tab)
        : owned(std::move(state))
        , observed(owned.get())
        , tab(tab) {}

    [[nodiscard]] AppState& state() const { return *observed; }

private:
    std::shared_ptr<AppState> owned;
    AppState* observed;

public:
    const MenuTab tab;
};

} // namespace tessel
