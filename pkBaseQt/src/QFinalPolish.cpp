#include <pkBaseQt/QFinalPolish.h>

#include <QtCore/QEvent>
#include <QtWidgets/QAbstractSlider>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QScrollBar>

namespace pkBase {

namespace {

/// Passes the wheel on to the parent of a widget without focus.
class WheelGuard : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* p_watched, QEvent* p_event) override
    {
        auto* const p_widget = qobject_cast<QWidget*>(p_watched);
        if (p_widget && p_event->type() == QEvent::Wheel && !p_widget->hasFocus()) {
            p_event->ignore();
            return true;
        }
        return QObject::eventFilter(p_watched, p_event);
    }
};

bool takes_the_wheel(const QWidget* p_widget)
{
    if (qobject_cast<const QScrollBar*>(p_widget)) {
        return false;
    }
    return qobject_cast<const QAbstractSpinBox*>(p_widget) || qobject_cast<const QAbstractSlider*>(p_widget)
        || qobject_cast<const QComboBox*>(p_widget);
}

void guard(QWidget* p_widget)
{
    // Without the wheel among the ways to get the focus.
    if (takes_the_wheel(p_widget) && p_widget->focusPolicy() == Qt::WheelFocus) {
        p_widget->setFocusPolicy(Qt::StrongFocus);
    }
    if (takes_the_wheel(p_widget)
        && !p_widget->findChild<WheelGuard*>(QString(), Qt::FindDirectChildrenOnly)) {
        p_widget->installEventFilter(new WheelGuard(p_widget));
    }
}

} // namespace

void QFinalPolish::apply(QWidget* p_widget)
{
    if (!p_widget) {
        return;
    }
    guard(p_widget);
    for (QWidget* const p_child : p_widget->findChildren<QWidget*>()) {
        guard(p_child);
    }
}

} // namespace pkBase

#include "QFinalPolish.moc"
