#include "Tessel/Menu/MenuViewItem.h"

#include "Tessel/Menu/MenuState.h"
#include "Tessel/MenuView.h"

#include <QQmlComponent>

namespace tessel {

std::unique_ptr<QQuickItem> makeItem(const platform::View& view, QQmlEngine& engine) {
    const auto* menu = dynamic_cast<const MenuView*>(&view);
    if (menu == nullptr) {
        return nullptr;
    }
    auto state = std::make_unique<MenuState>(menu->state());
    QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/qt/qml/Tessel/MenuView.qml")));
    std::unique_ptr<QObject> object(component.createWithInitialProperties(
        {{"appState", QVariant::fromValue(state.get())},
         {"tab", QString::fromUtf8(rawValue(menu->tab))}}));
    std::unique_ptr<QQuickItem> item(qobject_cast<QQuickItem*>(object.get()));
    if (!item) {
        qWarning("The interface cannot be made: %s", qPrintable(component.errorString()));
        return nullptr;
    }
    // NOLINTBEGIN(bugprone-unused-return-value): it is the same object.
    (void)object.release();
    state.release()->setParent(item.get());
    // NOLINTEND(bugprone-unused-return-value)
    return item;
}

} // namespace tessel
