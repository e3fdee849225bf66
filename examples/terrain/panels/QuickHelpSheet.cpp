#include "panels/QuickHelpSheet.h"

#include <tarqa/housekeeping/QuickHelpInputModelFilter.h>
#include <tarqa/housekeeping/QuickHelpManager.h>

#include <QtCore/QAbstractListModel>

namespace terrain {

namespace {

const housekeeping::QuickHelpManager& manager()
{
    return housekeeping::QuickHelpManager::const_instance();
}

} // namespace

QuickHelpSheet::QuickHelpSheet(QObject* p_parent)
    : QObject(p_parent)
    , m_document(housekeeping::DocumentId::null())
{
    using housekeeping::QuickHelpSection;
    for (const QuickHelpSection section : {QuickHelpSection::CurrentTool, QuickHelpSection::View,
             QuickHelpSection::Navigator, QuickHelpSection::Selection, QuickHelpSection::Visibility,
             QuickHelpSection::Tools, QuickHelpSection::Editing, QuickHelpSection::File}) {
        QAbstractListModel* const p_model = housekeeping::QuickHelpManager::instance().sectionModel(section);
        auto* const p_filter = new housekeeping::QuickHelpInputModelFilter(m_document, this);
        p_filter->setSourceModel(p_model);
        m_filters.push_back(p_filter);
        m_sections.append(QVariantMap{{"name", p_model->headerData(0, Qt::Horizontal)},
            {"inputs", QVariant::fromValue<QObject*>(p_filter)}});
    }
    const auto only_ours = [this](void (QuickHelpSheet::*changed)()) {
        return [this, changed](const housekeeping::DocumentId& document) {
            if (document == m_document) {
                emit(this->*changed)();
            }
        };
    };
    connect(&manager(), &housekeeping::QuickHelpManager::titleChanged, this,
        only_ours(&QuickHelpSheet::titleChanged));
    connect(&manager(), &housekeeping::QuickHelpManager::descriptionChanged, this,
        only_ours(&QuickHelpSheet::descriptionChanged));
}

void QuickHelpSheet::show_document(const housekeeping::DocumentId& document)
{
    m_document = document;
    for (housekeeping::QuickHelpInputModelFilter* const p_filter : m_filters) {
        p_filter->setDocId(document);
    }
    emit titleChanged();
    emit descriptionChanged();
}

QString QuickHelpSheet::title() const
{
    return manager().title(m_document);
}

QString QuickHelpSheet::description() const
{
    return manager().description(m_document);
}

int QuickHelpSheet::rows() const
{
    int rows = 0;
    for (const housekeeping::QuickHelpInputModelFilter* const p_filter : m_filters) {
        rows += p_filter->rowCount();
    }
    return rows;
}

} // namespace terrain
