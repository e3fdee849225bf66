#pragma once

#include "preferences/SettingsPage.h"

class QComboBox;
class QLabel;

namespace terrain {

/// The page of how much the computer is given to do. It shows what the user has set, and says where the
/// graphics cannot carry it. Main thread.
class PerformancePreferences : public SettingsPage
{
    Q_OBJECT

public:
    static const char* const product_name;

    explicit PerformancePreferences(QWidget* p_parent = nullptr);

protected:
    void read(const std::string& path) override;
    void write(const std::string& path) override;

private:
    void tell_quality_in_use();

    QComboBox* m_p_quality; // a child
    QLabel* m_p_quality_in_use; // a child
};

} // namespace terrain
