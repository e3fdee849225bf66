#include "panels/HistoryPanel.h"

#include <tarqa/housekeeping/CommandDetails.h>
#include <tarqa/housekeeping/ControllerLocker.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/UndoRedoController.h>

#include <QtWidgets/QListWidget>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

namespace terrain {

namespace {

const unsigned long long s_entries = 100; ///< of each kind; nobody looks further back
const int s_margin = 8;
const int s_spacing = 2;
const double s_paleness = 0.55; ///< of what is undone

} // namespace

HistoryPanel::HistoryPanel(QWidget* p_parent)
    : QWidget(p_parent)
    , m_p_controller(dynamic_cast<housekeeping::UndoRedoController*>(
          housekeeping::ControllerManager::instance().controller("UndoRedoController").get()))
    , m_p_list(new QListWidget)
{
    setWindowTitle(tr("History"));
    m_p_list->setAccessibleName(tr("What was done"));
    m_p_list->setFrameShape(QFrame::NoFrame);
    m_p_list->setSelectionMode(QAbstractItemView::NoSelection);
    m_p_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_p_list->setSpacing(s_spacing);
    auto* const p_layout = new QVBoxLayout(this);
    p_layout->setContentsMargins(s_margin, s_margin, s_margin, s_margin);
    p_layout->addWidget(m_p_list);
    if (m_p_controller) {
        register_controller(m_p_controller);
    }
    refresh();
}

HistoryPanel::~HistoryPanel()
{
    unregister(); // the controller outlives the window
}

void HistoryPanel::refresh()
{
    m_p_list->clear();
    if (!m_p_controller) {
        return;
    }
    const housekeeping::ControllerLocker locker(*m_p_controller);
    if (!m_p_controller->state_exists()) {
        return;
    }
    auto undone = m_p_controller->getRedoCommandDetails(s_entries);
    std::reverse(undone.begin(), undone.end());
    for (const housekeeping::CommandDetails& details : undone) {
        add(details, true);
    }
    for (const housekeeping::CommandDetails& details : m_p_controller->getUndoCommandDetails(s_entries)) {
        add(details, false);
    }
}

void HistoryPanel::update()
{
    refresh();
}

void HistoryPanel::add(const housekeeping::CommandDetails& details, bool undone)
{
    const QString name = QString::fromStdString(details.name());
    const QString description = QString::fromStdString(details.description());
    const QString text = description.isEmpty() ? name : QString("%1: %2").arg(name, description);
    auto* const p_item = new QListWidgetItem(text);
    p_item->setToolTip(text);
    if (undone) {
        QFont font = p_item->font();
        font.setItalic(true);
        p_item->setFont(font);
        QColor colour = palette().color(QPalette::Text);
        colour.setAlphaF(s_paleness);
        p_item->setForeground(colour);
        p_item->setToolTip(tr("Undone: %1").arg(text));
    }
    m_p_list->addItem(p_item);
}

QSize HistoryPanel::sizeHint() const
{
    return {280, 400};
}

} // namespace terrain
