#include <QtCore/QEvent>
#include <QtCore/QFile>
#include <QtCore/QPointer>
#include <QtCore/QThread>
#include <QtCore/QTimer>
#include <QtGui/QGenericPlugin>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <osgDB/Registry>

#include <iostream>
#include <mutex>
#include <set>

// Qt's own door for tools that look into a program: functions to call when an object is made and when it
// goes.
extern Q_CORE_EXPORT quintptr qtHookData[]; // NOLINT(readability-redundant-declaration)

namespace {

const int s_add_object = 3; // places in Qt's table
const int s_remove_object = 4;

/// The living objects of the program, of all threads.
class LivingObjects
{
public:
    static LivingObjects& instance()
    {
        static auto* const s_p_instance = new LivingObjects; // objects may outlive whatever would delete it
        return *s_p_instance;
    }

    static void watch(bool on)
    {
        qtHookData[s_add_object] = on ? reinterpret_cast<quintptr>(&LivingObjects::add) : 0;
        qtHookData[s_remove_object] = on ? reinterpret_cast<quintptr>(&LivingObjects::remove) : 0;
    }

    int count(const char* class_name)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        int result = 0;
        for (const QObject* const p_object : m_objects) {
            result += p_object->inherits(class_name) ? 1 : 0;
        }
        return result;
    }

private:
    static void add(QObject* p_object)
    {
        const std::lock_guard<std::mutex> lock(instance().m_mutex);
        instance().m_objects.insert(p_object);
    }
    static void remove(QObject* p_object)
    {
        const std::lock_guard<std::mutex> lock(instance().m_mutex);
        instance().m_objects.erase(p_object);
    }

    std::mutex m_mutex;
    std::set<QObject*> m_objects; // guarded by m_mutex
};

/// How many plug-ins of OpenSceneGraph are in the program's memory.
int scene_plug_ins()
{
    QFile file("/proc/self/maps");
    file.open(QIODevice::ReadOnly);
    std::set<QByteArray> plug_ins;
    for (const QByteArray& line : file.readAll().split('\n')) {
        const QByteArray name = line.mid(line.lastIndexOf('/') + 1);
        if (name.startsWith("osgdb_")) {
            plug_ins.insert(name);
        }
    }
    return static_cast<int>(plug_ins.size());
}

void report(const char* when)
{
    LivingObjects& objects = LivingObjects::instance();
    std::cout << when << ": " << objects.count("QMainWindow") << " main windows, "
              << objects.count("QQmlEngine") << " QML engines, " << objects.count("QWebPage")
              << " web pages, " << scene_plug_ins() << " scene plug-ins" << std::endl;
}

/// What makes each of them needed.
void need(const QWidget& window)
{
    for (const char* const entry : {"help_quick_help", "help_contents"}) {
        if (auto* const p_action = window.findChild<QAction*>(entry)) {
            p_action->trigger();
        }
    }
    osgDB::Registry& registry = *osgDB::Registry::instance();
    registry.loadLibrary(registry.createLibraryNameForExtension("rgb"));
}

/**
 * Prints what there is of what a program should not make before it is needed, when its first window has been
 * painted and the main loop has nothing to do, and again when it is needed; then closes the windows.
 */
class StartWatch : public QObject
{
    Q_OBJECT

public:
    StartWatch()
    {
        LivingObjects::watch(true);
        qApp->installEventFilter(this);
        m_idle.setInterval(0); // comes when nothing else is to do
        connect(&m_idle, &QTimer::timeout, this, &StartWatch::look);
    }

    ~StartWatch() override { LivingObjects::watch(false); } // this code may be unloaded next

    bool eventFilter(QObject* p_object, QEvent* p_event) override
    {
        if (m_p_window || p_event->type() != QEvent::Paint) {
            return false; // not even a look at the object, which may be half made or half gone
        }
        auto* const p_widget = qobject_cast<QWidget*>(p_object);
        if (p_widget && p_widget->isWindow()) {
            m_p_window = p_widget;
            m_idle.start();
        }
        return false;
    }

private:
    void look()
    {
        if (QThread::currentThread()->loopLevel() == 0) {
            return;
        }
        m_idle.stop();
        report("started");
        need(*m_p_window);
        report("needed");
        for (QWidget* const p_window : QApplication::topLevelWidgets()) {
            p_window->close();
        }
    }

    QPointer<QWidget> m_p_window;
    QTimer m_idle;
};

/// Qt loads it into the program that people run, by an environment variable of its own.
class StartWatchPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "StartWatch.json")

public:
    QObject* create(const QString&, const QString&) override { return new StartWatch; }
};

} // namespace

#include "StartWatch.moc"
