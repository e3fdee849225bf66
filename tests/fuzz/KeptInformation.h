#pragma once

#include <tarqa/housekeeping/AbstractDataInformation.h>

#include <QtCore/QStringList>

namespace fuzz {

/// Settings that are nothing but a list of texts, whatever they are. Registered as "kept"; no default.
class KeptInformation : public tarqa::housekeeping::AbstractDataInformation
{
public:
    static const char* const product_name;
    /// Registers it, once in a process.
    static void register_factory();

    KeptInformation();

    void info(const QStringList& list, int first) override { m_entries = list.mid(first); }
    QStringList info() override { return m_entries; }

protected:
    /// The number of entries, and each on a line of its own.
    std::istream& serialise(std::istream& stream) override;
    std::ostream& serialise(std::ostream& stream) const override;

private:
    QStringList m_entries;
};

} // namespace fuzz
