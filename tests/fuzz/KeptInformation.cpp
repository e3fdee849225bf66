#include "KeptInformation.h"

#include <tarqa/housekeeping/AbstractDataInformationFactory.h>

#include <boost/make_shared.hpp>

#include <istream>
#include <ostream>

namespace fuzz {

namespace housekeeping = tarqa::housekeeping;

namespace {

class KeptInformationFactory : public housekeeping::AbstractDataInformationFactory
{
public:
    KeptInformationFactory()
        : AbstractDataInformationFactory(KeptInformation::product_name, false)
    { }
    boost::shared_ptr<housekeeping::AbstractDataInformation> create_product() override
    {
        return boost::make_shared<KeptInformation>();
    }
    housekeeping::AbstractDataInformation* create_unmanaged_product() override { return new KeptInformation; }
};

} // namespace

const char* const KeptInformation::product_name = "kept";

void KeptInformation::register_factory()
{
    static const KeptInformationFactory s_factory;
}

KeptInformation::KeptInformation()
    : AbstractDataInformation(product_name)
{ }

std::istream& KeptInformation::serialise(std::istream& stream)
{
    std::string line;
    std::getline(stream, line);
    const int count = QByteArray::fromStdString(line).toInt();
    for (int i = 0; i < count && std::getline(stream, line); ++i) {
        m_entries.append(QString::fromUtf8(QByteArray::fromPercentEncoding(line.c_str())));
    }
    return stream;
}

std::ostream& KeptInformation::serialise(std::ostream& stream) const
{
    stream << m_entries.size() << '\n';
    for (const QString& entry : m_entries) {
        stream << entry.toUtf8().toPercentEncoding().toStdString() << '\n';
    }
    return stream;
}

} // namespace fuzz
