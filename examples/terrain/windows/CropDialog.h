#pragma once

#include "commands/CropCommand.h"
#include "windows/ParameterDialog.h"

namespace terrain {

/// Asks for the columns and rows to keep. A button proposes those that hold all data. Main thread.
class CropDialog : public ParameterDialog
{
    Q_OBJECT

public:
    /// Proposes the whole raster. @param raster as it is now; not needed any more afterwards
    explicit CropDialog(const Raster& raster, QWidget* p_parent = nullptr);

    CellRange range() const;
    void range(const CellRange& range);

private:
    void show_result();

    int m_columns;
    int m_rows;
    std::optional<CellRange> m_data;
};

} // namespace terrain
