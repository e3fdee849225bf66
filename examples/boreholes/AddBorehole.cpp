#include "AddBorehole.h"

#include "BoreholesDocument.h"
#include "BoreholesModel.h"

#include <tarqa/housekeeping/FailedCommandException.h>

namespace boreholes {

namespace {

const unsigned int s_name_in_use = 1; ///< code of the failure, for the log

} // namespace

AddBorehole::AddBorehole(BoreholesDocument& document, const Borehole& borehole)
    : AbstractCommand(document.id(), tr("Add Borehole").toStdString())
    , m_document(document)
    , m_borehole(borehole)
{
    setDescription(borehole.name.toStdString());
}

/// What undo needs, and no more. Before a redo it is called again.
void AddBorehole::remember()
{
    m_index = m_document.boreholes().size();
}

void AddBorehole::do_command()
{
    if (m_document.boreholes().contains(m_borehole.name)) {
        // Whatever else is thrown here ends the program.
        throw housekeeping::FailedCommandException(s_name_in_use,
            tr("There is a borehole \"%1\" already.").arg(m_borehole.name), __FILE__, __LINE__);
    }
    m_document.boreholes().insert(m_index, m_borehole);
    m_done = true;
}

void AddBorehole::rollback()
{
    if (m_done) {
        m_document.boreholes().remove(m_index);
        m_done = false;
    }
}

/// A command that failed stays in the history, so it may be asked to undo what it has not done.
void AddBorehole::undo_command()
{
    rollback();
    m_document.set_modified(true); // the file may have been saved since
}

} // namespace boreholes
