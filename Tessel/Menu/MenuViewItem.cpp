#include "Tessel/Menu/MenuViewItem.h"

#include "CorvidKit/Toolkit/ItemFile.h"
#include "Tessel/Menu/MenuState.h"
#include "Tessel/MenuView.h"

namespace tessel {

std::unique_ptr<QQuickItem> makeItem(const platform::View& view, QQmlEngine& engine, platform::OpenPanel* panel) {
    const auto* menu = dynamic_cast<const MenuView*>(&view);
    if (menu == nullptr) {
        return nullptr;
    }
    auto state = std::make_unique<MenuState>(menu->state(), panel);
    std::unique_ptr<QQuickItem> item = corvid::toolkit::itemFromFile(
        engine, QUrl(QStringLiteral("qrc:/qt/qml/Tessel/MenuView.qml")),
        {{"appState", QVariant::fromValue(state.get())}, {"tab", QString::fromUtf8(rawValue(menu->tab))}});
    if (item) {
        state.release()->setParent(item.get());
    }
    return item;
}

} // namespace tessel
