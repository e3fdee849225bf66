#pragma once

#include "commands/CommandsController.h"

#include <tarqa/housekeeping/DocumentId.h>
#include <tarqa/housekeeping/gui/AbstractPresentation.h>
#include <tarqa/housekeeping/gui/MainWindowMessage.h>

#include <QtCore/QObject>
#include <QtCore/QPointF>

#include <memory>
#include <utility>
#include <vector>

class QAction;
class QDialog;
class QMenu;

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

struct Raster;

/**
 * The Tools menu: asks for the parameters of a command, has it run, and says how it ended. The face of the
 * CommandsController. Registered as "CommandsPresentation". Main thread.
 */
class CommandsPresentation : public QObject, public housekeeping::gui::AbstractPresentation
{
    Q_OBJECT

public:
    static const char* const product_name;

    CommandsPresentation();
    ~CommandsPresentation() override;

    /// The presentation manager's.
    static CommandsPresentation& instance();

    // The entries of the menu; null before init().
    QAction* smooth_action() const { return m_p_smooth; }
    QAction* fill_sinks_action() const { return m_p_fill_sinks; }
    QAction* clamp_action() const { return m_p_clamp; }
    QAction* scale_action() const { return m_p_scale; }
    QAction* crop_action() const { return m_p_crop; }
    QAction* resample_action() const { return m_p_resample; }
    QAction* triangulate_action() const { return m_p_triangulate; }
    QAction* clean_up_action() const { return m_p_clean_up; }

    /// The Tools menu; null before init().
    QMenu* menu() const { return m_menu.get(); }
    /// Shows a message in the status bar for a while.
    static void say(const QString& text);
    /// Why nothing can be begun while a command is running.
    static QString wait_text();

    /// Asks for the height of the cells in a polygon of the current document, and has it run.
    /// @param polygon in columns and rows as the raster stores them; it has an inside
    /// @return whether it runs
    bool flatten(const std::vector<QPointF>& polygon);

public slots:
    void handle_message(housekeeping::gui::MainWindowMessage& message);

private:
    void init_presentation() override;
    void build_presentation() override;
    void update_presentation() override;
    std::string controller_name() const override;
    CommandsController* controller() const override;

    QAction* add_action(
        const char* icon_name, const QString& text, const QString& tip, void (CommandsPresentation::*slot)());

    void smooth();
    void fill_sinks();
    void clamp();
    void scale();
    void crop();
    void resample();
    void triangulate();
    void clean_up();

    bool may_run() const;
    bool is_accepted(QDialog& dialog) const;
    const Raster& current_raster() const;
    std::pair<double, double> proposed_bounds() const;
    double proposed_tolerance() const;
    template <class Command, class... Arguments>
    void run(Arguments... arguments);
    void show_outcome(CommandRunner::Outcome outcome, const QString& name, const QString& failure);

    std::unique_ptr<QMenu> m_menu; // null before init()
    std::vector<QAction*> m_actions; // children of the menu, as all of the following
    QAction* m_p_smooth = nullptr;
    QAction* m_p_fill_sinks = nullptr;
    QAction* m_p_clamp = nullptr;
    QAction* m_p_scale = nullptr;
    QAction* m_p_crop = nullptr;
    QAction* m_p_resample = nullptr;
    QAction* m_p_triangulate = nullptr;
    QAction* m_p_clean_up = nullptr;
};

} // namespace terrain
