#include <tarqa/housekeeping/DataSource.h>

#include "Assertion.h"

#include <tarqa/housekeeping/AbstractDataInformation.h>
#include <tarqa/housekeeping/AbstractDataInformationFactory.h>
#include <tarqa/utilities/Url.h>

#include <exception>
#include <istream>
#include <ostream>

namespace tarqa::housekeeping {

namespace {

const char* const s_source = "housekeeping/src/DataSource";
const char* const s_url_scheme = "file://";
const char* const s_depth = "depth";
const char* const s_elevation = "elevation";

// Where the settings stand in the list.
constexpr int s_url_index = 0;
constexpr int s_key_index = 1;
constexpr int s_sign_index = 2;
constexpr int s_units_index = 3;
constexpr int s_information_index = 4;

struct Spelling
{
    DataSource::Units units;
    QStringList texts; // in upper case
};

const QList<Spelling>& spellings()
{
    static const QList<Spelling> s_spellings = {
        {DataSource::Metres, {"METRES", "METRE", "M"}},
        {DataSource::Decimetres, {"DECIMETRES", "DECIMETRE", "DM"}},
        {DataSource::Kilometres, {"KILOMETRES", "KILOMETRE", "KILO", "KM", "KMS"}},
        {DataSource::Inches, {"INCHES", "INCH", "IN"}},
        {DataSource::Feet, {"FEET", "FOOT", "FT"}},
        {DataSource::Miles, {"MILES", "MILE", "ML"}},
        {DataSource::Seconds, {"SECONDS", "SECOND", "SEC"}},
        {DataSource::Milliseconds, {"MILLISECONDS", "MILLISECOND", "MSEC"}},
    };
    return s_spellings;
}

} // namespace

DataSource::DataSource() = default;

DataSource::DataSource(const std::string& file, boost::shared_ptr<AbstractDataInformation> information)
    : m_data_information(information)
    , m_url(file)
    , m_ds_key(file)
{ }

DataSource::DataSource(
    const std::vector<std::string>& files, boost::shared_ptr<AbstractDataInformation> information)
    : m_data_information(information)
    , m_urls(files)
    , m_ds_key(files.empty() ? std::string() : files.front())
{ }

std::string DataSource::key() const
{
    return m_data_information ? m_data_information->key() : std::string();
}

void DataSource::ds_key(const std::string& key)
{
    if (!key.empty()) {
        m_ds_key = key;
    }
}

QString DataSource::z_sign_string() const
{
    return m_z_sign == Depth ? s_depth : s_elevation;
}

QString DataSource::z_units_string() const
{
    switch (m_z_units) {
    case Inches:
        return "inches";
    case Feet:
        return "feet";
    case Miles:
        return "miles";
    case Kilometres:
        return "kilometres";
    case Seconds:
        return "seconds";
    case Milliseconds:
        return "milliseconds";
    case Decimetres:
        return "decimetres";
    case Metres:
        break;
    }
    return "metres";
}

DataSource::Sign DataSource::signFromString(const QString& text)
{
    return text == s_depth ? Depth : Elevation;
}

DataSource::Units DataSource::unitsFromString(const QString& text)
{
    const QString upper = text.toUpper();
    bool units_found = false;
    Units units = Metres;
    for (const Spelling& spelling : spellings()) {
        if (spelling.texts.contains(upper)) {
            units_found = true;
            units = spelling.units;
            break;
        }
    }
    HK_ASSERT(units_found, "units_found");
    return units;
}

bool DataSource::inTime() const
{
    return m_z_units == Seconds || m_z_units == Milliseconds;
}

void DataSource::info(const QStringList& list)
{
    if (list.isEmpty()) {
        return;
    }
    m_url = list.value(s_url_index).toStdString();
    try {
        m_data_information = AbstractDataInformationFactory::create(list.value(s_key_index).toStdString());
        if (m_data_information) {
            m_data_information->info(list, s_information_index);
        }
    } catch (const std::exception&) {
        // Deliberate: a list of another version or program must not keep the rest from being read.
    }
    if (list.size() > s_sign_index) {
        z_sign(signFromString(list.value(s_sign_index)));
        z_units(list.value(s_units_index));
    }
}

QStringList DataSource::info() const
{
    if (!m_data_information) {
        return {};
    }
    return QStringList{QString::fromStdString(m_url), QString::fromStdString(key()), z_sign_string(),
               z_units_string()}
    + m_data_information->info();
}

std::ostream& operator<<(std::ostream& stream, const DataSource& source)
{
    if (!source.data_information()) {
        return stream;
    }
    return stream << source.url() << '\n' << source.key() << '\n' << *source.data_information();
}

std::istream& operator>>(std::istream& stream, DataSource& source)
{
    std::string url;
    std::getline(stream, url);
    source.m_url = url.rfind(s_url_scheme, 0) == 0 ? url : utilities::filesystem_to_url(url);
    std::string key;
    std::getline(stream, key);
    source.m_data_information = AbstractDataInformationFactory::create(key);
    return source.m_data_information ? stream >> *source.m_data_information : stream;
}

} // namespace tarqa::housekeeping
