#pragma once

#include "Borehole.h"

#include <QtCore/QPointF>

#include <optional>

class QWidget;

namespace boreholes {

class BoreholesController;

/// Asks the user for a new borehole; none if the user cancels. Lengths are shown in the controller's unit.
/// @param place the proposed place in metres @param p_parent the window below the dialog
std::optional<Borehole> ask_for_borehole(
    const BoreholesController& controller, const QPointF& place, QWidget* p_parent);

} // namespace boreholes
