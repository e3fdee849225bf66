#pragma once

#include "commands/ResampleCommand.h"
#include "windows/ParameterDialog.h"

namespace terrain {

/**
 * Asks how large the cells are to be, and how their heights come about. The size is a factor, and beside it,
 * if the unit is known, a length or an angle; each follows the other. Main thread.
 */
class ResampleDialog : public ParameterDialog
{
    Q_OBJECT

public:
    /// @param raster as it is now; not needed any more afterwards
    ResampleDialog(const Raster& raster, double factor, Resampling method, QWidget* p_parent = nullptr);

    double factor() const { return m_factor; }
    Resampling method() const;

private:
    /// What a cell measures.
    struct CellSize
    {
        double width = 0;
        double height = 0;
        QString unit; ///< empty if the size is unknown
    };
    static CellSize cell_size(const Raster& raster);
    static std::vector<Parameter> parameters(const CellSize& cell, double factor, Resampling method);

    ResampleDialog(
        const Raster& raster, const CellSize& cell, double factor, Resampling method, QWidget* p_parent);

    bool has_size() const { return !m_cell.unit.isEmpty(); }
    void follow_factor(double factor);
    void follow_width(double width);
    void show_result();

    CellSize m_cell; // of the raster as it is
    int m_columns;
    int m_rows;
    double m_factor;
};

} // namespace terrain
