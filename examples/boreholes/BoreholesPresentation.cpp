#include "BoreholesPresentation.h"

#include "BoreholeDialog.h"
#include "BoreholesMap.h"
#include "BoreholesPanel.h"
#include "MainWindow.h"

#include <tarqa/housekeeping/gui/AbstractPresentationFactory.h>

#include <QtWidgets/QAction>
#include <QtWidgets/QMenu>

#include <boost/make_shared.hpp>

namespace boreholes {

namespace gui = housekeeping::gui;

const char* const BoreholesPresentation::product_name = "BoreholesPresentation";

namespace {

const int s_place_in_menu_bar = 2; ///< behind File and Edit

class BoreholesPresentationFactory : public gui::AbstractPresentationFactory
{
public:
    BoreholesPresentationFactory()
        : AbstractPresentationFactory(BoreholesPresentation::product_name, false)
    { }
    boost::shared_ptr<gui::AbstractPresentation> create_product() override
    {
        return boost::make_shared<BoreholesPresentation>();
    }
    gui::AbstractPresentation* create_unmanaged_product() override { return new BoreholesPresentation; }
};

const BoreholesPresentationFactory s_factory; // registers itself

} // namespace

BoreholesPresentation::BoreholesPresentation() = default;

BoreholesPresentation::~BoreholesPresentation() = default;

std::string BoreholesPresentation::controller_name() const
{
    return BoreholesController::product_name;
}

BoreholesController* BoreholesPresentation::controller() const
{
    return dynamic_cast<BoreholesController*>(AbstractPresentation::controller());
}

/// Makes what is its own. Other presentations may not exist yet.
void BoreholesPresentation::init_presentation()
{
    m_p_map = new BoreholesMap(*controller());
    m_p_panel = new BoreholesPanel(*controller());
    m_menu = std::make_unique<QMenu>(tr("&Boreholes"));
    m_p_add = new QAction(tr("&Add Borehole…"), m_menu.get()); // the window puts it into the menu, by message
    m_p_add->setShortcut(Qt::CTRL + Qt::Key_B);
    m_p_delete = new QAction(tr("&Delete Borehole"), m_menu.get());
    m_p_delete->setShortcut(QKeySequence::Delete);

    connect(m_p_add, &QAction::triggered, this, [this] { ask_and_add(m_p_map->middle()); });
    connect(m_p_delete, &QAction::triggered, this, [this] { controller()->delete_selected(); });
    connect(m_p_map, &BoreholesMap::borehole_wanted, this, &BoreholesPresentation::ask_and_add);
}

/// Puts it into the window.
void BoreholesPresentation::build_presentation()
{
    gui::MainWindowMessage::subscribe(this, Qt::AutoConnection);
    dynamic_cast<MainWindow&>(*gui::AbstractMainWindow::instance()).take_in(m_p_map, m_p_panel);
    update_presentation();
}

/// Called when a change of the controller is finished: after commands, after their undo, for another
/// selection.
void BoreholesPresentation::update_presentation()
{
    m_p_add->setEnabled(controller()->document() != nullptr);
    m_p_delete->setEnabled(controller()->selected().has_value());
    if (m_p_map && m_p_panel) {
        m_p_map->update();
        m_p_panel->refresh();
    }
}

/// The window asks all who have entries for its menus and its tool bar.
void BoreholesPresentation::handle_message(housekeeping::gui::MainWindowMessage& message)
{
    using gui::MainWindowMessage;
    if (message.kind() == MainWindowMessage::MenuBar) {
        message.insertMenu(s_place_in_menu_bar, m_menu.get());
    } else if (message.kind() == MainWindowMessage::ToolBar
        || (message.kind() == MainWindowMessage::Menu && message.target() == m_menu.get())) {
        message.addAction(m_p_add);
        message.addAction(m_p_delete);
    }
}

void BoreholesPresentation::ask_and_add(const QPointF& place)
{
    if (const auto borehole = ask_for_borehole(*controller(), place, gui::AbstractMainWindow::instance())) {
        controller()->add(*borehole);
    }
}

} // namespace boreholes
