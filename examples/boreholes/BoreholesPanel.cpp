#include "BoreholesPanel.h"

#include "BoreholesController.h"

#include <QtCore/QLocale>
#include <QtCore/QSignalBlocker>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QVBoxLayout>

namespace boreholes {

BoreholesPanel::BoreholesPanel(BoreholesController& controller, QWidget* p_parent)
    : QWidget(p_parent)
    , m_controller(controller)
    , m_p_table(new QTableWidget(0, 4))
{
    setWindowTitle(tr("Boreholes")); // the panel's name: its tab's, its window's, and its settings'
    m_p_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_p_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_p_table->setEditTriggers(QAbstractItemView::NoEditTriggers); // changes are commands
    m_p_table->verticalHeader()->hide();
    m_p_table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_p_table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    auto* const p_layout = new QVBoxLayout(this);
    p_layout->addWidget(m_p_table);
    connect(m_p_table, &QTableWidget::itemSelectionChanged, this, &BoreholesPanel::choose);
}

int BoreholesPanel::rows() const
{
    return m_p_table->rowCount();
}

void BoreholesPanel::refresh()
{
    const QSignalBlocker blocker(m_p_table); // what is selected here comes from the controller
    const QString unit = m_controller.unit_text();
    m_p_table->setHorizontalHeaderLabels(
        {tr("Name"), tr("East (%1)").arg(unit), tr("North (%1)").arg(unit), tr("Depth (%1)").arg(unit)});
    const Boreholes& boreholes = m_controller.boreholes();
    m_p_table->setRowCount(static_cast<int>(boreholes.size()));
    int row = 0;
    for (const Borehole& borehole : boreholes) {
        m_p_table->setItem(row, 0, new QTableWidgetItem(borehole.name));
        int column = 1;
        for (const double metres : {borehole.x, borehole.y, borehole.depth}) {
            auto* const p_item
                = new QTableWidgetItem(QLocale().toString(m_controller.in_unit(metres), 'f', 1));
            p_item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            m_p_table->setItem(row, column++, p_item);
        }
        ++row;
    }
    if (const auto selected = m_controller.selected()) {
        m_p_table->selectRow(static_cast<int>(*selected));
    } else {
        m_p_table->clearSelection();
    }
}

void BoreholesPanel::choose()
{
    const QList<QTableWidgetItem*> items = m_p_table->selectedItems();
    if (items.empty()) {
        m_controller.select(std::nullopt);
    } else {
        m_controller.select(static_cast<std::size_t>(items.first()->row()));
    }
}

} // namespace boreholes
