#pragma once

#include <QtGui/QRgb>

namespace terrain {

/// The colour of a height: from green lowlands over sand and brown to white peaks.
/// @param fraction where the height lies between the lowest (0) and the highest one (1)
QRgb elevation_colour(double fraction);

} // namespace terrain
