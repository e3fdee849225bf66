#pragma once

#include "Borehole.h"

#include <tarqa/housekeeping/AbstractCommand.h>

namespace boreholes {

namespace housekeeping = tarqa::housekeeping;

class BoreholesDocument;

/// Takes a borehole out of the list. The undo history of the document owns it.
class DeleteBorehole : public housekeeping::AbstractCommand
{
    Q_DECLARE_TR_FUNCTIONS(boreholes::DeleteBorehole)

public:
    /// @param index of the borehole, which exists
    DeleteBorehole(BoreholesDocument& document, unsigned long long index);

    void rollback() override;

protected:
    void remember() override;
    void do_command() override;
    void undo_command() override;

private:
    BoreholesDocument& m_document; // not owned; owns this command
    unsigned long long m_index;
    Borehole m_borehole; // what was there: all that undo needs
    bool m_done = false;
};

} // namespace boreholes
