#include <tarqa/testkit/FakeModel.h>

namespace tarqa::housekeeping::testkit {

FakeModel::FakeModel() = default;
FakeModel::~FakeModel() = default;

bool FakeModel::empty() const
{
    return m_values.empty();
}

unsigned long long FakeModel::size() const
{
    return m_values.size();
}

void FakeModel::clear()
{
    m_values.clear();
}

const std::string& FakeModel::document_type() const
{
    static const std::string* const s_p_type = new std::string("Fake"); // leaked: asked at the very end, too
    return *s_p_type;
}

void FakeModel::setupDatabase(const QString& path)
{
    m_database = path;
}

void FakeModel::mergeDatabase(const QString& path)
{
    m_database = path;
}

QString FakeModel::getDatabasePath()
{
    return m_database;
}

} // namespace tarqa::housekeeping::testkit
