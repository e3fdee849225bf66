#pragma once

#include <QtCore/QString>

#include <qwt_plot.h>

#include <map>

class QwtPlotGrid;

namespace terrain {

/// A plot that fits into a panel: it has the colours and the texts of the widgets around it, and few enough
/// numbers at its axes for them to be read. Main thread.
class PanelPlot : public QwtPlot
{
    Q_OBJECT

public:
    explicit PanelPlot(QWidget* p_parent = nullptr);

    /// Whether a range can be drawn: not too wide and not too narrow for the numbers of an axis.
    static bool can_draw(double lowest, double highest);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    /// What stands at an axis, and what the axis reaches from and to. Where there is no room for all of the
    /// text, only what is in parentheses is seen.
    void set_axis(int axis, const QString& text, double from, double to);

    /// What stands at an axis of heights.
    static QString height_text(const QString& unit);

    /// Takes colours and font from the widget. A derived class does the same for what it draws.
    virtual void dress();

    void changeEvent(QEvent* p_event) override;
    void resizeEvent(QResizeEvent* p_event) override;
    void showEvent(QShowEvent* p_event) override;

private:
    void thin_out();
    void set_title(int axis, int room);

    QwtPlotGrid* m_p_grid; // the plot's
    std::map<int, QString> m_texts; // at the axes
};

} // namespace terrain
