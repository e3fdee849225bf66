#include "tour/UserInput.h"

#include <QtCore/QElapsedTimer>
#include <QtGui/QMouseEvent>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

namespace terrain {

namespace {

const int s_notch = 120; ///< what Qt counts for a notch
const int s_patience = 2000; ///< milliseconds

void send(QWidget& widget, QEvent::Type type, const QPoint& at, Qt::MouseButton button, Qt::MouseButtons held)
{
    QMouseEvent event(type, at, widget.mapToGlobal(at), button, held, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

} // namespace

void move_pointer(QWidget& widget, const QPoint& to)
{
    send(widget, QEvent::MouseMove, to, Qt::NoButton, Qt::NoButton);
}

void click(QWidget& widget, const QPoint& at)
{
    send(widget, QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton);
    send(widget, QEvent::MouseButtonRelease, at, Qt::LeftButton, Qt::NoButton);
}

void turn_wheel(QWidget& widget, const QPoint& at, int notches)
{
    QWheelEvent event(at, widget.mapToGlobal(at), QPoint(), QPoint(0, notches * s_notch), Qt::NoButton,
        Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &event);
}

void drag(QWidget& widget, const QPoint& from, const QPoint& to)
{
    send(widget, QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    send(widget, QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton);
    send(widget, QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton);
}

void give_keyboard(QWidget& widget)
{
    QElapsedTimer clock;
    clock.start();
    widget.window()->raise();
    widget.window()->activateWindow();
    widget.setFocus();
    while (!widget.hasFocus() && !clock.hasExpired(s_patience)) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, s_patience);
    }
}

} // namespace terrain
