#pragma once

#include "commands/BrushCommand.h"

#include <QtWidgets/QWidget>

class QDoubleSpinBox;

namespace terrain {

/// The radius and the height of a brush, in the tool bar while a brush is in use. It takes the room that the
/// tool bar has left, and is empty at other times. Main thread.
class BrushBar : public QWidget
{
    Q_OBJECT

public:
    explicit BrushBar(QWidget* p_parent = nullptr);

    /// @param unit of the height, for people; may be empty @param usual_height of such a document: how fine
    /// and how large heights are to be chosen
    void show_brush(const Brush& brush, const QString& unit, double usual_height);
    void hide_brush();
    /// Takes what the user is writing as it is now.
    void take_input();

    QDoubleSpinBox& radius() const { return *m_p_radius; }
    QDoubleSpinBox& height() const { return *m_p_height; }

signals:
    // The user has chosen another one.
    void radius_chosen(double radius);
    void height_chosen(double height);

private:
    QWidget* m_p_options; // children, as the following
    QDoubleSpinBox* m_p_radius;
    QDoubleSpinBox* m_p_height;
};

} // namespace terrain
