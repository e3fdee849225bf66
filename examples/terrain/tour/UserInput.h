#pragma once

class QPoint;
class QWidget;

namespace terrain {

// What a user does with mouse and keyboard. Positions are those inside of @p widget.

void move_pointer(QWidget& widget, const QPoint& to);
/// Presses the left button and lets go.
void click(QWidget& widget, const QPoint& at);
/// @param notches above 0 away from the user
void turn_wheel(QWidget& widget, const QPoint& at, int notches);
/// Presses the left button, moves and lets go.
void drag(QWidget& widget, const QPoint& from, const QPoint& to);

/// Activates the widget's window, gives the widget the keyboard, and waits a while until it has that.
void give_keyboard(QWidget& widget);

} // namespace terrain
