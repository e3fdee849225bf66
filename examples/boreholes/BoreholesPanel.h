#pragma once

#include <QtWidgets/QWidget>

class QTableWidget;

namespace boreholes {

class BoreholesController;

/// The table of the boreholes: a panel, which the main window keeps in a tab or in a window of its own.
/// Selecting a row selects the borehole. Main thread.
class BoreholesPanel : public QWidget
{
    Q_OBJECT

public:
    /// @param controller must outlive the panel
    explicit BoreholesPanel(BoreholesController& controller, QWidget* p_parent = nullptr);

    /// Fills the table anew.
    void refresh();
    int rows() const;

private:
    void choose();

    BoreholesController& m_controller; // the controller manager's
    QTableWidget* m_p_table; // a child
};

} // namespace boreholes
