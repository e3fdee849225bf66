#include "tour/TourLooks.h"

#include "documents/Raster.h"
#include "documents/RasterSummary.h"
#include "documents/TerrainModel.h"
#include "panels/HistoryModel.h"
#include "panels/HistoryPanel.h"
#include "views/TerrainView.h"
#include "windows/MainWindow.h"

#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>

#include <QtCore/QFileInfo>
#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtWidgets/QAction>

#include <algorithm>

namespace terrain {

namespace {

const int s_many_colours = 40;
const int s_sampling = 7; ///< pixels

bool shows_heights(TerrainView& view)
{
    const QImage picture = view.grab().toImage();
    QSet<double> heights;
    QSet<QRgb> colours;
    for (int y = 0; y < view.height(); y += s_sampling) {
        for (int x = 0; x < view.width(); x += s_sampling) {
            const auto reading = view.reading(QPointF(x + 0.5, y + 0.5));
            if (reading && !is_no_data(reading->height)) {
                heights.insert(reading->height);
                colours.insert(picture.pixel(QPoint(x, y) * picture.devicePixelRatio()));
            }
        }
    }
    colours.remove(view.palette().color(QPalette::Base).rgb());
    return !heights.isEmpty() && colours.size() >= std::min(heights.size(), s_many_colours);
}

} // namespace

TourCheck document_count_is(unsigned long long expected)
{
    const auto documents = housekeeping::DocumentManager::const_instance().num_documents();
    return {
        QObject::tr("open documents: %1, expected %2").arg(documents).arg(expected), documents == expected};
}

TourCheck title_names(const MainWindow& window, const QString& file)
{
    const QString name = QFileInfo(file).fileName();
    return {QObject::tr("the title \"%1\" holds \"%2\"").arg(window.windowTitle(), name),
        window.windowTitle().contains(name)};
}

TourCheck relief_is_drawn(const MainWindow& window)
{
    return {QObject::tr("the relief is drawn"), window.view() && shows_heights(*window.view())};
}

TourCheck entry_count_is(const MainWindow& window, int expected)
{
    const int entries = window.history().model().commands();
    return {QObject::tr("the history has %1 entries, expected %2").arg(entries).arg(expected),
        entries == expected};
}

TourCheck undo_names(const QString& command)
{
    const QString expected = QString("%1 %2").arg(undo_word("&Undo"), command).trimmed();
    auto& undo_redo = *housekeeping::gui::UndoRedoPresentation::instance();
    return is_text(QObject::tr("the undo entry"), undo_redo.undo_action()->text(), expected);
}

TourCheck is_text(const QString& what, const QString& text, const QString& expected)
{
    return {QObject::tr("%1 reads \"%2\", expected \"%3\"").arg(what, text, expected), text == expected};
}

QString undo_word(const char* text)
{
    return housekeeping::gui::UndoRedoPresentation::tr(text);
}

std::string current_cells()
{
    const auto current = housekeeping::DocumentManager::const_instance().current_document_id();
    return checksum(TerrainModel::of(current).raster());
}

QPoint interesting_point(const TerrainView& view)
{
    const QPoint middle = view.rect().center();
    for (int away = 0; away < middle.x(); away += 5) {
        const QPoint point = middle - QPoint(away, away / 3);
        const auto reading = view.reading(point);
        if (reading && !is_no_data(reading->height)) {
            return point;
        }
    }
    return middle;
}

} // namespace terrain
