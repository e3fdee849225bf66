#pragma once

#include <QtCore/Qt>

#include <vector>

class QDialog;
class QPoint;
class QString;
class QWidget;

namespace terrain {

// What a user does with mouse and keyboard. Positions are those inside of @p widget.

/// @param held the buttons that are down meanwhile
void move_pointer(QWidget& widget, const QPoint& to, Qt::MouseButtons held = Qt::NoButton);
/// Presses the left button and lets go.
void click(QWidget& widget, const QPoint& at);
/// @param notches above 0 away from the user
void turn_wheel(QWidget& widget, const QPoint& at, int notches);
/// Presses the left button, moves and lets go.
void drag(QWidget& widget, const QPoint& from, const QPoint& to);
/// The same along a way of at least one point.
void drag(QWidget& widget, const std::vector<QPoint>& way);

/// Presses a key and lets go. @param text what it writes
void press_key(QWidget& widget, Qt::Key key, const QString& text);
/// Writes over all that stands in a field.
void write_over(QWidget& field, const QString& text);
/// Clicks the button of a dialog that does what the dialog is for; nothing if it has none.
void accept(const QDialog& dialog);

/// Activates the widget's window, gives the widget the keyboard, and waits a while until it has that.
void give_keyboard(QWidget& widget);

} // namespace terrain
