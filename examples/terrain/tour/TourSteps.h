#pragma once

#include "tour/Gate.h"
#include "tour/TourReport.h"

#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>
#include <QtGui/QColor>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QWidget>

#include <string>
#include <vector>

class QDialog;

namespace terrain {

class MainWindow;

/// What the steps of a tour work with.
struct TourStage
{
    /// Makes the sample rasters. @param given the raster to show; "" for a sample
    /// @throws housekeeping::InvalidPath if a sample cannot be written
    TourStage(MainWindow& main_window, const QString& given);
    /// Abandons a command that is still running.
    ~TourStage();
    TourStage(const TourStage&) = delete;
    TourStage& operator=(const TourStage&) = delete;

    MainWindow& window;
    QTemporaryDir samples;
    QString first_file;
    QString second_file;
    double first_scale = 0; ///< of the first map, when it was new
    QString first_reading; ///< under the pointer then
    std::string first_cells; ///< checksum of the first raster, when it was new
    std::string cells; ///< checksum before the command of the step
    std::size_t cell_count = 0; ///< how many those were
    std::string triangulated_cells; ///< checksum of those that were triangulated
    int commands = 0; ///< that the history of the first document lists
    double heading = 0; ///< where one looked to in three dimensions, before the step
    double exaggeration = 0; ///< of the heights then
    int frames = 0; ///< of the terrain that were drawn when its picture was looked at last
    bool scene_is_varied = false; ///< that picture
    QStringList exports; ///< files to be written, the next one first
    QColor background; ///< of maps, as it was
    QPointer<QWidget> own_window; ///< what the step opened
    Gate gate; ///< in the way of the commands' progress
};

/// Of what a step leaves a picture.
enum class TourPicture
{
    Window,
    AllWindows, ///< the main window, and what floats or has popped up
    OwnWindow ///< what the step has opened, by itself
};

/// Something the tour does, and what is to be seen then.
struct TourStep
{
    const char* name; ///< part of the picture's file name
    TourPicture picture;
    void (*act)(TourStage& stage);
    /// Called until all results are true or the patience ends.
    std::vector<TourCheck> (*look)(TourStage& stage);
    /// To the question that the step leads to; none is expected without.
    QMessageBox::StandardButton answer = QMessageBox::NoButton;
    /// Whether the step opens a dialog, or a question with an answer, which is looked at while it is open and
    /// ended then.
    bool in_dialog = false;
    /// Fills in each dialog that the step leads to, which is accepted then; without, a dialog is closed.
    void (*fill_in)(TourStage& stage, QDialog& dialog) = nullptr;
};

/// In their order.
const std::vector<TourStep>& tour_steps();

QImage picture_of(TourPicture kind, const TourStage& stage);

/// Whether there is anything to see in a picture but a few flat colours.
bool is_varied(const QImage& picture);

} // namespace terrain
