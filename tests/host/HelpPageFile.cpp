#include "HelpPageFile.h"

#include "help/HelpPages.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QXmlStreamReader>

#include <gtest/gtest.h>

namespace host_test {

namespace {

const QStringList s_inside_lines = {"a", "code", "kbd", "span", "strong"};

HelpPicture picture(const QXmlStreamAttributes& attributes)
{
    return {attributes.value("src").toString(), attributes.value("alt").toString(),
        attributes.value("width").toInt(), attributes.value("height").toInt()};
}

} // namespace

HelpPageFile::HelpPageFile(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    const QByteArray content = file.readAll();
    begins_as_html5 = content.startsWith("<!DOCTYPE html>\n");

    QXmlStreamReader reader(content);
    bool in_navigation = false;
    bool in_current = false;
    QString* p_text = nullptr; // of the element that is being read
    QString row; // the id of the row
    while (!reader.atEnd()) {
        reader.readNext();
        const QString name = reader.name().toString();
        const QXmlStreamAttributes attributes = reader.attributes();
        if (reader.isCharacters()) {
            text += reader.text();
            if (p_text) {
                *p_text += reader.text();
            }
        } else if (reader.isEndElement()) {
            in_navigation = in_navigation && name != "nav";
            in_current = in_current && name != "li";
            if (name == "a" || name == "title" || name == "h1" || name == "td") {
                p_text = nullptr;
            }
            if (!s_inside_lines.contains(name)) {
                text += ' ';
            }
        } else if (reader.isStartElement()) {
            if (attributes.hasAttribute("id")) {
                ids.append(attributes.value("id").toString());
            }
            if (name == "html") {
                language = attributes.value("lang").toString();
            } else if (name == "meta" && attributes.hasAttribute("charset")) {
                charset = attributes.value("charset").toString();
            } else if (name == "link") {
                styles.append(attributes.value("href").toString());
            } else if (name == "script") {
                scripts.append(attributes.value("src").toString());
            } else if (name == "title") {
                p_text = &title;
            } else if (name == "h1") {
                headlines.append(QString());
                p_text = &headlines.last();
            } else if (name == "nav") {
                in_navigation = true;
            } else if (name == "li") {
                in_current = attributes.value("class") == "current";
            } else if (name == "tr") {
                row = attributes.value("id").toString();
            } else if (name == "td" && !row.isEmpty()) {
                rows[row].append(QString());
                p_text = &rows[row].last();
            } else if (name == "img") {
                pictures.push_back(picture(attributes));
            } else if (name == "a") {
                const QString address = attributes.value("href").toString();
                std::vector<HelpLink>& list = in_navigation ? navigation : links;
                list.push_back({address, QString()});
                p_text = &list.back().text;
                if (in_current) {
                    current.append(address);
                }
            }
        }
    }
    EXPECT_FALSE(reader.hasError()) << path.toStdString() << ':' << reader.lineNumber() << ": "
                                    << reader.errorString().toStdString();
    text = text.simplified();
}

QStringList help_files(const QString& suffix)
{
    const QDir folder(terrain::HelpPages::installed_folder());
    QStringList files;
    QDirIterator all(folder.path(), QDir::Files, QDirIterator::Subdirectories);
    while (all.hasNext()) {
        const QString name = folder.relativeFilePath(all.next());
        if (suffix.isEmpty() || name.endsWith('.' + suffix)) {
            files.append(name);
        }
    }
    files.sort();
    return files;
}

QString help_file(const QString& name)
{
    return terrain::HelpPages::installed_folder() + '/' + name;
}

QByteArray help_file_content(const QString& name)
{
    QFile file(help_file(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return file.readAll();
}

} // namespace host_test
