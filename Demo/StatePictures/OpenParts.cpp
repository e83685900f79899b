#include "Demo/StatePictures/OpenParts.h"

#include "CorvidKit/Toolkit/ItemFile.h"
#include "Tessel/Menu/ApplicationList.h"

#include <QCoreApplication>
#include <QQuickWindow>
#include <algorithm>
#include <string>

namespace tessel {

namespace {

/// The first item of that type below this one; null where there is none.
QQuickItem* firstOfType(const QQuickItem& root, const std::string& type) {
    for (QQuickItem* child : root.childItems()) {
        if (std::string(child->metaObject()->className()).starts_with(type + "_QML")) {
            return child;
        }
        if (QQuickItem* deeper = firstOfType(*child, type)) {
            return deeper;
        }
    }
    return nullptr;
}

void openMenu(QQuickItem& view, const char* opener, int line) {
    QQuickItem* button = firstOfType(view, opener);
    if (button == nullptr) {
        return;
    }
    QMetaObject::invokeMethod(button, "pressed");
    // A menu is drawn above the whole window.
    for (QQuickItem* above : view.window()->contentItem()->childItems()) {
        QQuickItem* list = firstOfType(*above, "MenuList");
        if (above->isVisible() && list != nullptr) {
            list->setProperty("currentIndex", line);
        }
    }
}

/// The first one below that row; the rows that are not marked have none.
bool showTip(const QQuickItem& row) {
    const QQuickItem* tip = firstOfType(row, "ToolTip");
    if (tip == nullptr || !tip->parentItem()->isVisible()) {
        return false;
    }
    for (QObject* part : tip->children()) {
        // The bubble is made when it is shown.
        if (part->inherits("QQuickLoader")) {
            part->setProperty("active", true);
        }
    }
    return true;
}

/// Of the first row of that type that shows one.
bool showTipOf(const QQuickItem& root, const std::string& type) {
    return std::ranges::any_of(root.childItems(), [&](const QQuickItem* child) {
        const bool isRow = std::string(child->metaObject()->className()).starts_with(type + "_QML");
        return isRow ? showTip(*child) : showTipOf(*child, type);
    });
}

void open(QQuickItem& view, OpenPart part) {
    switch (part) {
    case OpenPart::ruleMenu:
        openMenu(view, "MenuPicker", 0);
        break;
    case OpenPart::addMenu:
        openMenu(view, "AddAppMenu", -1);
        break;
    case OpenPart::shortcutTip:
        showTipOf(view, "ShortcutRow");
        break;
    case OpenPart::switchTip:
        showTipOf(view, "MenuHeader");
        break;
    case OpenPart::chooser:
    case OpenPart::chooserWithSearch:
        if (QQuickItem* row = firstOfType(view, "ApplicationRow")) {
            row->setProperty("hasKeyboard", true);
        }
        break;
    case OpenPart::chooserWithoutMatch:
    case OpenPart::nothing:
        break;
    }
}

} // namespace

void openLater(QQuickItem& view, OpenPart part) {
    QObject::connect(&view, &QQuickItem::windowChanged, &view, [&view, part](QQuickWindow* window) {
        if (window == nullptr) {
            return;
        }
        QObject::connect(window->contentItem(), &QQuickItem::heightChanged, &view, [&view, part] {
            QMetaObject::invokeMethod(&view, [&view, part] { open(view, part); }, Qt::QueuedConnection);
        });
    });
}

std::unique_ptr<QQuickItem> makeChooser(QQmlEngine& engine, OpenPart part) {
    auto list = std::make_unique<ApplicationList>(installedApplications());
    if (part != OpenPart::chooserWithoutMatch) {
        for (const int row : {2, 4}) {
            list->choose(row);
        }
    }
    std::unique_ptr<QQuickItem> item =
        corvid::toolkit::itemFromFile(engine, QUrl(QStringLiteral("qrc:/qt/qml/Tessel/ApplicationChooser.qml")),
                                      {{"applications", QVariant::fromValue(list.get())},
                                       {"takesSeveral", true},
                                       {"prompt", QCoreApplication::translate("Tessel", "Add")}});
    if (!item) {
        return nullptr;
    }
    const QString searched = part == OpenPart::chooserWithSearch     ? QStringLiteral("ca")
                             : part == OpenPart::chooserWithoutMatch ? QStringLiteral("qqq")
                                                                     : QString();
    list->setSearchText(searched);
    if (QQuickItem* field = firstOfType(*item, "SearchField")) {
        field->setProperty("text", searched);
    }
    list.release()->setParent(item.get());
    constexpr QSizeF usual(400, 474);
    item->setImplicitWidth(usual.width());
    item->setImplicitHeight(usual.height());
    openLater(*item, part);
    return item;
}

} // namespace tessel
