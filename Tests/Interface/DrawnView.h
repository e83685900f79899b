#pragma once

#include "Tessel/Menu/ApplicationList.h"
#include "Tests/Interface/ViewFixture.h"

#include <QImage>
#include <QRectF>
#include <array>
#include <memory>
#include <vector>

namespace tessel {

/// The interface as it is drawn, with as many pixels to the point as one likes, in the program's own typeface.
class DrawnView : public View {
protected:
    /// Common scales of displays.
    static constexpr std::array pixelsPerPoint{1.0, 1.25, 1.5, 2.0};

    static void SetUpTestSuite();
    static void TearDownTestSuite();

    /// The view goes before what it shows.
    void TearDown() override { item.reset(); }

    /// The chooser of applications in place of the view: more of them than fit, each with a rule.
    QQuickItem& makeChooser();

    /// Lets a view that is made after this remind of updates. The clock stays: advancing it runs all that is periodic.
    void makeReminderDue();

    /// Many rules, for more rows than fit.
    void giveManyRules();

    /// All of the view that was made, with its menus and tips, on the ground of its scheme.
    QImage draw(double scale);

    /// The list of an open menu.
    QQuickItem& openMenu();

    void setDark(bool isDark) { corvid::Environment::of(engine).setDark(isDark); }

    /// Where each of these items, with all that is in it, leaves ink on the picture, in points and parts of them: where
    /// the first pixel is half covered, the ink begins half a pixel further in. Empty where it leaves none. The items
    /// lie apart.
    std::vector<QRectF> inkOf(const std::vector<QQuickItem*>& parts, double scale);

    /// The middles of what these items leave.
    std::vector<QPointF> middlesOf(const std::vector<QQuickItem*>& parts, double scale);

    /// The items of that type below this one that are to be seen.
    static std::vector<QQuickItem*> shownOf(const QQuickItem& root, const std::string& type);

    std::unique_ptr<ApplicationList> applications;
};

} // namespace tessel
