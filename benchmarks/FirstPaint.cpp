#include <QtCore/QEvent>
#include <QtCore/QPointer>
#include <QtCore/QThread>
#include <QtCore/QTimer>
#include <QtGui/QGenericPlugin>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <unistd.h>

namespace {

const char* const s_variable = "HK_BENCH_PAINTED"; ///< the number of a file descriptor

/**
 * Writes a byte when the program's first window has been painted with all that it holds, and closes the
 * window, as its user would, when the main loop runs.
 */
class FirstPaint : public QObject
{
    Q_OBJECT

public:
    FirstPaint()
    {
        qApp->installEventFilter(this);
        m_closing.setInterval(0);
        connect(&m_closing, &QTimer::timeout, this, &FirstPaint::close_window);
    }

    bool eventFilter(QObject* p_object, QEvent* p_event) override
    {
        if (m_p_window || p_event->type() != QEvent::Paint) {
            return false; // not even a look at the object, which may be half made or half gone
        }
        auto* const p_widget = qobject_cast<QWidget*>(p_object);
        if (p_widget && p_widget->isWindow()) {
            m_p_window = p_widget;
            // What the window holds is painted, and all brought to the screen, before the next event comes.
            QCoreApplication::postEvent(this, new QEvent(QEvent::User), Qt::HighEventPriority);
        }
        return false;
    }

protected:
    void customEvent(QEvent*) override
    {
        qApp->removeEventFilter(this);
        const int descriptor = qEnvironmentVariableIntValue(s_variable);
        const ssize_t written = ::write(descriptor, "p", 1);
        ::close(descriptor);
        if (written == 1) {
            m_closing.start();
        }
    }

private:
    void close_window()
    {
        if (QThread::currentThread()->loopLevel() > 0) {
            m_closing.stop();
            m_p_window->close();
        }
    }

    QPointer<QWidget> m_p_window;
    QTimer m_closing;
};

/// Qt loads it into a program by an environment variable of its own, so the program is the one that people
/// run, with nothing in it for this.
class FirstPaintPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "FirstPaint.json")

public:
    QObject* create(const QString&, const QString&) override { return new FirstPaint; }
};

} // namespace

#include "FirstPaint.moc"
