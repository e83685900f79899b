#include "Tests/Interface/DrawnView.h"

#include "CorvidKit/AppInfo.h"
#include "CorvidKit/Components/KeyFontFamily.h"
#include "CorvidKit/Toolkit/Fonts.h"
#include "CorvidKit/Toolkit/ItemFile.h"
#include "CorvidKitCore/UpdateReminder.h"
#include "Tessel/Prefs.h"

#include <QQuickRenderTarget>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace tessel {

namespace {

/// How much of a pixel's colour an item makes, from 0 to 1, for each column or row of a picture: the most in it.
struct Coverage {
    std::vector<double> columns;
    std::vector<double> rows;
};

int distanceOf(QRgb one, QRgb other) {
    return std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                     std::abs(qBlue(one) - qBlue(other))});
}

Coverage coverageOf(const QImage& with, const QImage& without) {
    Coverage covered{.columns = std::vector<double>(static_cast<std::size_t>(with.width())),
                     .rows = std::vector<double>(static_cast<std::size_t>(with.height()))};
    double most = 0;
    for (int y = 0; y < with.height(); ++y) {
        for (int x = 0; x < with.width(); ++x) {
            const double distance = distanceOf(with.pixel(x, y), without.pixel(x, y));
            double& column = covered.columns[static_cast<std::size_t>(x)];
            double& row = covered.rows[static_cast<std::size_t>(y)];
            column = std::max(column, distance);
            row = std::max(row, distance);
            most = std::max(most, distance);
        }
    }
    for (std::vector<double>* line : {&covered.columns, &covered.rows}) {
        for (double& value : *line) {
            value = most == 0 ? 0 : value / most;
        }
    }
    return covered;
}

/// The place of the first ink from the front, in pixels.
template <typename Iterator>
double edgeOf(Iterator begin, Iterator end) {
    constexpr double faintest = 0.08;
    const Iterator first = std::find_if(begin, end, [](double value) { return value > faintest; });
    return static_cast<double>(first - begin) + (first == end ? 0 : 1 - *first);
}

} // namespace

void DrawnView::SetUpTestSuite() {
    corvid::toolkit::loadFonts();
    corvid::Environment::setFontFamily(corvid::keyFontFamily);
}

void DrawnView::TearDownTestSuite() {
    corvid::Environment::setFontFamily({});
}

QQuickItem& DrawnView::makeChooser() {
    item.reset();
    std::vector<InstalledApplication> installed;
    for (int number = 10; number < 50; ++number) {
        const std::string name = std::to_string(number);
        installed.push_back({.bundleID = "org.example.Application" + name,
                             .name = "Application " + name,
                             .location = "/applications/" + name,
                             .icon = platform::Image(
                                 {.source = platform::ThemeIcon{}, .size = {20, 20}, .accessibilityDescription = {}}),
                             .searchTerms = {},
                             .ruleAction = WindowAction::maximize});
    }
    applications = std::make_unique<ApplicationList>(std::move(installed));
    item = corvid::toolkit::itemFromFile(engine, QUrl(QStringLiteral("qrc:/qt/qml/Tessel/ApplicationChooser.qml")),
                                         {{"applications", QVariant::fromValue(applications.get())},
                                          {"takesSeveral", true},
                                          {"prompt", QStringLiteral("Add")}});
    if (item == nullptr) {
        throw std::runtime_error("the chooser cannot be made");
    }
    item->setParentItem(window.contentItem());
    item->setSize({400, 474});
    window.contentItem()->setSize(item->size());
    settle();
    draw(1);
    return *item;
}

void DrawnView::makeReminderDue() {
    corvid::UpdateReminder(desktop.standardUserDefaults, corvid::AppInfo::version(), corvid::Date())
        .restart(corvid::Date());
}

void DrawnView::giveManyRules() {
    Prefs::Rules rules;
    for (int number = 0; number < 40; ++number) {
        rules.emplace("org.example.Application" + std::to_string(number), WindowAction::maximize);
    }
    state->setRules(rules);
    settle();
    draw(1);
}

QQuickItem& DrawnView::openMenu() {
    const std::vector<QQuickItem*> lists = shownOf(*window.contentItem(), "MenuList");
    if (lists.size() != 1) {
        throw std::runtime_error(std::to_string(lists.size()) + " open menus");
    }
    return *lists.front();
}

QImage DrawnView::draw(double scale) {
    const QSizeF wanted(item->implicitWidth(), item->implicitHeight());
    const QSizeF size = wanted.isEmpty() ? item->size() : wanted;
    item->setSize(size);
    window.contentItem()->setSize(size);
    // A renderer draws what has changed since its last picture. Each has to draw all of this one.
    QQuickRenderControl renderer;
    QQuickWindow ground(&renderer);
    ground.setColor(corvid::Environment::of(engine).isDark() ? QColor(0x29, 0x29, 0x29) : QColor(0xed, 0xed, 0xed));
    ground.setGeometry(QRect({0, 0}, size.toSize()));
    ground.contentItem()->setSize(size);
    item->setParentItem(ground.contentItem());
    for (int turn = 0; turn < 3; ++turn) {
        QCoreApplication::sendPostedEvents();
        renderer.polishItems();
    }
    QImage picture((size * scale).toSize(), QImage::Format_RGB32);
    picture.setDevicePixelRatio(scale);
    QQuickRenderTarget target = QQuickRenderTarget::fromPaintDevice(&picture);
    target.setDevicePixelRatio(scale);
    ground.setRenderTarget(target);
    renderer.beginFrame();
    renderer.sync();
    renderer.render();
    renderer.endFrame();
    item->setParentItem(window.contentItem());
    picture.setDevicePixelRatio(1);
    return picture;
}

std::vector<QRectF> DrawnView::inkOf(const std::vector<QQuickItem*>& parts, double scale) {
    const QImage with = draw(scale);
    for (QQuickItem* part : parts) {
        part->setOpacity(0);
    }
    const QImage without = draw(scale);
    std::vector<QRectF> inks;
    for (QQuickItem* part : parts) {
        part->setOpacity(1);
        constexpr double beyond = 1.5;
        const QRectF around = placeOf(*part).adjusted(-beyond, -beyond, beyond, beyond);
        const QRect pixels = QRectF(around.topLeft() * scale, around.size() * scale).toAlignedRect() & with.rect();
        const auto [columns, rows] = coverageOf(with.copy(pixels), without.copy(pixels));
        const QPointF begin(edgeOf(columns.begin(), columns.end()), edgeOf(rows.begin(), rows.end()));
        const QPointF end(edgeOf(columns.rbegin(), columns.rend()), edgeOf(rows.rbegin(), rows.rend()));
        const QRectF ink(begin + pixels.topLeft(), QPointF(pixels.right() + 1, pixels.bottom() + 1) - end);
        inks.push_back(ink.isValid() ? QRectF(ink.topLeft() / scale, ink.size() / scale) : QRectF());
    }
    return inks;
}

std::vector<QPointF> DrawnView::middlesOf(const std::vector<QQuickItem*>& parts, double scale) {
    std::vector<QPointF> middles;
    for (const QRectF& ink : inkOf(parts, scale)) {
        EXPECT_TRUE(ink.isValid()) << parts[middles.size()]->metaObject()->className() << " is not to be seen";
        middles.push_back(ink.center());
    }
    return middles;
}

std::vector<QQuickItem*> DrawnView::shownOf(const QQuickItem& root, const std::string& type) {
    std::vector<QQuickItem*> found = itemsOfType(root, type);
    std::erase_if(
        found, [](const QQuickItem* part) { return !part->isVisible() || part->width() == 0 || part->height() == 0; });
    return found;
}

} // namespace tessel
