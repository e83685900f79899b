#pragma once

#include "Tessel/InstalledApplications.h"

#include <QtQml/qqmlregistration.h>

#include <QAbstractListModel>
#include <QStringList>
#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace tessel {

/// The installed applications for a list to choose from: those that the search text finds, each with the action of its
/// rule and whether it is chosen. What is chosen stays so while the text changes.
class ApplicationList final : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by whoever makes the view")
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(int chosenCount READ chosenCount NOTIFY chosenCountChanged)

public:
    enum Role { nameRole = Qt::UserRole, iconRole, chosenRole, ruleRole };

    explicit ApplicationList(std::vector<InstalledApplication> applications, QObject* parent = nullptr);

    [[nodiscard]] QString searchText() const { return text; }

    void setSearchText(const QString& newText);

    [[nodiscard]] int count() const { return static_cast<int>(found.size()); }

    [[nodiscard]] int chosenCount() const { return static_cast<int>(chosen.size()); }

    /// Chooses one that was not chosen, and the other way round. A row that is not there is ignored.
    Q_INVOKABLE void toggle(int row);

    /// Chooses it, whether or not it was.
    Q_INVOKABLE void choose(int row);

    /// Where the chosen ones are described, in the order of their names.
    [[nodiscard]] std::vector<std::filesystem::path> chosenLocations() const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void searchTextChanged();
    void countChanged();
    void chosenCountChanged();

private:
    [[nodiscard]] const InstalledApplication* at(int row) const;

    std::vector<InstalledApplication> all;
    ApplicationSearch search;
    /// Their places among all.
    std::vector<std::size_t> found;
    std::set<std::string> chosen;
    QString text;
};

} // namespace tessel
