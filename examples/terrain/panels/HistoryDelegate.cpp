#include "panels/HistoryDelegate.h"

#include "panels/HistoryModel.h"

#include <QtGui/QPainter>
#include <QtWidgets/QApplication>

#include <algorithm>

namespace terrain {

namespace {

const int s_gutter = 16; ///< pixels, for the arrow
const int s_padding = 3; ///< above and below a text
const double s_arrow = 4.5; ///< half its height
const double s_paleness = 0.6; ///< of what is undone

/// An arrow that points at the text, from either side.
void draw_arrow(QPainter& painter, const QRectF& gutter, Qt::LayoutDirection direction, const QColor& colour)
{
    const double to_text = direction == Qt::RightToLeft ? -s_arrow : s_arrow;
    const QPointF centre = gutter.center();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawPolygon(QPolygonF({centre + QPointF(-to_text, -s_arrow), centre + QPointF(to_text, 0),
        centre + QPointF(-to_text, s_arrow)}));
    painter.restore();
}

} // namespace

void HistoryDelegate::initStyleOption(QStyleOptionViewItem* p_option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(p_option, index);
    if (index.data(HistoryModel::IsUndone).toBool()) {
        QColor colour = p_option->palette.color(QPalette::Active, QPalette::Text);
        colour.setAlphaF(s_paleness);
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
            p_option->palette.setColor(group, QPalette::Text, colour);
        }
    }
}

void HistoryDelegate::paint(
    QPainter* p_painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QRect gutter = QStyle::visualRect(
        option.direction, option.rect, QRect(option.rect.topLeft(), QSize(s_gutter, option.rect.height())));
    QStyleOptionViewItem text = option;
    text.rect = QStyle::visualRect(option.direction, option.rect, option.rect.adjusted(s_gutter, 0, 0, 0));
    QStyledItemDelegate::paint(p_painter, text, index);
    if (index.data(HistoryModel::IsPresent).toBool()) {
        const auto group = option.state & QStyle::State_Enabled ? QPalette::Active : QPalette::Disabled;
        draw_arrow(*p_painter, gutter, option.direction, option.palette.color(group, QPalette::Text));
    }
}

QSize HistoryDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QSize hint = QStyledItemDelegate::sizeHint(option, index);
    return {1,
        std::max(hint.height(), option.fontMetrics.height()) + 2 * s_padding}; // the list is as wide as it is
}

} // namespace terrain
