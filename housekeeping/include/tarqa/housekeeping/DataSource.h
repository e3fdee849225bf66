#pragma once

#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <boost/shared_ptr.hpp>

#include <iosfwd>
#include <string>
#include <vector>

namespace tarqa::housekeeping {

class AbstractDataInformation;

/**
 * Where a document's data came from or is to go: the file, a key to name it by, the meaning of its z values,
 * and the reader's own settings. A plain value but for the shared data information; used by one thread at a
 * time.
 */
class TQ_HK_EXPORT DataSource
{
public:
    /// The unit of the z values; 4 and 8 are not used and count as metres.
    enum Units : int
    {
        Inches = 0,
        Metres = 1,
        Feet = 2,
        Miles = 3,
        Kilometres = 5,
        Seconds = 6,
        Milliseconds = 7,
        Decimetres = 9
    };

    /// What z values mean.
    enum Sign : int
    {
        Elevation = 64, ///< up is positive
        Depth = 128 ///< down is positive
    };

    /// No file, metres, elevation.
    DataSource();
    /// A single file: url and display key are @p file.
    DataSource(const std::string& file, boost::shared_ptr<AbstractDataInformation> information);
    /// Several files: the display key is the first one, the url stays empty.
    DataSource(const std::vector<std::string>& files, boost::shared_ptr<AbstractDataInformation> information);

    /// The reader's own settings; may be empty.
    boost::shared_ptr<AbstractDataInformation> data_information() const { return m_data_information; }
    /// The file, for a single one; empty for none and for several.
    const std::string& url() const { return m_url; }
    /// All files.
    const std::vector<std::string>& urls() const { return m_urls; }
    /// The kind of the data information; "" without one.
    std::string key() const;

    /// What the source is called for users.
    const std::string& ds_key() const { return m_ds_key; }
    /// Names the source for display; an empty @p key is ignored.
    void ds_key(const std::string& key);

    /// What the z values mean.
    void z_sign(Sign sign) { m_z_sign = sign; }
    Sign z_sign() const { return m_z_sign; }
    /// The unit of the z values.
    void z_units(Units units) { m_z_units = units; }
    /// As unitsFromString().
    void z_units(const QString& text) { z_units(unitsFromString(text)); }
    /// The unit of the z values.
    Units z_units() const { return m_z_units; }
    /// "depth" or "elevation".
    QString z_sign_string() const;
    /// "inches", "metres", "feet", "miles", "kilometres", "seconds", "milliseconds" or "decimetres".
    QString z_units_string() const;

    /// Depth for exactly "depth", else elevation.
    static Sign signFromString(const QString& text);
    /// Names and short forms in any case, for example "km" or "Feet". Anything else is logged ("units_found")
    /// and gives metres.
    static Units unitsFromString(const QString& text);

    /// True if z is in seconds or milliseconds.
    bool inTime() const;

    /// Reads the list that the other info() writes: url, kind, sign, units, and the data information's own
    /// settings. A failure to make or read the data information is swallowed; the rest is read all the same.
    /// An empty list changes nothing.
    void info(const QStringList& list);
    /// Empty without data information.
    QStringList info() const;

private:
    friend TQ_HK_EXPORT std::istream& operator>>(std::istream& stream, DataSource& source);

    boost::shared_ptr<AbstractDataInformation> m_data_information;
    std::vector<std::string> m_urls;
    std::string m_url;
    std::string m_ds_key;
    Units m_z_units = Metres;
    Sign m_z_sign = Elevation;
};

/// Writes url, kind and the data information's settings, each on lines of its own; nothing without data
/// information. Sign, units, display key and the list of files are not part of this form.
TQ_HK_EXPORT std::ostream& operator<<(std::ostream& stream, const DataSource& source);
/// Reads that form; a url that is a plain path becomes a "file://" URL.
/// @throws std::runtime_error if the kind is unknown and there is no default
TQ_HK_EXPORT std::istream& operator>>(std::istream& stream, DataSource& source);

} // namespace tarqa::housekeeping
