#pragma once

#include <tarqa/housekeeping/AbstractModel.h>
#include <tarqa/testkit/tq_hk_testkit_export.h>

#include <map>
#include <string>

namespace tarqa::housekeeping::testkit {

/// A model of named values, for FakeDocument, which makes and owns it. No database: the path is only kept.
class TQ_HK_TESTKIT_EXPORT FakeModel : public AbstractModel
{
public:
    /// The values by their names.
    typedef std::map<std::string, std::string> Values;

    FakeModel();
    ~FakeModel() override;

    bool empty() const override;
    /// The number of values.
    unsigned long long size() const override;
    void clear() override;
    /// "Fake".
    const std::string& document_type() const override;
    void setupDatabase(const QString& path) override;
    void mergeDatabase(const QString& path) override;
    QString getDatabasePath() override;

    /// The values, to look at and to change.
    Values& values() { return m_values; }
    const Values& values() const { return m_values; }

private:
    Values m_values;
    QString m_database;
};

} // namespace tarqa::housekeeping::testkit
