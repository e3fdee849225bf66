#pragma once

#include "preferences/SettingsPage.h"

namespace terrain {

/// The page of films. Main thread.
class AnimationPreferences : public SettingsPage
{
    Q_OBJECT

public:
    static const char* const product_name;

    explicit AnimationPreferences(QWidget* p_parent = nullptr);
};

} // namespace terrain
