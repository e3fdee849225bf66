#include "documents/RasterInformation.h"

#include <tarqa/housekeeping/AbstractDataInformationFactory.h>

#include <boost/make_shared.hpp>

#include <istream>
#include <ostream>

namespace terrain {

const char* const RasterInformation::product_name = "raster";

namespace {

class RasterInformationFactory : public housekeeping::AbstractDataInformationFactory
{
public:
    RasterInformationFactory()
        : AbstractDataInformationFactory(RasterInformation::product_name, true)
    { }
    boost::shared_ptr<housekeeping::AbstractDataInformation> create_product() override
    {
        return boost::make_shared<RasterInformation>();
    }
    housekeeping::AbstractDataInformation* create_unmanaged_product() override
    {
        return new RasterInformation;
    }
};

const RasterInformationFactory s_factory; // registers itself

} // namespace

RasterInformation::RasterInformation(int band)
    : AbstractDataInformation(product_name)
    , m_band(band)
{ }

void RasterInformation::info(const QStringList& list, int first)
{
    read_band(list.value(first));
}

QStringList RasterInformation::info()
{
    return {QString::number(m_band)};
}

std::istream& RasterInformation::serialise(std::istream& stream)
{
    std::string line;
    if (std::getline(stream, line)) {
        read_band(QString::fromStdString(line));
    }
    return stream;
}

std::ostream& RasterInformation::serialise(std::ostream& stream) const
{
    return stream << m_band << '\n';
}

void RasterInformation::read_band(const QString& text)
{
    bool is_number = false;
    const int band = text.toInt(&is_number);
    if (is_number && band >= 1) {
        m_band = band;
    }
}

} // namespace terrain
