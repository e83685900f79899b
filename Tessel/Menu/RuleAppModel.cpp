#include "Tessel/Menu/RuleAppModel.h"

#include "Tessel/Menu/ImageSource.h"

#include <algorithm>
#include <cstddef>

namespace tessel {

void RuleAppModel::show(const std::vector<RuleApp>& newRows) {
    removeThoseNotIn(newRows);
    for (std::size_t place = 0; place < newRows.size(); ++place) {
        const RuleApp& wanted = newRows[place];
        const auto found = std::ranges::find(rows, wanted.id(), &RuleApp::id);
        const auto here = rows.begin() + static_cast<std::ptrdiff_t>(place);
        const int row = static_cast<int>(place);
        if (found == rows.end()) {
            beginInsertRows({}, row, row);
            rows.insert(here, wanted);
            endInsertRows();
        } else if (found != here) {
            const int from = static_cast<int>(found - rows.begin());
            beginMoveRows({}, from, from, {}, row);
            std::rotate(here, found, found + 1);
            endMoveRows();
        }
        if (rows[place] != wanted) {
            rows[place] = wanted;
            Q_EMIT dataChanged(index(row), index(row));
        }
    }
}

void RuleAppModel::removeThoseNotIn(const std::vector<RuleApp>& newRows) {
    for (int row = rowCount() - 1; row >= 0; --row) {
        const auto place = rows.begin() + row;
        if (std::ranges::find(newRows, place->id(), &RuleApp::id) == newRows.end()) {
            beginRemoveRows({}, row, row);
            rows.erase(place);
            endRemoveRows();
        }
    }
}

int RuleAppModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows.size());
}

QVariant RuleAppModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const RuleApp& row = rows[static_cast<std::size_t>(index.row())];
    switch (role) {
    case bundleIDRole:
        return QString::fromStdString(row.bundleID);
    case nameRole:
        return QString::fromStdString(row.name);
    case iconRole:
        return row.icon ? imageSource(*row.icon) : QString();
    case actionRole:
        return QString::fromUtf8(row.action.rawValue());
    default:
        return {};
    }
}

QHash<int, QByteArray> RuleAppModel::roleNames() const {
    return {{bundleIDRole, "bundleID"}, {nameRole, "name"}, {iconRole, "icon"}, {actionRole, "actionID"}};
}

} // namespace tessel
