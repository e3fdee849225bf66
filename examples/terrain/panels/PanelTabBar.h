#pragma once

#include <QtWidgets/QTabBar>

namespace terrain {

/// The tabs of the panels. They can be put into another order, and dragged off the bar. Main thread.
class PanelTabBar : public QTabBar
{
    Q_OBJECT

public:
    explicit PanelTabBar(QWidget* p_parent = nullptr);

signals:
    /// A tab is being dragged away from the bar.
    void torn_off(const QString& text);

protected:
    void mousePressEvent(QMouseEvent* p_event) override;
    void mouseMoveEvent(QMouseEvent* p_event) override;
    void mouseReleaseEvent(QMouseEvent* p_event) override;

private:
    void tear_off();

    QString m_dragged; // the text of the tab that the left button holds; empty if it holds none
};

} // namespace terrain
