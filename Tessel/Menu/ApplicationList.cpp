#include "Tessel/Menu/ApplicationList.h"

#include "Tessel/Menu/ImageSource.h"

#include <QCoreApplication>
#include <cstddef>
#include <utility>

namespace tessel {

ApplicationList::ApplicationList(std::vector<InstalledApplication> applications, QObject* parent)
    : QAbstractListModel(parent)
    , all(std::move(applications))
    , search(all)
    , found(search.find({})) {
}

void ApplicationList::setSearchText(const QString& newText) {
    if (text == newText) {
        return;
    }
    text = newText;
    beginResetModel();
    found = search.find(text.toStdString());
    endResetModel();
    Q_EMIT searchTextChanged();
    Q_EMIT countChanged();
}

const InstalledApplication* ApplicationList::at(int row) const {
    return row < 0 || row >= count() ? nullptr : &all[found[static_cast<std::size_t>(row)]];
}

void ApplicationList::toggle(int row) {
    const InstalledApplication* application = at(row);
    if (application == nullptr) {
        return;
    }
    if (!chosen.insert(application->id()).second) {
        chosen.erase(application->id());
    }
    Q_EMIT dataChanged(index(row), index(row), {chosenRole});
    Q_EMIT chosenCountChanged();
}

void ApplicationList::choose(int row) {
    const InstalledApplication* application = at(row);
    if (application != nullptr && !chosen.contains(application->id())) {
        toggle(row);
    }
}

std::vector<std::filesystem::path> ApplicationList::chosenLocations() const {
    std::vector<std::filesystem::path> locations;
    for (const InstalledApplication& application : all) {
        if (chosen.contains(application.id())) {
            locations.push_back(application.location);
        }
    }
    return locations;
}

int ApplicationList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant ApplicationList::data(const QModelIndex& index, int role) const {
    const InstalledApplication* application = index.isValid() ? at(index.row()) : nullptr;
    if (application == nullptr) {
        return {};
    }
    switch (role) {
    case nameRole:
        return QString::fromStdString(application->name);
    case iconRole:
        return imageSource(application->icon);
    case chosenRole:
        return chosen.contains(application->id());
    case ruleRole:
        return application->ruleAction
                   ? QCoreApplication::translate("Tessel", std::string(application->ruleAction->title()).c_str())
                   : QString();
    default:
        return {};
    }
}

QHash<int, QByteArray> ApplicationList::roleNames() const {
    return {{nameRole, "name"}, {iconRole, "icon"}, {chosenRole, "isChosen"}, {ruleRole, "rule"}};
}

} // namespace tessel
