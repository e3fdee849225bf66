#include "tour/UserInput.h"

#include <QtCore/QElapsedTimer>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QDialogButtonBox>
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

void move_pointer(QWidget& widget, const QPoint& to, Qt::MouseButtons held)
{
    send(widget, QEvent::MouseMove, to, Qt::NoButton, held);
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
    drag(widget, {from, to});
}

void drag(QWidget& widget, const std::vector<QPoint>& way)
{
    send(widget, QEvent::MouseButtonPress, way.front(), Qt::LeftButton, Qt::LeftButton);
    for (const QPoint& point : way) {
        send(widget, QEvent::MouseMove, point, Qt::NoButton, Qt::LeftButton);
    }
    send(widget, QEvent::MouseButtonRelease, way.back(), Qt::LeftButton, Qt::NoButton);
}

void press_key(QWidget& widget, Qt::Key key, const QString& text)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier, text);
        QApplication::sendEvent(&widget, &event);
    }
}

void write_over(QWidget& field, const QString& text)
{
    QMetaObject::invokeMethod(&field, "selectAll");
    for (const QChar& letter : text) {
        press_key(field, Qt::Key_unknown, letter);
    }
}

void accept(const QDialog& dialog)
{
    const auto* const p_box = dialog.findChild<QDialogButtonBox*>();
    if (!p_box) {
        return;
    }
    for (QAbstractButton* const p_button : p_box->buttons()) {
        if (p_box->buttonRole(p_button) == QDialogButtonBox::AcceptRole) {
            click(*p_button, p_button->rect().center());
        }
    }
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
