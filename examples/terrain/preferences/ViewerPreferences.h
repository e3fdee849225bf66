#pragma once

#include "preferences/SettingsPage.h"

namespace terrain {

/// The page of how maps and three-dimensional views look. Main thread.
class ViewerPreferences : public SettingsPage
{
    Q_OBJECT

public:
    static const char* const product_name;

    explicit ViewerPreferences(QWidget* p_parent = nullptr);

private:
    void add_map_settings();
    void add_selection_settings();
    void add_symbol_settings();
    void add_three_dimensional_settings();
};

} // namespace terrain
