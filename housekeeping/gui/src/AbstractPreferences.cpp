#include <tarqa/housekeeping/gui/AbstractPreferences.h>

namespace tarqa::housekeeping::gui {

AbstractPreferences::AbstractPreferences(QWidget* p_parent)
    : QWidget(p_parent)
{ }

AbstractPreferences::~AbstractPreferences() = default;

bool AbstractPreferences::isValidPanel()
{
    return true;
}

void AbstractPreferences::accept() { }

void AbstractPreferences::aboutToShow() { }

void AbstractPreferences::read(const std::string&) { }

void AbstractPreferences::write(const std::string&) { }

} // namespace tarqa::housekeeping::gui
