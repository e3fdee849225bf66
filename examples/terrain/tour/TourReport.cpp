#include "tour/TourReport.h"

#include <QtCore/QBuffer>
#include <QtCore/QDir>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QObject>
#include <QtCore/QSaveFile>

#include <stdexcept>

namespace terrain {

TourReport::TourReport(const QString& folder)
    : m_folder(QFileInfo(folder).absoluteFilePath())
{
    if (!QDir().mkpath(m_folder)) {
        throw std::runtime_error(QObject::tr("The folder \"%1\" cannot be made").arg(m_folder).toStdString());
    }
    write_list();
}

void TourReport::add(const TourEntry& entry)
{
    const QString picture_name
        = QString("%1-%2.png").arg(QString::number(entry.number).rightJustified(2, '0'), entry.name);
    QByteArray png;
    QBuffer buffer(&png);
    if (!entry.picture.save(&buffer, "PNG")) {
        throw std::runtime_error(
            QObject::tr("The picture \"%1\" cannot be made").arg(picture_name).toStdString());
    }
    write(picture_name, png);

    QJsonArray checks;
    for (const TourCheck& check : entry.checks) {
        checks.append(QJsonObject{{"text", check.text}, {"result", check.result}});
    }
    m_entries.append(QJsonObject{{"number", entry.number}, {"name", entry.name}, {"picture", picture_name},
        {"width", entry.picture.width()}, {"height", entry.picture.height()}, {"duration", entry.duration},
        {"checks", checks}});
    m_duration += entry.duration;
    write_list();
}

void TourReport::write(const QString& name, const QByteArray& content) const
{
    QSaveFile file(QDir(m_folder).filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit()) {
        throw std::runtime_error(QObject::tr("\"%1\" cannot be written: %2")
                                     .arg(file.fileName(), file.errorString())
                                     .toStdString());
    }
}

void TourReport::write_list() const
{
    write(list_name, QJsonDocument(QJsonObject{{"steps", m_entries}, {"duration", m_duration}}).toJson());
}

} // namespace terrain
