#pragma once

#include <tarqa/housekeeping/InvalidPath.h>

#include <QtCore/QString>

#include <string>

namespace terrain {

/// How much memory the work on a raster takes, in bytes: its cells, those that a command makes of them, those
/// that undo keeps, and the picture. It may be more than any integer holds.
double memory_needed(int columns, int rows);

/// How much memory a raster may take, in bytes: three quarters of the machine's, unless it was set.
double memory_limit();
/// Sets another limit; 0 for that of the machine. Main thread, while nothing is read.
void memory_limit(double bytes);

/// A raster that is too large for the memory. The text tells the numbers.
class RasterTooLarge : public tarqa::housekeeping::InvalidPath
{
public:
    RasterTooLarge(const std::string& path, int columns, int rows);

    /// Of how many columns and rows one must do to make it small enough.
    int reduction() const { return m_reduction; }

private:
    int m_reduction;
};

/// How many columns or rows are left if one does for each @p reduction.
int reduced(int count, int reduction);

} // namespace terrain
