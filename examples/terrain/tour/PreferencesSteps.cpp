#include "tour/PreferencesSteps.h"

#include "help/Bindings.h"
#include "preferences/AnimationPreferences.h"
#include "preferences/ColourButton.h"
#include "preferences/GeneralPreferences.h"
#include "preferences/PerformancePreferences.h"
#include "preferences/ViewerPreferences.h"
#include "tour/UserInput.h"
#include "views/TerrainView.h"
#include "windows/MainWindow.h"

#include <pkBaseQt/QPKHelpButton.h>
#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/gui/PreferencesDialog.h>

#include <QtCore/QObject>
#include <QtWidgets/QAction>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QTabWidget>

namespace terrain {

namespace {

typedef std::vector<TourCheck> Checks;

enum Page : int
{
    General,
    Viewer,
    Performance,
    Animation
};

const int s_pages = 4;
const QColor s_other_background(60, 70, 110);
const QPoint s_beside_the_raster(4, 4); ///< in a map that shows the whole raster

housekeeping::gui::PreferencesDialog& dialog(const TourStage& stage)
{
    return *stage.window.preferences();
}

QTabWidget& tabs(const TourStage& stage)
{
    return *dialog(stage).findChild<QTabWidget*>("m_tab");
}

void choose_page(const TourStage& stage, Page page)
{
    QTabBar& bar = *tabs(stage).tabBar();
    click(bar, bar.tabRect(page).center());
}

Checks shows_page(TourStage& stage, Page page, const QString& title)
{
    stage.own_window = stage.window.preferences();
    if (!stage.own_window) {
        return {{QObject::tr("there are preferences"), false}};
    }
    const QString shown = tabs(stage).tabText(tabs(stage).currentIndex()).remove('&');
    return {{QObject::tr("the preferences are shown"), stage.own_window->isVisible()},
        {QObject::tr("they have %1 pages, expected %2").arg(tabs(stage).count()).arg(s_pages),
            tabs(stage).count() == s_pages},
        {QObject::tr("the page is \"%1\", expected \"%2\"").arg(shown, title),
            tabs(stage).currentIndex() == page && shown == title},
        {QObject::tr("there is a help button"), dialog(stage).findChild<pkBase::QPKHelpButton*>() != nullptr},
        {QObject::tr("the page has something to set"),
            !tabs(stage).currentWidget()->findChildren<QAbstractButton*>().isEmpty()}};
}

void apply_background(TourStage& stage, const QColor& colour)
{
    choose_page(stage, Viewer);
    dialog(stage).findChild<ColourButton*>("background_color")->set_colour(colour);
    auto& apply = *dialog(stage).findChild<QPushButton*>("m_okButton");
    click(apply, apply.rect().center());
}

Checks background_is(const TourStage& stage, const QColor& expected)
{
    TerrainView& view = *stage.window.view();
    const QImage picture = view.grab().toImage();
    const QColor drawn = picture.pixelColor(s_beside_the_raster * picture.devicePixelRatio());
    const QColor set = housekeeping::ApplicationManager::const_instance().viewBackgroundColour();
    return {{QObject::tr("the background is %1, expected %2").arg(drawn.name(), expected.name()),
                drawn.rgb() == expected.rgb()},
        {QObject::tr("the preferences say %1").arg(set.name()), set.rgb() == expected.rgb()}};
}

} // namespace

void open_general_page(TourStage& stage)
{
    stage.window.action(Deed::Preferences).trigger();
    choose_page(stage, General);
}

std::vector<TourCheck> see_general_page(TourStage& stage)
{
    return shows_page(stage, General, GeneralPreferences::tr("General"));
}

void open_viewer_page(TourStage& stage)
{
    choose_page(stage, Viewer);
}

std::vector<TourCheck> see_viewer_page(TourStage& stage)
{
    return shows_page(stage, Viewer, ViewerPreferences::tr("Viewer"));
}

void open_performance_page(TourStage& stage)
{
    choose_page(stage, Performance);
}

std::vector<TourCheck> see_performance_page(TourStage& stage)
{
    return shows_page(stage, Performance, PerformancePreferences::tr("Performance"));
}

void open_animation_page(TourStage& stage)
{
    choose_page(stage, Animation);
}

std::vector<TourCheck> see_animation_page(TourStage& stage)
{
    return shows_page(stage, Animation, AnimationPreferences::tr("Animation"));
}

void change_background(TourStage& stage)
{
    stage.background = housekeeping::ApplicationManager::const_instance().viewBackgroundColour();
    stage.window.action(Deed::Fit).trigger();
    apply_background(stage, s_other_background);
}

std::vector<TourCheck> see_changed_background(TourStage& stage)
{
    Checks checks = background_is(stage, s_other_background);
    checks.push_back({QObject::tr("the preferences stay open"), dialog(stage).isVisible()});
    return checks;
}

void change_background_back(TourStage& stage)
{
    apply_background(stage, stage.background);
    dialog(stage).close();
}

std::vector<TourCheck> see_first_background(TourStage& stage)
{
    Checks checks = background_is(stage, stage.background);
    checks.push_back({QObject::tr("the preferences are closed"), !dialog(stage).isVisible()});
    return checks;
}

} // namespace terrain
