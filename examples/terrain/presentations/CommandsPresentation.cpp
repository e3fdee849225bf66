#include "presentations/CommandsPresentation.h"

#include "commands/ClampCommand.h"
#include "commands/CleanUpCommand.h"
#include "commands/CropCommand.h"
#include "commands/FillSinksCommand.h"
#include "commands/FlattenCommand.h"
#include "commands/ResampleCommand.h"
#include "commands/ScaleCommand.h"
#include "commands/SmoothCommand.h"
#include "commands/TriangulateCommand.h"
#include "documents/RasterSummary.h"
#include "documents/RoundStep.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "language/UnitText.h"
#include "windows/CropDialog.h"
#include "windows/Icons.h"
#include "windows/ParameterDialog.h"
#include "windows/ResampleDialog.h"

#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/gui/AbstractMainWindow.h>
#include <tarqa/housekeeping/gui/AbstractPresentationFactory.h>
#include <tarqa/housekeeping/gui/PresentationManager.h>

#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>
#include <QtWidgets/QStatusBar>

#include <boost/make_shared.hpp>

#include <algorithm>
#include <cmath>

namespace terrain {

namespace gui = housekeeping::gui;

const char* const CommandsPresentation::product_name = "CommandsPresentation";

namespace {

const int s_place_in_menu_bar = 3; ///< behind File, Edit and View
const int s_message_time = 6000; ///< milliseconds
const double s_largest = 1e9; ///< height or factor
const int s_largest_radius = 1000; ///< cells
const double s_tolerance_of_range = 0.01; ///< part of the range of the heights that is proposed
const double s_smallest_part = 1e-6; ///< of the range; means below it are as good as zero
const int s_least_decimals = 3; ///< of a tolerance and of a height
const int s_most_decimals = 12;

class CommandsPresentationFactory : public gui::AbstractPresentationFactory
{
public:
    CommandsPresentationFactory()
        : AbstractPresentationFactory(CommandsPresentation::product_name, false)
    { }
    boost::shared_ptr<gui::AbstractPresentation> create_product() override
    {
        return boost::make_shared<CommandsPresentation>();
    }
    gui::AbstractPresentation* create_unmanaged_product() override { return new CommandsPresentation; }
};

const CommandsPresentationFactory s_factory; // registers itself

/// How many decimals it takes to choose a height among those of a raster, and to tell this one.
int decimals_for(double height, const RasterSummary& summary)
{
    const double range = summary.maximum - summary.minimum;
    int decimals = s_least_decimals;
    if (std::isnormal(range)) {
        decimals = std::max(decimals, decimals_of(round_step(range * s_tolerance_of_range)) + 1);
    }
    if (std::isnormal(height) && std::abs(height) >= range * s_smallest_part) {
        decimals = std::max(decimals, decimals_of(std::abs(height)) + 2);
    }
    return std::min(decimals, s_most_decimals);
}

} // namespace

CommandsPresentation::CommandsPresentation() = default;

CommandsPresentation::~CommandsPresentation() = default;

CommandsPresentation& CommandsPresentation::instance()
{
    return dynamic_cast<CommandsPresentation&>(
        *gui::PresentationManager::instance().presentation(product_name));
}

// --- presentation

std::string CommandsPresentation::controller_name() const
{
    return CommandsController::product_name;
}

CommandsController* CommandsPresentation::controller() const
{
    return dynamic_cast<CommandsController*>(AbstractPresentation::controller());
}

void CommandsPresentation::init_presentation()
{
    m_menu = std::make_unique<QMenu>(tr("&Tools"));
    m_p_smooth = add_action(
        "smooth", tr("&Smooth…"), tr("Mean over the cells around each one"), &CommandsPresentation::smooth);
    m_p_fill_sinks = add_action("fill-sinks", tr("&Fill Sinks"),
        tr("Fill hollows up to where water would flow out of them"), &CommandsPresentation::fill_sinks);
    m_p_clamp
        = add_action("clamp", tr("&Clamp…"), tr("Bring heights into a range"), &CommandsPresentation::clamp);
    m_p_scale = add_action(
        "scale", tr("Sc&ale…"), tr("Multiply heights by a factor"), &CommandsPresentation::scale);
    m_p_crop = add_action(
        "crop", tr("Cro&p…"), tr("Keep some columns and rows only"), &CommandsPresentation::crop);
    m_p_resample = add_action("resample", tr("&Resample…"), tr("Make the cells larger or smaller"),
        &CommandsPresentation::resample);
    m_p_triangulate = add_action("triangulate", tr("&Triangulate…"),
        tr("Make a surface of triangles that follows the heights"), &CommandsPresentation::triangulate);
    m_p_clean_up = add_action("clean-up", tr("Clean &Up"),
        tr("Clamp to what occurs on the Earth, fill sinks, smooth"), &CommandsPresentation::clean_up);
}

void CommandsPresentation::build_presentation()
{
    gui::MainWindowMessage::subscribe(this, Qt::AutoConnection);
    connect(&controller()->runner(), &CommandRunner::finished, this, &CommandsPresentation::show_outcome);
    update_presentation();
}

void CommandsPresentation::update_presentation()
{
    for (QAction* const p_action : m_actions) {
        p_action->setEnabled(controller()->state() != nullptr);
    }
}

void CommandsPresentation::handle_message(housekeeping::gui::MainWindowMessage& message)
{
    using gui::MainWindowMessage;
    if (message.kind() == MainWindowMessage::MenuBar) {
        message.insertMenu(s_place_in_menu_bar, m_menu.get());
    } else if (message.kind() == MainWindowMessage::Menu && message.target() == m_menu.get()) {
        for (QAction* const p_action : m_actions) {
            if (p_action == m_p_crop || p_action == m_p_triangulate || p_action == m_p_clean_up) {
                message.addSeparator();
            }
            message.addAction(p_action);
        }
    }
}

QAction* CommandsPresentation::add_action(
    const char* icon_name, const QString& text, const QString& tip, void (CommandsPresentation::*slot)())
{
    auto* const p_action = new QAction(icon(icon_name), text, m_menu.get());
    p_action->setStatusTip(tip);
    connect(p_action, &QAction::triggered, this, slot);
    m_actions.push_back(p_action);
    return p_action;
}

// --- commands

void CommandsPresentation::smooth()
{
    if (!may_run()) {
        return;
    }
    ParameterDialog dialog(tr("Smooth"), Topic::Smooth,
        {{tr("&Radius:"), static_cast<double>(controller()->state()->radius), 1, s_largest_radius, 0,
            tr("cells")}},
        QApplication::activeWindow());
    if (is_accepted(dialog)) {
        const int radius = static_cast<int>(dialog.value(0));
        controller()->state()->radius = radius;
        run<SmoothCommand>(radius);
    }
}

void CommandsPresentation::fill_sinks()
{
    if (may_run()) {
        run<FillSinksCommand>();
    }
}

void CommandsPresentation::clamp()
{
    if (!may_run()) {
        return;
    }
    const std::pair<double, double> bounds = proposed_bounds();
    ParameterDialog dialog(tr("Clamp"), Topic::Clamp,
        {{tr("&Lowest height:"), bounds.first, -s_largest, s_largest, 3, QString()},
            {tr("&Highest height:"), bounds.second, -s_largest, s_largest, 3, QString()}},
        QApplication::activeWindow());
    if (is_accepted(dialog)) {
        controller()->state()->bounds = {dialog.value(0), dialog.value(1)};
        run<ClampCommand>(dialog.value(0), dialog.value(1));
    }
}

void CommandsPresentation::scale()
{
    if (!may_run()) {
        return;
    }
    ParameterDialog dialog(tr("Scale"), Topic::Scale,
        {{tr("&Factor:"), controller()->state()->factor, -s_largest, s_largest, 4, QString()}},
        QApplication::activeWindow());
    if (is_accepted(dialog)) {
        controller()->state()->factor = dialog.value(0);
        run<ScaleCommand>(dialog.value(0));
    }
}

void CommandsPresentation::crop()
{
    if (!may_run()) {
        return;
    }
    CropDialog dialog(current_raster(), QApplication::activeWindow());
    if (is_accepted(dialog)) {
        run<CropCommand>(dialog.range());
    }
}

void CommandsPresentation::resample()
{
    if (!may_run()) {
        return;
    }
    const CommandsController::State& last = *controller()->state();
    ResampleDialog dialog(current_raster(), last.cell_factor, last.resampling, QApplication::activeWindow());
    if (is_accepted(dialog)) {
        controller()->state()->cell_factor = dialog.factor();
        controller()->state()->resampling = dialog.method();
        run<ResampleCommand>(dialog.factor(), dialog.method());
    }
}

void CommandsPresentation::triangulate()
{
    if (!may_run()) {
        return;
    }
    const double proposed = proposed_tolerance();
    const int decimals = std::clamp(decimals_of(proposed) + 1, s_least_decimals, s_most_decimals);
    const auto& document = dynamic_cast<const TerrainDocument&>(
        housekeeping::DocumentManager::instance().document_from_id(controller()->state()->document_id()));
    ParameterDialog dialog(tr("Triangulate"), Topic::Triangulate,
        {{tr("&Tolerance:"), proposed, std::pow(10, -decimals), s_largest, decimals,
            height_unit_text(document.datasource())}},
        QApplication::activeWindow());
    if (is_accepted(dialog)) {
        controller()->state()->tolerance = dialog.value(0);
        run<TriangulateCommand>(dialog.value(0));
    }
}

bool CommandsPresentation::flatten(const std::vector<QPointF>& polygon)
{
    if (!may_run()) {
        return false;
    }
    const std::optional<double> mean = FlattenCommand::mean_inside(current_raster(), polygon);
    if (!mean) {
        say(tr("No cell with data lies in the polygon."));
        return false;
    }
    const RasterSummary summary(current_raster().cells);
    const double largest = std::max({s_largest, std::abs(summary.minimum), std::abs(summary.maximum)});
    const auto& document
        = housekeeping::DocumentManager::instance().document_from_id(controller()->state()->document_id());
    ParameterDialog dialog(tr("Flatten"), Topic::Flatten,
        {{tr("&Height:"), *mean, -largest, largest, decimals_for(*mean, summary),
            height_unit_text(document.datasource())}},
        QApplication::activeWindow());
    if (!is_accepted(dialog)) {
        return false;
    }
    run<FlattenCommand>(polygon, std::optional<double>(dialog.value(0)));
    return true;
}

void CommandsPresentation::clean_up()
{
    if (may_run()) {
        run<CleanUpCommand>();
    }
}

void CommandsPresentation::say(const QString& text)
{
    gui::AbstractMainWindow::instance()->statusBar()->showMessage(text, s_message_time);
}

QString CommandsPresentation::wait_text()
{
    return tr("A command is running. Wait until it has ended, or cancel it.");
}

/// Whether there is a document, and nothing is running; says so if something is.
bool CommandsPresentation::may_run() const
{
    if (housekeeping::DocumentManager::instance().documents_busy()) {
        say(wait_text());
        return false;
    }
    return controller()->state() != nullptr;
}

/// Shows a dialog. @return whether the command may run now: a dialog lets other things happen, and what was
/// chosen is for the document of before
bool CommandsPresentation::is_accepted(QDialog& dialog) const
{
    const housekeeping::DocumentId document = controller()->state()->document_id();
    return dialog.exec() == QDialog::Accepted && may_run()
        && controller()->state()->document_id() == document;
}

const Raster& CommandsPresentation::current_raster() const
{
    return TerrainModel::of(controller()->state()->document_id()).raster();
}

/// Those of the last time, else the range of the heights.
std::pair<double, double> CommandsPresentation::proposed_bounds() const
{
    const CommandsController::State& state = *controller()->state();
    if (state.bounds) {
        return *state.bounds;
    }
    const RasterSummary summary(current_raster().cells);
    return {summary.minimum, summary.maximum};
}

/// That of the last time, else a part of the range of the heights.
double CommandsPresentation::proposed_tolerance() const
{
    const CommandsController::State& state = *controller()->state();
    if (state.tolerance) {
        return *state.tolerance;
    }
    const RasterSummary summary(current_raster().cells);
    const double range = (summary.maximum - summary.minimum) * s_tolerance_of_range;
    return range > 0 && range <= s_largest ? round_step(range) : 1;
}

template <class Command, class... Arguments>
void CommandsPresentation::run(Arguments... arguments)
{
    const housekeeping::DocumentId document = controller()->state()->document_id();
    controller()->runner().start(boost::make_shared<Command>(document, arguments...));
}

void CommandsPresentation::show_outcome(
    CommandRunner::Outcome outcome, const QString& name, const QString& failure)
{
    switch (outcome) {
    case CommandRunner::Outcome::Done:
        say(tr("%1: done").arg(name));
        break;
    case CommandRunner::Outcome::Cancelled:
        say(tr("%1: cancelled").arg(name));
        break;
    case CommandRunner::Outcome::Failed:
        say(tr("%1: failed").arg(name));
        // The thread of the run could show no box.
        housekeeping::ErrorHandler::instance().message(
            name.toStdString(), failure.toStdString(), QMessageBox::Ok);
        break;
    }
}

} // namespace terrain
