#pragma once

#include <QtWidgets/QStyledItemDelegate>

namespace terrain {

/// Draws the lines of a HistoryModel: an arrow in front of the present one, and pale what is undone. Long
/// texts end in dots; a line is never wider than its list. Main thread.
class HistoryDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(
        QPainter* p_painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* p_option, const QModelIndex& index) const override;
};

} // namespace terrain
