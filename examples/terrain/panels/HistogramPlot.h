#pragma once

#include "panels/PanelPlot.h"

class QwtPlotHistogram;

namespace terrain {

struct HeightStatistics;

/// How many of the heights, in per cent, are how high. Main thread.
class HistogramPlot : public PanelPlot
{
    Q_OBJECT

public:
    explicit HistogramPlot(QWidget* p_parent = nullptr);

    /// @param unit of the heights @return whether they can be drawn
    bool show_statistics(const HeightStatistics& statistics, const QString& unit);

    /// What is drawn.
    const QwtPlotHistogram& histogram() const { return *m_p_histogram; }

protected:
    void dress() override;

private:
    QwtPlotHistogram* m_p_histogram; // the plot's
};

} // namespace terrain
