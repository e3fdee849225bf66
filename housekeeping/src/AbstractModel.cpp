#include <tarqa/housekeeping/AbstractModel.h>

#include "Assertion.h"

#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/DocumentManager.h>

namespace tarqa::housekeeping {

namespace {

const char* const s_source = "housekeeping/src/AbstractModel";

} // namespace

AbstractModel::AbstractModel()
{
    m_id = DocumentManager::instance().createId(); // a placeholder that no document carries
}

AbstractModel::~AbstractModel() = default;

void AbstractModel::close() { }

void AbstractModel::set_parent_document(AbstractDocument& document)
{
    m_id = document.id();
}

AbstractDocument& AbstractModel::parent_document() const
{
    HK_ASSERT(m_id != DocumentId::null(), "m_id != DocumentId::null()");
    return DocumentManager::instance().document_from_id(m_id);
}

bool AbstractModel::parent_document_exists() const
{
    return m_id != DocumentId::null() && DocumentManager::instance().document_exists(m_id);
}

} // namespace tarqa::housekeeping
