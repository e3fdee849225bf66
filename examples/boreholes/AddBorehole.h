#pragma once

#include "Borehole.h"

#include <tarqa/housekeeping/AbstractCommand.h>

namespace boreholes {

namespace housekeeping = tarqa::housekeeping;

class BoreholesDocument;

/// Adds a borehole at the end of the list. Fails, which the user is told, if there is one of that name
/// already. The undo history of the document owns it.
class AddBorehole : public housekeeping::AbstractCommand
{
    Q_DECLARE_TR_FUNCTIONS(boreholes::AddBorehole)

public:
    AddBorehole(BoreholesDocument& document, const Borehole& borehole);

    void rollback() override;

protected:
    void remember() override;
    void do_command() override;
    void undo_command() override;

private:
    BoreholesDocument& m_document; // not owned; owns this command
    Borehole m_borehole;
    unsigned long long m_index = 0; // where it goes
    bool m_done = false;
};

} // namespace boreholes
