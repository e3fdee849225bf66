#pragma once

#include "BoreholesController.h"

#include <tarqa/housekeeping/gui/AbstractPresentation.h>
#include <tarqa/housekeeping/gui/MainWindowMessage.h>

#include <QtCore/QObject>
#include <QtCore/QPointF>
#include <QtCore/QPointer>

#include <memory>

class QAction;
class QMenu;

namespace boreholes {

class BoreholesMap;
class BoreholesPanel;

/**
 * The face of the BoreholesController in the window: the map, the table and the menu "Boreholes". It
 * refreshes them whenever the controller has something new.
 *
 * The presentation manager makes, owns and destroys it; its factory is in the source file. Main thread.
 */
class BoreholesPresentation : public QObject, public housekeeping::gui::AbstractPresentation
{
    Q_OBJECT

public:
    static const char* const product_name;

    BoreholesPresentation();
    /// Deletes the menu.
    ~BoreholesPresentation() override;

    /// Null when the window is gone.
    BoreholesPanel* panel() const { return m_p_panel; }

private slots:
    void handle_message(housekeeping::gui::MainWindowMessage& message);

private:
    void init_presentation() override;
    void build_presentation() override;
    void update_presentation() override;
    std::string controller_name() const override;
    BoreholesController* controller() const override;

    void ask_and_add(const QPointF& place);

    std::unique_ptr<QMenu> m_menu;
    QAction* m_p_add = nullptr; // children of the menu
    QAction* m_p_delete = nullptr;
    // The main window's, which goes first.
    QPointer<BoreholesMap> m_p_map;
    QPointer<BoreholesPanel> m_p_panel;
};

} // namespace boreholes
