#pragma once

#include <QtCore/QJsonArray>
#include <QtCore/QString>
#include <QtGui/QImage>

#include <vector>

namespace terrain {

/// Something that was to be seen, and whether it was.
struct TourCheck
{
    QString text;
    bool result;
};

/// What a step of the tour has left.
struct TourEntry
{
    int number; ///< counted from 1
    QString name;
    QImage picture;
    int duration; ///< milliseconds
    std::vector<TourCheck> checks;
};

/// The folder that a tour leaves: a picture of each step, "01-name.png", and "tour.json", which lists them
/// and tells how long all took. Each file appears whole or not at all.
class TourReport
{
public:
    static constexpr const char* list_name = "tour.json";

    /// Makes the folder if it is missing, and writes the list, still empty.
    /// @throws std::runtime_error if the folder cannot be made or written; so with add()
    explicit TourReport(const QString& folder);

    /// Writes the picture, and the list with the entry in it.
    void add(const TourEntry& entry);

    /// The folder's absolute path.
    const QString& folder() const { return m_folder; }
    int entries() const { return m_entries.size(); }
    /// Of all entries together, in milliseconds.
    int duration() const { return m_duration; }

private:
    void write(const QString& name, const QByteArray& content) const;
    void write_list() const;

    QString m_folder;
    QJsonArray m_entries;
    int m_duration = 0;
};

} // namespace terrain
