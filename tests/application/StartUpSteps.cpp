#include "StartUpSteps.h"

#include <tarqa/utilities/TemporaryDirectory.h>

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QSettings>
#include <QtCore/QThread>
#include <QtCore/QThreadPool>
#include <QtQml/qqml.h>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <cpl_conv.h>
#include <cpl_error.h>
#include <osg/Notify>

#include <dlfcn.h>

namespace {

start_up_steps::Observer s_observer;
int s_processors = 0; // as many as there are

void note(const std::string& step)
{
    if (s_observer) {
        s_observer(step);
    }
}

/// The function of this name, as the linker knows it, that a library defines. A member function takes its
/// object first.
template <class Function>
Function* library_function(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

/// The last two folders.
std::string end_of(const QString& path)
{
    return path.section('/', -2).toStdString();
}

} // namespace

namespace start_up_steps {

void observe(const Observer& observer)
{
    s_observer = observer;
}

void pretend_processors(int count)
{
    s_processors = count;
}

} // namespace start_up_steps

// --- Qt

bool qputenv(const char* name, const QByteArray& value)
{
    note(std::string("variable ") + name);
    return library_function<bool(const char*, const QByteArray&)>("_Z7qputenvPKcRK10QByteArray")(name, value);
}

bool QFile::open(int descriptor, OpenMode mode, FileHandleFlags flags)
{
    note(fileName().endsWith("-lockfile") ? "lock file" : "file");
    return library_function<bool(QFile*, int, OpenMode, FileHandleFlags)>(
        "_ZN5QFile4openEi6QFlagsIN9QIODevice12OpenModeFlagEES0_IN11QFileDevice14FileHandleFlagEE")(
        this, descriptor, mode, flags);
}

bool QFile::exists(const QString& name)
{
    if (name.contains("/data/")) {
        note("data " + end_of(name));
    }
    return library_function<bool(const QString&)>("_ZN5QFile6existsERK7QString")(name);
}

void QCoreApplication::addLibraryPath(const QString& path)
{
    note("library path " + end_of(path));
    library_function<void(const QString&)>("_ZN16QCoreApplication14addLibraryPathERK7QString")(path);
}

void QCoreApplication::setAttribute(Qt::ApplicationAttribute attribute, bool on)
{
    if (attribute == Qt::AA_UseDesktopOpenGL || attribute == Qt::AA_ShareOpenGLContexts) { // Qt sets others
        note("attribute " + std::to_string(attribute));
    }
    library_function<void(Qt::ApplicationAttribute, bool)>(
        "_ZN16QCoreApplication12setAttributeEN2Qt20ApplicationAttributeEb")(attribute, on);
}

int QQmlPrivate::qmlregister(RegistrationType type, void* p_data)
{
    note("QML type");
    return library_function<int(RegistrationType, void*)>(
        "_ZN11QQmlPrivate11qmlregisterENS_16RegistrationTypeEPv")(type, p_data);
}

QtMessageHandler qInstallMessageHandler(QtMessageHandler handler)
{
    note("messages of Qt");
    return library_function<QtMessageHandler(QtMessageHandler)>(
        "_Z22qInstallMessageHandlerPFv9QtMsgTypeRK18QMessageLogContextRK7QStringE")(handler);
}

void QApplication::setWindowIcon(const QIcon& icon)
{
    note("window icon");
    library_function<void(const QIcon&)>("_ZN12QApplication13setWindowIconERK5QIcon")(icon);
}

void QApplication::setStyle(QStyle* p_style)
{
    note("style");
    library_function<void(QStyle*)>("_ZN12QApplication8setStyleEP6QStyle")(p_style);
}

int QThread::idealThreadCount() noexcept
{
    return s_processors ? s_processors : library_function<int()>("_ZN7QThread16idealThreadCountEv")();
}

void QThreadPool::setMaxThreadCount(int count)
{
    note("thread pool");
    library_function<void(QThreadPool*, int)>("_ZN11QThreadPool17setMaxThreadCountEi")(this, count);
}

void QSettings::beginGroup(const QString& prefix)
{
    note("settings " + prefix.toStdString());
    library_function<void(QSettings*, const QString&)>("_ZN9QSettings10beginGroupERK7QString")(this, prefix);
}

void QCoreApplication::processEvents(QEventLoop::ProcessEventsFlags flags, int milliseconds)
{
    note("events for " + std::to_string(milliseconds) + " ms");
    library_function<void(QEventLoop::ProcessEventsFlags, int)>(
        "_ZN16QCoreApplication13processEventsE6QFlagsIN10QEventLoop17ProcessEventsFlagEEi")(
        flags, milliseconds);
}

void QCoreApplication::exit(int code)
{
    note("exit with " + std::to_string(code));
    library_function<void(int)>("_ZN16QCoreApplication4exitEi")(code);
}

void QCoreApplication::quit()
{
    note("quit");
    library_function<void()>("_ZN16QCoreApplication4quitEv")();
}

/// Starts nothing.
bool QProcess::startDetached(const QString& program, const QStringList& arguments)
{
    note("new process " + (program + ": " + arguments.join(' ')).toStdString());
    return true;
}

void QWidget::show()
{
    note("show");
    library_function<void(QWidget*)>("_ZN7QWidget4showEv")(this);
}

void QWidget::activateWindow()
{
    note("activation");
    library_function<void(QWidget*)>("_ZN7QWidget14activateWindowEv")(this);
}

// --- the other libraries

bool tarqa::utilities::temporary_directories_exist(const std::string& kind)
{
    note("temporary directories");
    return library_function<bool(const std::string&)>(
        "_ZN5tarqa9utilities27temporary_directories_existERKNSt7__cxx1112basic_stringIcSt11char_"
        "traitsIcESaIcEEE")(kind);
}

__attribute__((visibility("default"))) CPLErrorHandler CPLSetErrorHandler(CPLErrorHandler handler)
{
    note("messages of GDAL");
    return library_function<CPLErrorHandler(CPLErrorHandler)>("CPLSetErrorHandler")(handler);
}

__attribute__((visibility("default"))) void CPLSetConfigOption(const char* name, const char* value)
{
    note(std::string("option ") + name);
    library_function<void(const char*, const char*)>("CPLSetConfigOption")(name, value);
}

__attribute__((visibility("default"))) void osg::setNotifyHandler(NotifyHandler* p_handler)
{
    note("messages of OpenSceneGraph");
    library_function<void(NotifyHandler*)>("_ZN3osg16setNotifyHandlerEPNS_13NotifyHandlerE")(p_handler);
}
