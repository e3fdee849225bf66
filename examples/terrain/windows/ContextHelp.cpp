#include "windows/ContextHelp.h"

#include "help/Bindings.h"
#include "help/HelpTopics.h"
#include "panels/HistoryPanel.h"
#include "panels/HomePanel.h"
#include "panels/LayersPanel.h"
#include "panels/QuickHelpPanel.h"
#include "panels/StatisticsPanel.h"
#include "scene/SceneView.h"
#include "views/TerrainView.h"
#include "windows/BrushBar.h"

#include <tarqa/housekeeping/gui/HelpManager.h>
#include <tarqa/housekeeping/gui/PreferencesDialog.h>

#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenuBar>

#include <algorithm>

namespace terrain {

namespace {

namespace gui = housekeeping::gui;

/// A kind of widget, and the page about it.
struct Place
{
    const QMetaObject& kind;
    Topic topic;
};

const Place s_places[] = {
    {TerrainView::staticMetaObject, Topic::Map},
    {SceneView::staticMetaObject, Topic::Scene},
    {HomePanel::staticMetaObject, Topic::HomePanel},
    {QuickHelpPanel::staticMetaObject, Topic::QuickHelpPanel},
    {HistoryPanel::staticMetaObject, Topic::HistoryPanel},
    {StatisticsPanel::staticMetaObject, Topic::StatisticsPanel},
    {LayersPanel::staticMetaObject, Topic::LayersPanel},
    {BrushBar::staticMetaObject, Topic::Brush},
    {gui::PreferencesDialog::staticMetaObject, Topic::Preferences},
};

/// The key of the page about a widget, or about what holds it; empty if there is none.
QString key_of(const QWidget* p_widget)
{
    for (; p_widget; p_widget = p_widget->parentWidget()) {
        for (const Place& place : s_places) {
            if (place.kind.cast(p_widget)) {
                return help_key(place.topic);
            }
        }
    }
    return QString();
}

/// Whether a widget has the keyboard only while the user chooses something in it.
bool is_menu(const QWidget* p_widget)
{
    return qobject_cast<const QMenuBar*>(p_widget)
        || (p_widget && p_widget->window()->windowType() == Qt::Popup);
}

} // namespace

ContextHelp::ContextHelp(QObject* p_parent)
    : QObject(p_parent)
{
    connect(qApp, &QApplication::focusChanged, this, &ContextHelp::follow);
    follow(nullptr, QApplication::focusWidget());
}

void ContextHelp::follow(QWidget*, QWidget* p_now)
{
    if (!is_menu(p_now)) { // "Contents" is chosen in one, and is about what had the keyboard before
        gui::HelpManager::instance().setCurrPath(key_of(p_now)); // empty for the table of contents
    }
}

QList<QAction*> ContextHelp::key_actions(const QWidget& window)
{
    QList<QAction*> actions;
    for (QAction* const p_action : window.findChildren<QAction*>(QString(), Qt::FindDirectChildrenOnly)) {
        const auto is_key_of
            = [p_action](const HelpBinding& binding) { return binding.keys == p_action->shortcut(); };
        if (std::any_of(help_bindings().begin(), help_bindings().end(), is_key_of)) {
            actions.append(p_action);
        }
    }
    return actions;
}

} // namespace terrain
