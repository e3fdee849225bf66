#pragma once

#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtCore/QStringList>

#include <iosfwd>
#include <string>

namespace tarqa::housekeeping {

/**
 * The reader's own settings for one kind of file, carried by a DataSource.
 *
 * The host derives one class per kind of file and registers a factory for it under the kind's name, which is
 * also its key(). Held by shared pointers; used by one thread at a time.
 */
class TQ_HK_EXPORT AbstractDataInformation
{
public:
    virtual ~AbstractDataInformation();

    /// Reads settings from @p list, starting at index @p first; the base does nothing.
    virtual void info(const QStringList& list, int first);
    /// The settings as a list that the other info() reads; the base gives none.
    virtual QStringList info();
    /// The id of the object that an image is attached to; 0 in the base.
    virtual unsigned long long attaching_image_to_geoId() const;
    /// The name of the attached image; empty in the base.
    virtual std::string image_name();

    /// Whether the reader has all that it needs; true unless a derived class says otherwise.
    bool is_complete() const { return m_complete; }
    /// How the reader takes text files apart, in numbers of its own; -1 until set.
    int ascii_import_mode() const { return m_ascii_import_mode; }
    /// Sets ascii_import_mode().
    void set_ascii_import_mode(int mode) { m_ascii_import_mode = mode; }
    /// The name of this kind in AbstractDataInformationFactory.
    const std::string& key() const { return m_key; }

protected:
    /// @param key the name of the kind in AbstractDataInformationFactory
    explicit AbstractDataInformation(const std::string& key);
    AbstractDataInformation(const AbstractDataInformation&) = delete;
    AbstractDataInformation& operator=(const AbstractDataInformation&) = delete;

    /// Read and write the settings in text form; the base does neither. @return the stream
    virtual std::istream& serialise(std::istream& stream);
    virtual std::ostream& serialise(std::ostream& stream) const;

    /// What is_complete() says; set by derived classes.
    bool m_complete = true;

private:
    friend TQ_HK_EXPORT std::istream& operator>>(std::istream& stream, AbstractDataInformation& information);
    friend TQ_HK_EXPORT std::ostream& operator<<(
        std::ostream& stream, const AbstractDataInformation& information);

    int m_ascii_import_mode = -1;
    std::string m_key;
};

/// Call the matching serialise().
TQ_HK_EXPORT std::istream& operator>>(std::istream& stream, AbstractDataInformation& information);
TQ_HK_EXPORT std::ostream& operator<<(std::ostream& stream, const AbstractDataInformation& information);

} // namespace tarqa::housekeeping
