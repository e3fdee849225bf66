#include "presentations/ProgressPresentation.h"

#include "commands/CommandsController.h"
#include "windows/Icons.h"

#include <tarqa/housekeeping/ProgressBarsController.h>
#include <tarqa/housekeeping/gui/AbstractMainWindow.h>
#include <tarqa/housekeeping/gui/AbstractPresentationFactory.h>
#include <tarqa/housekeeping/gui/PresentationManager.h>

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QToolButton>

#include <boost/make_shared.hpp>

namespace terrain {

namespace gui = housekeeping::gui;

const char* const ProgressPresentation::product_name = "ProgressPresentation";

namespace {

const int s_bar_width = 180; ///< pixels
const int s_patience = 300; ///< milliseconds that short commands get before they have a bar

class ProgressPresentationFactory : public gui::AbstractPresentationFactory
{
public:
    ProgressPresentationFactory()
        : AbstractPresentationFactory(ProgressPresentation::product_name, false)
    { }
    boost::shared_ptr<gui::AbstractPresentation> create_product() override
    {
        return boost::make_shared<ProgressPresentation>();
    }
    gui::AbstractPresentation* create_unmanaged_product() override { return new ProgressPresentation; }
};

const ProgressPresentationFactory s_factory; // registers itself

CommandRunner& runner()
{
    return CommandsController::instance().runner();
}

} // namespace

ProgressPresentation::ProgressPresentation() = default;

ProgressPresentation::~ProgressPresentation() = default;

ProgressPresentation& ProgressPresentation::instance()
{
    return dynamic_cast<ProgressPresentation&>(
        *gui::PresentationManager::instance().presentation(product_name));
}

QProgressBar* ProgressPresentation::bar() const
{
    return m_p_bar;
}

QToolButton* ProgressPresentation::cancel_button() const
{
    return m_p_cancel;
}

std::string ProgressPresentation::controller_name() const
{
    return "ProgressBarsController";
}

void ProgressPresentation::init_presentation() { }

void ProgressPresentation::build_presentation()
{
    m_p_corner = new QWidget;
    m_p_name = new QLabel;
    m_p_name->setTextFormat(Qt::PlainText);
    m_p_name->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_p_bar = new QProgressBar;
    m_p_bar->setRange(0, 100);
    m_p_bar->setFixedWidth(s_bar_width);
    m_p_bar->setAccessibleName(tr("Progress of the running command"));
    m_p_cancel = new QToolButton;
    m_p_cancel->setIcon(icon("cancel"));
    m_p_cancel->setText(tr("Cancel"));
    m_p_cancel->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_p_cancel->setAutoRaise(true);
    m_p_cancel->setToolTip(tr("Cancel the running command"));
    connect(m_p_cancel, &QToolButton::clicked, this, &ProgressPresentation::cancel);
    auto* const p_layout = new QHBoxLayout(m_p_corner);
    p_layout->setContentsMargins(0, 0, 0, 0);
    p_layout->addWidget(m_p_name);
    p_layout->addWidget(m_p_bar);
    p_layout->addWidget(m_p_cancel);
    // Left of the other permanent ones; passing messages would hide an ordinary one.
    gui::AbstractMainWindow::instance()->statusBar()->insertPermanentWidget(0, m_p_corner);
    m_patience.setSingleShot(true);
    m_patience.setInterval(s_patience);
    connect(&m_patience, &QTimer::timeout, this, &ProgressPresentation::update_presentation);
    update_presentation();
}

/// A bar that comes and goes in a moment would only distract. @return whether the running command may be over
/// before one could read it
bool ProgressPresentation::is_too_early()
{
    if (runner().length() == CommandRunner::Length::Any) {
        return false;
    }
    if (m_waited_for != runner().command()) {
        m_waited_for = runner().command();
        m_patience.start();
    }
    return m_patience.isActive();
}

void ProgressPresentation::update_presentation()
{
    if (!m_p_corner) {
        return;
    }
    const auto* const p_bars = dynamic_cast<const housekeeping::ProgressBarsController*>(controller());
    const bool running = p_bars && runner().is_running();
    if (running && m_p_corner->isHidden() && !is_too_early()) {
        gui::AbstractMainWindow::instance()->statusBar()->clearMessage(); // how the last one ended
    }
    m_p_corner->setVisible(running && !is_too_early());
    m_p_bar->setValue(running ? static_cast<int>(p_bars->percentage(runner().command())) : 0);
    if (running && m_p_name->text() != runner().name()) {
        m_p_name->setText(runner().name());
    }
    if (!running) {
        m_p_cancel->setEnabled(true); // for the next time
        m_p_cancel->setText(tr("Cancel"));
    }
}

void ProgressPresentation::cancel()
{
    m_p_cancel->setEnabled(false);
    m_p_cancel->setText(tr("Cancelling…"));
    runner().cancel();
}

} // namespace terrain
