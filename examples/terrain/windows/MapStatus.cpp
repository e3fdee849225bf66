#include "windows/MapStatus.h"

#include "views/TerrainView.h"

#include <QtWidgets/QLabel>
#include <QtWidgets/QStatusBar>

namespace terrain {

namespace {

const int s_gap = 24; ///< pixels

} // namespace

MapStatus::MapStatus(QStatusBar& bar)
    : QObject(&bar)
    , m_p_reading(new QLabel)
    , m_p_scale(new QLabel)
{
    m_p_reading->setTextFormat(Qt::PlainText);
    m_p_reading->setAccessibleName(tr("Place under the pointer"));
    m_p_scale->setIndent(s_gap);
    m_p_scale->setToolTip(tr("Pixels for a cell, in percent"));
    bar.addPermanentWidget(m_p_reading);
    bar.addPermanentWidget(m_p_scale);
}

void MapStatus::follow(const TerrainView& view)
{
    connect(&view, &TerrainView::reading_changed, m_p_reading, &QLabel::setText);
    connect(&view, &TerrainView::scale_changed, this, &MapStatus::show_scale);
}

void MapStatus::show(const TerrainView* p_view)
{
    m_p_reading->clear();
    if (p_view) {
        show_scale(p_view->scale());
    } else {
        m_p_scale->clear();
    }
}

void MapStatus::show_scale(double scale)
{
    m_p_scale->setText(tr("%1 %").arg(QString::number(scale * 100, 'f', 0)));
}

QString MapStatus::reading() const
{
    return m_p_reading->text();
}

} // namespace terrain
