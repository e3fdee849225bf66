#include "BoreholesModel.h"

#include <algorithm>

namespace boreholes {

const std::string& BoreholesModel::document_type() const
{
    static const std::string s_type = "Boreholes";
    return s_type;
}

void BoreholesModel::insert(unsigned long long index, const Borehole& borehole)
{
    m_boreholes.insert(m_boreholes.begin() + static_cast<std::ptrdiff_t>(index), borehole);
}

void BoreholesModel::remove(unsigned long long index)
{
    m_boreholes.erase(m_boreholes.begin() + static_cast<std::ptrdiff_t>(index));
}

bool BoreholesModel::contains(const QString& name) const
{
    return std::any_of(m_boreholes.begin(), m_boreholes.end(),
        [&name](const Borehole& borehole) { return borehole.name == name; });
}

} // namespace boreholes
