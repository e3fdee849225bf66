#include "panels/PanelPlot.h"

#include <QtCore/QEvent>
#include <QtCore/QLocale>
#include <QtGui/QFontMetrics>

#include <qwt_plot_canvas.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_layout.h>
#include <qwt_scale_widget.h>

#include <algorithm>
#include <cmath>

namespace terrain {

namespace {

const double s_paleness = 0.18; ///< of the grid
const int s_narrowest = 150; ///< pixels
const int s_lowest = 7; ///< lines of text
const int s_gap = 2; ///< characters, between numbers at the lower axis
const int s_longest = 8; ///< characters, that a number there has
const int s_most_numbers = 8;
const double s_largest = 1e100;
const double s_smallest_extent = 1e-100;
const double s_finest = 1e-12; ///< the extent in proportion to the numbers

} // namespace

PanelPlot::PanelPlot(QWidget* p_parent)
    : QwtPlot(p_parent)
    , m_p_grid(new QwtPlotGrid)
{
    m_p_grid->attach(this);
    setLayoutDirection(Qt::LeftToRight); // in every language, as numbers are
    setAutoReplot(false);
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    auto* const p_canvas = new QwtPlotCanvas;
    p_canvas->setFrameStyle(QFrame::NoFrame);
    p_canvas->setFocusPolicy(Qt::NoFocus);
    setCanvas(p_canvas);
    plotLayout()->setAlignCanvasToScales(true);
    PanelPlot::dress();
}

bool PanelPlot::can_draw(double lowest, double highest)
{
    const double largest = std::max(std::abs(lowest), std::abs(highest));
    const double extent = highest - lowest;
    return largest < s_largest && extent > s_smallest_extent && extent > largest * s_finest;
}

void PanelPlot::set_axis(int axis, const QString& text, double from, double to)
{
    m_texts[axis] = text;
    setAxisScale(axis, from, to);
    thin_out();
}

QString PanelPlot::height_text(const QString& unit)
{
    return unit.isEmpty() ? tr("Height") : tr("Height (%1)").arg(unit);
}

void PanelPlot::dress()
{
    QColor lines = palette().color(QPalette::Text);
    lines.setAlphaF(s_paleness);
    m_p_grid->setPen(lines);
    setCanvasBackground(palette().base());
    for (const int axis : {xBottom, yLeft}) {
        setAxisFont(axis, font());
    }
    updateGeometry();
}

void PanelPlot::set_title(int axis, int room)
{
    const QString& text = m_texts[axis];
    const bool fits = fontMetrics().horizontalAdvance(text) <= room || !text.contains('(');
    QwtText title(fits ? text : text.section('(', 1).section(')', 0, 0));
    title.setFont(font());
    setAxisTitle(axis, title);
}

/// As many numbers, and as much text, at the axes as there is room for.
void PanelPlot::thin_out()
{
    const QFontMetrics metrics(font());
    const QwtInterval numbers = axisInterval(xBottom);
    int widest = 0;
    for (const double number : {numbers.minValue(), numbers.maxValue()}) {
        widest = std::max(widest, metrics.horizontalAdvance(QLocale().toString(number)));
    }
    const int character = metrics.averageCharWidth();
    const int across = canvas()->width() / (std::min(widest, s_longest * character) + s_gap * character);
    const int down = canvas()->height() / (2 * metrics.height());
    setAxisMaxMajor(xBottom, std::clamp(across, 1, s_most_numbers));
    setAxisMaxMajor(yLeft, std::clamp(down, 1, s_most_numbers));
    set_title(xBottom, canvas()->width());
    set_title(yLeft, canvas()->height());
    replot();
}

void PanelPlot::changeEvent(QEvent* p_event)
{
    QwtPlot::changeEvent(p_event);
    if (p_event->type() == QEvent::FontChange || p_event->type() == QEvent::PaletteChange) {
        dress();
        thin_out();
    }
}

void PanelPlot::resizeEvent(QResizeEvent* p_event)
{
    QwtPlot::resizeEvent(p_event);
    thin_out();
}

void PanelPlot::showEvent(QShowEvent* p_event)
{
    QwtPlot::showEvent(p_event);
    thin_out();
}

QSize PanelPlot::sizeHint() const
{
    return {s_narrowest * 2, s_lowest * fontMetrics().height()};
}

QSize PanelPlot::minimumSizeHint() const
{
    return {s_narrowest, s_lowest * fontMetrics().height()};
}

} // namespace terrain
