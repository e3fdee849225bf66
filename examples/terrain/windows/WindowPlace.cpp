#include "windows/WindowPlace.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtWidgets/QWidget>

#include <algorithm>

namespace terrain {

namespace {

bool is_on_screen(const QWidget& window)
{
    const QList<QScreen*> screens = QGuiApplication::screens();
    return std::any_of(screens.begin(), screens.end(), [&window](const QScreen* p_screen) {
        return p_screen->availableGeometry().intersects(window.frameGeometry());
    });
}

} // namespace

void restore_place(QWidget& window, const QByteArray& geometry)
{
    const QSize size = window.size();
    if (!window.restoreGeometry(geometry) || is_on_screen(window)) {
        return;
    }
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QRect place(QPoint(), size.boundedTo(screen.size()));
    place.moveCenter(screen.center());
    window.setGeometry(place);
}

} // namespace terrain
