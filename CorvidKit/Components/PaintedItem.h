#pragma once

#include <QtQml/qqmlregistration.h>

#include <QQuickPaintedItem>

namespace corvid {

/// An item that is painted once somebody can see it. Qt Quick paints what is hidden as well, and of a window that opens
/// for the first time more is hidden than shown.
class PaintedItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_ANONYMOUS

public:
    using QQuickPaintedItem::QQuickPaintedItem;

protected:
    QSGNode* updatePaintNode(QSGNode* present, UpdatePaintNodeData* data) override;
    void itemChange(ItemChange change, const ItemChangeData& value) override;

private:
    /// Whether it has changed since it was painted.
    bool isOutdated = false;
};

} // namespace corvid
