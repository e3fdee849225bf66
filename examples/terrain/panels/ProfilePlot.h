#pragma once

#include "panels/PanelPlot.h"

#include <optional>

class QwtPlotCurve;
class QwtPlotMarker;

namespace terrain {

struct HeightProfile;

/// The heights along a row or a column of cells, with gaps where there are none, and a line where the chosen
/// cell is. It tells where the pointer is, and marks a place that somebody else points at. Main thread.
class ProfilePlot : public PanelPlot
{
    Q_OBJECT

public:
    explicit ProfilePlot(QWidget* p_parent = nullptr);

    /// @param unit of the heights @return whether they can be drawn
    bool show_profile(const HeightProfile& profile, const QString& unit);
    void clear();
    /// Marks one of the profile's cells, counted from its beginning; nothing for none.
    void show_pointed(const std::optional<int>& cell);

    // What is drawn.
    const QwtPlotCurve& curve() const { return *m_p_curve; }
    const QwtPlotMarker& marker() const { return *m_p_marker; }
    const QwtPlotMarker& pointer() const { return *m_p_pointer; }

signals:
    /// The pointer is over a cell of the profile, counted from its beginning, or over none.
    void pointed(const std::optional<int>& cell);

protected:
    void dress() override;
    bool eventFilter(QObject* p_watched, QEvent* p_event) override;

private:
    std::optional<int> cell_at(double x) const;

    QwtPlotCurve* m_p_curve; // the plot's, as the next ones
    QwtPlotMarker* m_p_marker;
    QwtPlotMarker* m_p_pointer;
};

} // namespace terrain
