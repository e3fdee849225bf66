#pragma once

#include "preferences/SettingsPage.h"

namespace terrain {

/// The page of what concerns the whole program: mouse, network, help, objects. Main thread.
class GeneralPreferences : public SettingsPage
{
    Q_OBJECT

public:
    static const char* const product_name;

    explicit GeneralPreferences(QWidget* p_parent = nullptr);

private:
    void add_program_settings();
    void add_object_settings();
    void add_settings_of_the_session();
};

} // namespace terrain
