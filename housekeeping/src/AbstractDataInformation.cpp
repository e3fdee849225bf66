#include <tarqa/housekeeping/AbstractDataInformation.h>

#include <istream>
#include <ostream>

namespace tarqa::housekeeping {

AbstractDataInformation::AbstractDataInformation(const std::string& key)
    : m_key(key)
{ }

AbstractDataInformation::~AbstractDataInformation() = default;

void AbstractDataInformation::info(const QStringList&, int) { }

QStringList AbstractDataInformation::info()
{
    return {};
}

unsigned long long AbstractDataInformation::attaching_image_to_geoId() const
{
    return 0;
}

std::string AbstractDataInformation::image_name()
{
    return {};
}

std::istream& AbstractDataInformation::serialise(std::istream& stream)
{
    return stream;
}

std::ostream& AbstractDataInformation::serialise(std::ostream& stream) const
{
    return stream;
}

std::istream& operator>>(std::istream& stream, AbstractDataInformation& information)
{
    return information.serialise(stream);
}

std::ostream& operator<<(std::ostream& stream, const AbstractDataInformation& information)
{
    return information.serialise(stream);
}

} // namespace tarqa::housekeeping
