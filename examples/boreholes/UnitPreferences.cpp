#include "UnitPreferences.h"

#include "BoreholesController.h"

#include <tarqa/housekeeping/gui/AbstractPreferencesFactory.h>

#include <QtCore/QSettings>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFormLayout>

#include <boost/make_shared.hpp>

namespace boreholes {

namespace gui = housekeeping::gui;

namespace {

const char* const s_key = "units/feet";

class UnitPreferencesFactory : public gui::AbstractPreferencesFactory
{
public:
    UnitPreferencesFactory()
        : AbstractPreferencesFactory("UnitPreferences", false)
    { }
    boost::shared_ptr<gui::AbstractPreferences> create_product() override
    {
        return boost::make_shared<UnitPreferences>();
    }
    gui::AbstractPreferences* create_unmanaged_product() override { return new UnitPreferences; }
};

const UnitPreferencesFactory s_factory; // registers itself

} // namespace

UnitPreferences::UnitPreferences(QWidget* p_parent)
    : AbstractPreferences(p_parent)
    , m_p_unit(new QComboBox)
{
    label(tr("Units"));
    m_p_unit->addItem(tr("Metres"), static_cast<int>(BoreholesController::Unit::Metres));
    m_p_unit->addItem(tr("Feet"), static_cast<int>(BoreholesController::Unit::Feet));
    auto* const p_form = new QFormLayout(this);
    p_form->addRow(tr("&Lengths in:"), m_p_unit);
}

void UnitPreferences::apply_stored()
{
    const bool feet = QSettings().value(s_key, false).toBool();
    BoreholesController::instance().unit(
        feet ? BoreholesController::Unit::Feet : BoreholesController::Unit::Metres);
}

/// "Apply": the views follow at once, as the controller tells them.
void UnitPreferences::accept()
{
    const auto unit = static_cast<BoreholesController::Unit>(m_p_unit->currentData().toInt());
    QSettings().setValue(s_key, unit == BoreholesController::Unit::Feet);
    BoreholesController::instance().unit(unit);
}

void UnitPreferences::aboutToShow()
{
    m_p_unit->setCurrentIndex(m_p_unit->findData(static_cast<int>(BoreholesController::instance().unit())));
}

} // namespace boreholes
