#include "help/TerrainQuickHelp.h"

#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "help/Bindings.h"
#include "io/ReferenceSystem.h"
#include "language/UnitText.h"

#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/QuickHelpDescriptionEntry.h>
#include <tarqa/housekeeping/QuickHelpKeySequenceEntry.h>
#include <tarqa/housekeeping/QuickHelpMouseButtonEntry.h>
#include <tarqa/housekeeping/QuickHelpMouseWheelEntry.h>
#include <tarqa/housekeeping/QuickHelpTitleEntry.h>

#include <algorithm>
#include <iterator>
#include <vector>

namespace terrain {

namespace {

/// The bindings that have a key, of a document or of the program.
std::vector<KeyBinding> bindings(bool for_document)
{
    std::vector<KeyBinding> found;
    std::copy_if(key_bindings().begin(), key_bindings().end(), std::back_inserter(found),
        [for_document](const KeyBinding& binding) {
            return !binding.keys.isEmpty() && (binding.scope != Scope::Program) == for_document;
        });
    return found;
}

/// What the raster is.
QString facts(const TerrainDocument& document)
{
    const Raster& raster = document.terrain().raster();
    QStringList facts{
        QObject::tr("%1 × %2 cells").arg(QString::number(raster.columns), QString::number(raster.rows))};
    if (document.reduction() > 1) {
        facts.append(QObject::tr("an overview, each of %1 × %1 cells").arg(document.reduction()));
    }
    if (document.datasource()) {
        facts.append(QObject::tr("heights in %1").arg(height_unit_text(document.datasource())));
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
    add_keys(everywhere, help_bindings());
    add_texts(everywhere, QString::fromStdString(pkBase::pkProductInfo::const_instance().marketing_name()),
        tr("Open an elevation raster to see its relief."));
}

TerrainQuickHelp::TerrainQuickHelp(const TerrainDocument& document)
{
    add(document.id(), true);
    add_keys(document.id(), scene_key_bindings());
    add_keys(document.id(), tool_key_bindings());
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
    housekeeping::DocumentMessage::subscribe(this, Qt::AutoConnection);
}

/// Commands may have changed the facts; while they run nobody else looks at the raster.
void TerrainQuickHelp::handle_message(housekeeping::DocumentMessage& message)
{
    if (message.doc_change_type() == housekeeping::DocumentMessage::Idle
        && message.id() == m_p_description->documentId()) {
        const auto& manager = housekeeping::DocumentManager::const_instance();
        m_p_description->setDescription(
            facts(dynamic_cast<const TerrainDocument&>(manager.document_from_id(message.id()))));
    }
}

int TerrainQuickHelp::rows(bool with_document)
{
    const std::size_t always = bindings(false).size() + help_bindings().size();
    const std::size_t for_document = bindings(true).size() + scene_key_bindings().size()
        + tool_key_bindings().size() + mouse_bindings().size();
    return static_cast<int>(with_document ? always + for_document : always);
}

void TerrainQuickHelp::add(const housekeeping::DocumentId& document, bool for_document)
{
    for (const KeyBinding& binding : bindings(for_document)) {
        auto* const p_entry = new housekeeping::QuickHelpKeySequenceEntry(
            this, document, binding.keys, binding.description, binding.section);
        p_entry->setAttached(true);
    }
}

void TerrainQuickHelp::add_keys(
    const housekeeping::DocumentId& document, const std::vector<HelpBinding>& keys)
{
    for (const HelpBinding& binding : keys) {
        (new housekeeping::QuickHelpKeySequenceEntry(
             this, document, binding.keys, binding.description, binding.section))
            ->setAttached(true);
    }
}

void TerrainQuickHelp::add_texts(
    const housekeeping::DocumentId& document, const QString& title, const QString& text)
{
    (new housekeeping::QuickHelpTitleEntry(this, document, title))->setAttached(true);
    m_p_description = new housekeeping::QuickHelpDescriptionEntry(this, document, text);
    m_p_description->setAttached(true);
}

} // namespace terrain
