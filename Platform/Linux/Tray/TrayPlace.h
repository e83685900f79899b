#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/Linux/Tray/TrayContents.h"

#include <functional>
#include <optional>
#include <utility>

namespace platform::linux {

/// One of the ways in which panels take status items. Main thread only.
class TrayPlace {
public:
    /// The part of the contents that is new.
    enum class Change {
        image,
        title,
        toolTip,
        menu,
    };

    TrayPlace() = default;
    TrayPlace(const TrayPlace&) = delete;
    TrayPlace& operator=(const TrayPlace&) = delete;
    virtual ~TrayPlace() = default;

    /// Whether there is a panel that would show an item. Does not wait: this is the state known by now.
    [[nodiscard]] virtual bool isOffered() const = 0;

    /// Shows an item, as soon as there is a panel and whenever there is one again, until it is hidden. `contents` must
    /// stay there as long.
    virtual void show(const TrayContents& contents) = 0;
    virtual void hide() = 0;

    /// Something of the contents shown has changed.
    virtual void update(Change change) = 0;

    /// Whether a panel shows the item.
    [[nodiscard]] virtual bool isShown() const = 0;

    /// Its frame, in points in the screen space; empty if it is unknown.
    [[nodiscard]] virtual std::optional<corvid::CGRect> frame() const = 0;

    /// `follower` is called whenever `isOffered` has changed.
    void onOfferChange(std::function<void()> follower) { offerFollower = std::move(follower); }

protected:
    void offerChanged() const {
        if (offerFollower) {
            offerFollower();
        }
    }

private:
    std::function<void()> offerFollower;
};

} // namespace platform::linux
