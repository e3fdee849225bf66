#include <tarqa/housekeeping/QuickHelpManager.h>

#include "QuickHelpInputModel.h"

#include <tarqa/housekeeping/AbstractQuickHelpInputEntry.h>
#include <tarqa/housekeeping/QuickHelpDescriptionEntry.h>
#include <tarqa/housekeeping/QuickHelpTitleEntry.h>

namespace tarqa::housekeeping {

const QString QuickHelpManager::EMPTY;

QuickHelpManager::QuickHelpManager()
    : m_models{new QuickHelpInputModel(tr("Current Tool"), this), new QuickHelpInputModel(tr("View"), this),
        new QuickHelpInputModel(tr("Navigator"), this), new QuickHelpInputModel(tr("Selection"), this),
        new QuickHelpInputModel(tr("Visibility"), this), new QuickHelpInputModel(tr("Tools"), this),
        new QuickHelpInputModel(tr("Editing"), this), new QuickHelpInputModel(tr("File"), this)}
{ }

QuickHelpManager::~QuickHelpManager() = default;

pkBase::pkSingleton<QuickHelpManager>& QuickHelpManager::get_instance()
{
    static pkBase::pkSingleton<QuickHelpManager> s_holder(
        pkBase::pkDestructionPhase(4), &QuickHelpManager::destroy_instance);
    return s_holder;
}

QuickHelpManager& QuickHelpManager::instance()
{
    return get_instance().get();
}

const QuickHelpManager& QuickHelpManager::const_instance()
{
    return instance();
}

void QuickHelpManager::destroy_instance()
{
    get_instance().destroy();
}

QuickHelpEntryId QuickHelpManager::createNextId()
{
    return m_next_id++;
}

QuickHelpInputModel* QuickHelpManager::model(const QuickHelpSection& section) const
{
    const auto index = static_cast<unsigned int>(section);
    return index < s_sections ? m_models[index] : nullptr;
}

QAbstractListModel* QuickHelpManager::sectionModel(const QuickHelpSection& section)
{
    return model(section);
}

bool QuickHelpManager::addToModel(AbstractQuickHelpInputEntry* p_entry)
{
    QuickHelpInputModel* const p_model = p_entry ? model(p_entry->section()) : nullptr;
    return p_model && p_model->addInput(p_entry);
}

bool QuickHelpManager::removeFromModel(const QuickHelpSection& section, QuickHelpEntryId id)
{
    QuickHelpInputModel* const p_model = model(section);
    return p_model && p_model->removeInput(id);
}

void QuickHelpManager::removeFromAllModels(const AbstractQuickHelpInputEntry* p_entry)
{
    for (QuickHelpInputModel* const p_model : m_models) {
        if (p_model->holds(p_entry)) {
            p_model->removeInput(p_entry->id());
        }
    }
}

void QuickHelpManager::forgetInAllModels(const AbstractQuickHelpInputEntry* p_entry)
{
    for (QuickHelpInputModel* const p_model : m_models) {
        if (p_model->holds(p_entry)) {
            p_model->forgetInput(p_entry->id());
        }
    }
}

bool QuickHelpManager::addTitle(const DocumentId& document, QuickHelpTitleEntry* p_entry)
{
    if (!p_entry) {
        return false;
    }
    if (!m_titles.contains(document, p_entry)) {
        m_titles.insert(document, p_entry);
    }
    emit titleChanged(document, p_entry->description());
    return true;
}

bool QuickHelpManager::removeTitle(const DocumentId& document, QuickHelpTitleEntry* p_entry)
{
    if (m_titles.remove(document, p_entry) == 0) {
        return false;
    }
    emit titleChanged(document, title(document));
    return true;
}

bool QuickHelpManager::addDescription(const DocumentId& document, QuickHelpDescriptionEntry* p_entry)
{
    if (!p_entry) {
        return false;
    }
    if (!m_descriptions.contains(document, p_entry)) {
        m_descriptions.insert(document, p_entry);
        connect(p_entry, SIGNAL(descriptionChanged(QString)), this, SLOT(onDescriptionChanged()));
        connect(p_entry, SIGNAL(visibleChanged(bool)), this, SLOT(onDescriptionChanged()));
    }
    emit descriptionChanged(document, p_entry->description());
    return true;
}

bool QuickHelpManager::removeDescription(const DocumentId& document, QuickHelpDescriptionEntry* p_entry)
{
    if (m_descriptions.remove(document, p_entry) == 0) {
        return false;
    }
    disconnect(p_entry, SIGNAL(descriptionChanged(QString)), this, SLOT(onDescriptionChanged()));
    disconnect(p_entry, SIGNAL(visibleChanged(bool)), this, SLOT(onDescriptionChanged()));
    emit descriptionChanged(document, description(document));
    return true;
}

const QString& QuickHelpManager::title(const DocumentId& document) const
{
    const auto iter = m_titles.constFind(document);
    return iter == m_titles.constEnd() ? EMPTY : iter.value()->description();
}

const QString& QuickHelpManager::description(const DocumentId& document) const
{
    const auto iter = m_descriptions.constFind(document);
    const bool shown = iter != m_descriptions.constEnd() && iter.value()->visible();
    return shown ? iter.value()->description() : EMPTY;
}

void QuickHelpManager::onDescriptionChanged()
{
    const auto* const p_entry = qobject_cast<QuickHelpDescriptionEntry*>(sender());
    if (p_entry) {
        emit descriptionChanged(p_entry->documentId(), description(p_entry->documentId()));
    }
}

} // namespace tarqa::housekeeping
