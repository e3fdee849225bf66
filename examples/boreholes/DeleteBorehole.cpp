#include "DeleteBorehole.h"

#include "BoreholesDocument.h"
#include "BoreholesModel.h"

namespace boreholes {

DeleteBorehole::DeleteBorehole(BoreholesDocument& document, unsigned long long index)
    : AbstractCommand(document.id(), tr("Delete Borehole").toStdString())
    , m_document(document)
    , m_index(index)
{
    setDescription(document.boreholes().boreholes().at(index).name.toStdString());
}

void DeleteBorehole::remember()
{
    m_borehole = m_document.boreholes().boreholes().at(m_index);
}

void DeleteBorehole::do_command()
{
    m_document.boreholes().remove(m_index);
    m_done = true;
}

void DeleteBorehole::rollback()
{
    if (m_done) {
        m_document.boreholes().insert(m_index, m_borehole);
        m_done = false;
    }
}

void DeleteBorehole::undo_command()
{
    rollback();
    m_document.set_modified(true); // the file may have been saved since
}

} // namespace boreholes
