#include "PanelFixture.h"

#include "support/LogCapture.h"

#include <QtCore/QSettings>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

#include <stdexcept>

namespace {

const char* const s_group = "Q4DAbstractControlPanel";
const char* const s_source = "housekeeping/gui/src/AbstractMainWindow";

} // namespace

void PrintTo(const QPoint& point, std::ostream* p_stream)
{
    *p_stream << point.x() << ", " << point.y();
}

void PrintTo(const QString& text, std::ostream* p_stream)
{
    *p_stream << '"' << text.toStdString() << '"';
}

void PrintTo(const QStringList& texts, std::ostream* p_stream)
{
    *p_stream << "[\"" << texts.join("\", \"").toStdString() << "\"]";
}

void settle()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

Panels::Panels()
{
    QCoreApplication::setOrganizationName("Maker");
    QCoreApplication::setApplicationName("Program");
    m_window = std::make_unique<PanelWindow>();
}

Panels::~Panels() = default;

QWidget* Panels::make_panel(const QString& title)
{
    auto* const p_panel = new QWidget;
    p_panel->setWindowTitle(title);
    auto* const p_layout = new QVBoxLayout(p_panel);
    p_layout->addWidget(new QLabel(title, p_panel));
    p_layout->addStretch();
    return p_panel;
}

QWidget* Panels::add(const QString& title)
{
    QWidget* const p_panel = make_panel(title);
    m_window->addPanel(p_panel, QString());
    return p_panel;
}

QWidget* Panels::add_floating(const QString& title)
{
    QWidget* const p_panel = add(title);
    m_window->tear_off(title);
    return p_panel;
}

PanelWindow::ChildDockWidget& Panels::float_of(QWidget* p_panel)
{
    PanelWindow::ChildDockWidget* const p_window = m_window->window_of(p_panel);
    if (!p_window) {
        throw std::runtime_error("the panel does not float");
    }
    return *p_window;
}

void Panels::restart()
{
    m_window.reset();
    support::LogCapture log;
    m_window = std::make_unique<PanelWindow>();
    // The old window is still the one that is known.
    EXPECT_TRUE(log.took_assert("m_instance == 0", "AbstractMainWindow", s_source));
}

QVariant Panels::stored(const QString& key)
{
    QSettings settings;
    settings.beginGroup(s_group);
    return settings.value(key);
}

void Panels::store(const QString& key, const QVariant& value)
{
    QSettings settings;
    settings.beginGroup(s_group);
    settings.setValue(key, value);
}

QStringList Panels::stored_keys()
{
    QStringList keys = QSettings().allKeys();
    keys.sort();
    const QString prefix = QString(s_group) + "/";
    for (QString& key : keys) {
        EXPECT_TRUE(key.startsWith(prefix)) << "outside the group: " << key.toStdString();
        key.remove(0, prefix.size());
    }
    return keys;
}
