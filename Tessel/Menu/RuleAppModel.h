#pragma once

#include "Tessel/RuleApp.h"

#include <QAbstractListModel>
#include <vector>

namespace tessel {

/// The rows of the rules for a list view, which keeps its position while rows come, go and change.
class RuleAppModel final : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role { bundleIDRole = Qt::UserRole, nameRole, iconRole, actionRole };

    using QAbstractListModel::QAbstractListModel;

    /// Shows these rows from now on.
    void show(const std::vector<RuleApp>& newRows);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    void removeThoseNotIn(const std::vector<RuleApp>& newRows);

    std::vector<RuleApp> rows;
};

} // namespace tessel
