#include "style/DesktopColours.h"

#include <QtCore/QAbstractNativeEventFilter>
#include <QtCore/QCoreApplication>
#include <QtCore/QSettings>
#include <QtWidgets/QApplication>
#include <QtWidgets/QProxyStyle>
#include <QtWidgets/QStyleFactory>

#include <cwchar>

#include <windows.h>

namespace terrain {

namespace {

const char* const s_folder
    = "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize";
const char* const s_key = "AppsUseLightTheme"; ///< 0 for dark, 1 for light; older systems have none
const wchar_t* const s_colours_changed = L"ImmersiveColorSet";

/// The system's own style draws in the system's colours, which no palette changes.
void draw_in_palette_colours()
{
    if (auto* const p_style = qobject_cast<QProxyStyle*>(QApplication::style())) {
        p_style->setBaseStyle(QStyleFactory::create("fusion"));
    }
}

/// Reads the registry, and again whenever the system announces other colours.
class RegistryListener : public QObject, public QAbstractNativeEventFilter
{
public:
    explicit RegistryListener(const DesktopColoursHandler& told)
        : m_told(told)
    {
        draw_in_palette_colours();
        QCoreApplication::instance()->installNativeEventFilter(this);
        read();
    }
    ~RegistryListener() override
    {
        if (QCoreApplication* const p_application = QCoreApplication::instance()) {
            p_application->removeNativeEventFilter(this);
        }
    }

    bool nativeEventFilter(const QByteArray& type, void* p_message, long*) override
    {
        if (type == "windows_generic_MSG") {
            const MSG& message = *static_cast<const MSG*>(p_message);
            const auto* const p_area = reinterpret_cast<const wchar_t*>(message.lParam);
            if (message.message == WM_SETTINGCHANGE && p_area
                && std::wcscmp(p_area, s_colours_changed) == 0) {
                read();
            }
        }
        return false;
    }

private:
    void read() const
    {
        bool is_number = false;
        const int light = QSettings(s_folder, QSettings::NativeFormat).value(s_key).toInt(&is_number);
        m_told(!is_number    ? DesktopColours::NoPreference
                : light == 0 ? DesktopColours::Dark
                             : DesktopColours::Light);
    }

    DesktopColoursHandler m_told;
};

} // namespace

std::unique_ptr<QObject> watch_desktop_colours(const DesktopColoursHandler& told)
{
    return std::make_unique<RegistryListener>(told);
}

} // namespace terrain
