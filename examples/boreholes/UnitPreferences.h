#pragma once

#include <tarqa/housekeeping/gui/AbstractPreferences.h>

class QComboBox;

namespace boreholes {

namespace housekeeping = tarqa::housekeeping;

/// A page of the preferences: the unit of the lengths that are shown. The dialog makes it through its
/// factory, which is in the source file, and owns it. Main thread.
class UnitPreferences : public housekeeping::gui::AbstractPreferences
{
    Q_OBJECT

public:
    explicit UnitPreferences(QWidget* p_parent = nullptr);

    /// Gives the controller what was stored; at start-up.
    static void apply_stored();

    void accept() override;
    void aboutToShow() override;

private:
    QComboBox* m_p_unit; // a child
};

} // namespace boreholes
