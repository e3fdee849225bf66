#pragma once

#include "panels/PanelPlot.h"

class QwtPlotCurve;
class QwtPlotMarker;

namespace terrain {

struct HeightProfile;

/// The heights along a row or a column of cells, with gaps where there are none, and a line where the chosen
/// cell is. Main thread.
class ProfilePlot : public PanelPlot
{
    Q_OBJECT

public:
    explicit ProfilePlot(QWidget* p_parent = nullptr);

    /// @param unit of the heights @return whether they can be drawn
    bool show_profile(const HeightProfile& profile, const QString& unit);
    void clear();

    // What is drawn.
    const QwtPlotCurve& curve() const { return *m_p_curve; }
    const QwtPlotMarker& marker() const { return *m_p_marker; }

protected:
    void dress() override;

private:
    QwtPlotCurve* m_p_curve; // the plot's, as the next one
    QwtPlotMarker* m_p_marker;
};

} // namespace terrain
