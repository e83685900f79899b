#include "CorvidKit/Toolkit/ItemFile.h"

#include <QQmlComponent>

namespace corvid::toolkit {

std::unique_ptr<QQuickItem> itemFromFile(QQmlEngine& engine, const QUrl& file, const QVariantMap& properties) {
    QQmlComponent component(&engine, file);
    if (!component.isReady()) {
        qWarning("%s", qPrintable(component.errorString()));
        return nullptr;
    }
    QObject* made = component.createWithInitialProperties(properties);
    std::unique_ptr<QQuickItem> item(qobject_cast<QQuickItem*>(made));
    if (!item) {
        qWarning("%s", qPrintable(component.errorString()));
        delete made;
    }
    return item;
}

} // namespace corvid::toolkit
