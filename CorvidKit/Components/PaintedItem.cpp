#include "CorvidKit/Components/PaintedItem.h"

namespace corvid {

QSGNode* PaintedItem::updatePaintNode(QSGNode* present, UpdatePaintNodeData* data) {
    isOutdated = !isVisible();
    return isOutdated ? present : QQuickPaintedItem::updatePaintNode(present, data);
}

void PaintedItem::itemChange(ItemChange change, const ItemChangeData& value) {
    QQuickPaintedItem::itemChange(change, value);
    if (change == ItemVisibleHasChanged && value.boolValue && isOutdated) {
        update();
    }
}

} // namespace corvid
