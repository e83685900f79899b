#pragma once

#include "CorvidKit/Components/Environment.h"
#include "CorvidKit/HotKeys.h"
#include "Platform/Simulated/Desktop.h"
#include "Tessel/AppState.h"
#include "Tessel/Menu/MenuViewItem.h"
#include "Tessel/MenuView.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickRenderControl>
#include <QQuickWindow>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace tessel {

/// All items below this one with that type name, in drawing order.
inline std::vector<QQuickItem*> itemsOfType(const QQuickItem& root, const std::string& type) {
    std::vector<QQuickItem*> found;
    for (QQuickItem* child : root.childItems()) {
        if (std::string(child->metaObject()->className()).starts_with(type + "_QML")) {
            found.push_back(child);
        }
        const std::vector<QQuickItem*> deeper = itemsOfType(*child, type);
        found.insert(found.end(), deeper.begin(), deeper.end());
    }
    return found;
}

/// The interface over a simulated desktop.
class View : public testing::Test {
protected:
    void SetUp() override { engine.addImportPath(QStringLiteral("qrc:/qt/qml")); }

    QQuickItem& make(MenuTab tab = MenuTab::shortcuts) {
        state.emplace(desktop.standardUserDefaults, false, dispatcher);
        view.emplace(*state, tab);
        item = makeItem(*view, engine);
        if (item == nullptr) {
            throw std::runtime_error("the view cannot be made");
        }
        item->setParentItem(window.contentItem());
        item->setSize({item->implicitWidth(), item->implicitHeight()});
        settle();
        return *item;
    }

    /// Runs pending calls and layouts.
    void settle() {
        desktop.mainActor.run();
        for (int turn = 0; turn < 3; ++turn) {
            QCoreApplication::sendPostedEvents();
            control.polishItems();
        }
    }

    QQuickItem& only(const std::string& type) {
        const std::vector<QQuickItem*> found = itemsOfType(*item, type);
        if (found.size() != 1) {
            throw std::runtime_error(std::to_string(found.size()) + " of " + type);
        }
        return *found.front();
    }

    /// The two cards for missing requirements, in their order.
    QQuickItem& permissionCard() { return *itemsOfType(*item, "WarningCard").at(0); }
    QQuickItem& borrowingCard() { return *itemsOfType(*item, "WarningCard").at(1); }

    QRectF placeOf(QQuickItem& part) { return part.mapRectToItem(item.get(), part.boundingRect()); }

    static void press(QQuickItem& button) { QMetaObject::invokeMethod(&button, "pressed"); }

    platform::simulated::Desktop desktop;
    corvid::HotKeyDispatcher dispatcher;
    QQuickRenderControl control;
    QQuickWindow window{&control};
    QQmlEngine engine;
    std::optional<AppState> state;
    std::optional<MenuView> view;
    std::unique_ptr<QQuickItem> item;
};

} // namespace tessel
