#include "panels/HistogramPlot.h"

#include "panels/HeightStatistics.h"

#include <QtGui/QPen>

#include <qwt_plot_histogram.h>

#include <algorithm>

namespace terrain {

namespace {

const double s_headroom = 1.05; ///< above the highest bar

QVector<QwtIntervalSample> samples_of(const HeightStatistics& statistics)
{
    QVector<QwtIntervalSample> samples;
    double edge = statistics.first_edge;
    for (std::size_t i = 0; i < statistics.bars.size(); ++i) {
        const double next = statistics.first_edge + static_cast<double>(i + 1) * statistics.bar_width;
        const double share
            = 100 * static_cast<double>(statistics.bars[i]) / static_cast<double>(statistics.heights());
        samples.append(QwtIntervalSample(share, edge, next));
        edge = next;
    }
    return samples;
}

} // namespace

HistogramPlot::HistogramPlot(QWidget* p_parent)
    : PanelPlot(p_parent)
    , m_p_histogram(new QwtPlotHistogram)
{
    m_p_histogram->attach(this);
    m_p_histogram->setStyle(QwtPlotHistogram::Columns);
    setAccessibleName(tr("Histogram"));
    HistogramPlot::dress();
}

bool HistogramPlot::show_statistics(const HeightStatistics& statistics, const QString& unit)
{
    m_p_histogram->setSamples(QVector<QwtIntervalSample>());
    if (statistics.heights() == 0) {
        return false;
    }
    const QVector<QwtIntervalSample> samples = samples_of(statistics);
    const double from = samples.first().interval.minValue();
    const double to = samples.last().interval.maxValue();
    if (!can_draw(from, to)) {
        return false;
    }
    double highest = 0;
    for (const QwtIntervalSample& sample : samples) {
        highest = std::max(highest, sample.value);
    }
    m_p_histogram->setSamples(samples);
    set_axis(xBottom, height_text(unit), from, to);
    set_axis(yLeft, tr("Share (%)"), 0, highest * s_headroom);
    replot();
    return true;
}

void HistogramPlot::dress()
{
    PanelPlot::dress();
    m_p_histogram->setBrush(palette().highlight());
    m_p_histogram->setPen(QPen(Qt::NoPen));
}

} // namespace terrain
