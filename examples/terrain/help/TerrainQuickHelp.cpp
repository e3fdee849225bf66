#include "help/TerrainQuickHelp.h"

#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "help/Bindings.h"
#include "io/ReferenceSystem.h"

#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/QuickHelpDescriptionEntry.h>
#include <tarqa/housekeeping/QuickHelpKeySequenceEntry.h>
#include <tarqa/housekeeping/QuickHelpMouseButtonEntry.h>
#include <tarqa/housekeeping/QuickHelpMouseWheelEntry.h>
#include <tarqa/housekeeping/QuickHelpTitleEntry.h>

#include <algorithm>

namespace terrain {

namespace {

bool is_for_document(const KeyBinding& binding)
{
    return binding.scope != Scope::Program;
}

/// What the raster is, as far as commands do not change it.
QString facts(const TerrainDocument& document)
{
    const Raster& raster = document.terrain().raster();
    QStringList facts{
        QObject::tr("%1 × %2 cells").arg(QString::number(raster.columns), QString::number(raster.rows))};
    if (document.datasource()) {
        facts.append(QObject::tr("heights in %1").arg(document.datasource()->z_units_string()));
    }
    const std::string system = reference_system_name(raster.reference_system);
    if (!system.empty()) {
        facts.append(QString::fromStdString(system));
    }
    return facts.join(", ");
}

} // namespace

TerrainQuickHelp::TerrainQuickHelp()
{
    const auto everywhere = housekeeping::DocumentId::null();
    add(everywhere, false);
    add_texts(everywhere, QString::fromStdString(pkBase::pkProductInfo::const_instance().marketing_name()),
        tr("Open an elevation raster to see its relief."));
}

TerrainQuickHelp::TerrainQuickHelp(const TerrainDocument& document)
{
    add(document.id(), true);
    for (const MouseBinding& binding : mouse_bindings()) {
        housekeeping::AbstractQuickHelpEntry* p_entry = nullptr;
        if (binding.button == Qt::NoButton) {
            p_entry = new housekeeping::QuickHelpMouseWheelEntry(
                this, document.id(), housekeeping::WheelEither, binding.description, binding.section);
        } else {
            p_entry = new housekeeping::QuickHelpMouseButtonEntry(
                this, document.id(), binding.button, binding.description, binding.section);
        }
        p_entry->setAttached(true);
    }
    add_texts(document.id(), QString::fromStdString(document.short_title()), facts(document));
}

int TerrainQuickHelp::rows(bool with_document)
{
    const auto& keys = key_bindings();
    const auto for_documents = std::count_if(keys.begin(), keys.end(), &is_for_document);
    return static_cast<int>(with_document ? keys.size() + mouse_bindings().size()
                                          : keys.size() - static_cast<std::size_t>(for_documents));
}

void TerrainQuickHelp::add(const housekeeping::DocumentId& document, bool for_document)
{
    for (const KeyBinding& binding : key_bindings()) {
        if (is_for_document(binding) == for_document) {
            auto* const p_entry = new housekeeping::QuickHelpKeySequenceEntry(
                this, document, binding.keys, binding.description, binding.section);
            p_entry->setAttached(true);
        }
    }
}

void TerrainQuickHelp::add_texts(
    const housekeeping::DocumentId& document, const QString& title, const QString& text)
{
    (new housekeeping::QuickHelpTitleEntry(this, document, title))->setAttached(true);
    (new housekeeping::QuickHelpDescriptionEntry(this, document, text))->setAttached(true);
}

} // namespace terrain
