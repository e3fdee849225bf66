#include "BoreholesFile.h"

#include <QtCore/QFile>
#include <QtCore/QLocale>
#include <QtCore/QObject>
#include <QtCore/QSaveFile>

#include <stdexcept>

namespace boreholes {

namespace {

const char* const s_heading = "x,y,depth,name\n";
const int s_name = 3; ///< the place of the name in a line

[[noreturn]] void fail(const QString& text)
{
    throw std::runtime_error(text.toStdString());
}

/// All digits that it takes to read the same number again; numbers in files know no languages.
QString number(double value)
{
    return QLocale::c().toString(value, 'g', QLocale::FloatingPointShortest);
}

Borehole parse(const QString& line)
{
    bool valid[s_name] = {};
    Borehole borehole;
    borehole.x = line.section(',', 0, 0).toDouble(&valid[0]);
    borehole.y = line.section(',', 1, 1).toDouble(&valid[1]);
    borehole.depth = line.section(',', 2, 2).toDouble(&valid[2]);
    borehole.name = line.section(',', s_name);
    if (!valid[0] || !valid[1] || !valid[2] || borehole.name.isEmpty()) {
        fail(QObject::tr("This line holds no borehole: %1").arg(line));
    }
    return borehole;
}

} // namespace

Boreholes read_boreholes(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        fail(QObject::tr("%1 cannot be read: %2").arg(path, file.errorString()));
    }
    file.readLine(); // the heading
    Boreholes boreholes;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (!line.isEmpty()) {
            boreholes.push_back(parse(line));
        }
    }
    return boreholes;
}

void write_boreholes(const QString& path, const Boreholes& boreholes)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        file.write(s_heading);
        for (const Borehole& borehole : boreholes) {
            const QStringList values{
                number(borehole.x), number(borehole.y), number(borehole.depth), borehole.name};
            file.write(values.join(',').toUtf8() + '\n');
        }
    }
    if (!file.commit()) {
        fail(QObject::tr("%1 cannot be written: %2").arg(path, file.errorString()));
    }
}

} // namespace boreholes
