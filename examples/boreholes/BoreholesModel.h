#pragma once

#include "Borehole.h"

#include <tarqa/housekeeping/AbstractModel.h>

namespace boreholes {

namespace housekeeping = tarqa::housekeeping;

/// The boreholes of a document, in the order of the table. Only commands change them, but for a file that is
/// opened. It tells nobody: the controller sees when a command has ended. Main thread.
class BoreholesModel : public housekeeping::AbstractModel
{
public:
    bool empty() const override { return m_boreholes.empty(); }
    unsigned long long size() const override { return m_boreholes.size(); }
    void clear() override { m_boreholes.clear(); }
    const std::string& document_type() const override;
    // There is no database behind the boreholes.
    void setupDatabase(const QString&) override { }
    void mergeDatabase(const QString&) override { }
    QString getDatabasePath() override { return {}; }

    const Boreholes& boreholes() const { return m_boreholes; }
    void boreholes(const Boreholes& boreholes) { m_boreholes = boreholes; }

    /// Puts a borehole in front of the one at @p index, which is at most size().
    void insert(unsigned long long index, const Borehole& borehole);
    /// Takes out the one at @p index, which exists.
    void remove(unsigned long long index);
    bool contains(const QString& name) const;

private:
    Boreholes m_boreholes;
};

} // namespace boreholes
