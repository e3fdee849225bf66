#pragma once

#include <QtCore/QString>
#include <QtWidgets/QWidget>

namespace terrain {

/// What is drawn over a scene: where north is, and how the heights are exaggerated. Lets all of the mouse
/// through. Main thread.
class SceneOverlay : public QWidget
{
    Q_OBJECT

public:
    explicit SceneOverlay(QWidget* p_parent);

    /// @param heading where one looks to, in radians; 0 is north
    void show_heading(double heading);
    /// @param note "" for none
    void show_note(const QString& note);
    const QString& note() const { return m_note; }
    /// At the top, in place of the rest. @param problem "" for none
    void show_problem(const QString& problem);
    const QString& problem() const { return m_problem; }

protected:
    void paintEvent(QPaintEvent* p_event) override;

private:
    void draw_compass(QPainter& painter) const;
    void draw_text(QPainter& painter) const;

    double m_heading = 0;
    QString m_note;
    QString m_problem;
};

} // namespace terrain
