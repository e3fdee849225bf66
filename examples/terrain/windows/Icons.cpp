#include "windows/Icons.h"

#include <QtCore/QFile>
#include <QtCore/QThread>
#include <QtGui/QIconEngine>
#include <QtGui/QPainter>
#include <QtGui/QPalette>
#include <QtGui/QPixmapCache>
#include <QtSvg/QSvgRenderer>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>

#include <algorithm>

namespace terrain {

namespace {

const char* const s_path = ":/tarq/Resources/icons/%1.svg";

QString path_of(const QString& name)
{
    return QString(s_path).arg(name);
}

/// Whether an open menu has an entry with the icon of @p name under the pointer. Styles ask for its icon as
/// for that of a button under the pointer, but draw it on the colour of what is selected.
bool is_chosen_in_menu(const QString& name)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::any_of(windows.begin(), windows.end(), [&name](const QWidget* p_window) {
        const auto* const p_menu = qobject_cast<const QMenu*>(p_window);
        const QAction* const p_entry = p_menu && p_menu->isVisible() ? p_menu->activeAction() : nullptr;
        return p_entry && p_entry->icon().name() == name;
    });
}

/// As the palette has it now.
QColor colour_of(const QString& name, QIcon::Mode mode)
{
    const QPalette palette = QApplication::palette();
    if (mode == QIcon::Disabled) {
        return palette.color(QPalette::Disabled, QPalette::ButtonText);
    }
    const bool selected = mode == QIcon::Selected || (mode == QIcon::Active && is_chosen_in_menu(name));
    return palette.color(QPalette::Active, selected ? QPalette::HighlightedText : QPalette::ButtonText);
}

/// Whether pixmaps may be made here and now.
bool may_draw()
{
    const QCoreApplication* const p_application = QCoreApplication::instance();
    return qobject_cast<const QApplication*>(p_application)
        && QThread::currentThread() == p_application->thread();
}

/// @param size in pixels of the screen
QPixmap draw(const QString& name, const QSize& size, const QColor& colour)
{
    QSvgRenderer drawing(path_of(name));
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    const double side = std::min(size.width(), size.height());
    drawing.render(&painter, QRectF((size.width() - side) / 2, (size.height() - side) / 2, side, side));
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn); // keeps the shape of what was black
    painter.fillRect(pixmap.rect(), colour);
    return pixmap;
}

/// Draws a picture for each size, ratio and colour once.
class IconEngine : public QIconEngine
{
public:
    explicit IconEngine(const QString& name)
        : m_name(name)
    { }

    QIconEngine* clone() const override { return new IconEngine(m_name); }
    QString key() const override { return "terrain"; }
    QString iconName() const override { return m_name; }
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) const override
    {
        return {QSize(16, 16), QSize(24, 24), QSize(32, 32), QSize(48, 48)};
    }

    void paint(QPainter* p_painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        const double ratio = p_painter->device()->devicePixelRatioF();
        p_painter->drawPixmap(rect, picture(rect.size() * ratio, mode, ratio));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override
    {
        return picture(size, mode, 1);
    }

    void virtual_hook(int id, void* p_data) override
    {
        if (id != ScaledPixmapHook) { // which the base would answer with another call of pixmap()
            QIconEngine::virtual_hook(id, p_data);
            return;
        }
        auto& argument = *static_cast<ScaledPixmapArgument*>(p_data);
        argument.pixmap = picture(argument.size, argument.mode, argument.scale);
    }

private:
    /// @param size in pixels of the screen
    QPixmap picture(const QSize& size, QIcon::Mode mode, double ratio) const
    {
        QPixmap pixmap;
        if (size.isEmpty() || !may_draw()) {
            return pixmap;
        }
        const QColor colour = colour_of(m_name, mode);
        const QString cache_key = QString("terrain/%1/%2x%3/%4/%5")
                                      .arg(m_name)
                                      .arg(size.width())
                                      .arg(size.height())
                                      .arg(ratio)
                                      .arg(colour.name(QColor::HexArgb));
        if (!QPixmapCache::find(cache_key, &pixmap)) {
            pixmap = draw(m_name, size, colour);
            pixmap.setDevicePixelRatio(ratio);
            QPixmapCache::insert(cache_key, pixmap);
        }
        return pixmap;
    }

    QString m_name;
};

} // namespace

QIcon icon(const QString& name)
{
    return QFile::exists(path_of(name)) ? QIcon(new IconEngine(name)) : QIcon();
}

} // namespace terrain
