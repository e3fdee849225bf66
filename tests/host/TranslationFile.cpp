#include "TranslationFile.h"

#include <QtCore/QFile>
#include <QtCore/QXmlStreamReader>

#include <gtest/gtest.h>

namespace host_test {

namespace {

/// The reader stands at the beginning of a translation.
void read_translation(QXmlStreamReader& xml, TranslatedMessage& message)
{
    message.is_finished = !xml.attributes().hasAttribute("type");
    QString text;
    while (!xml.atEnd() && !(xml.readNext() == QXmlStreamReader::EndElement && xml.name() == "translation")) {
        if (xml.isStartElement() && xml.name() == "numerusform") {
            message.translations.append(xml.readElementText());
        } else if (xml.isCharacters()) {
            text += xml.text();
        }
    }
    if (message.translations.isEmpty()) {
        message.translations.append(text);
    }
}

} // namespace

std::string TranslatedMessage::name() const
{
    return (context + ": \"" + source + '"' + (comment.isEmpty() ? "" : " (" + comment + ')')).toStdString();
}

std::vector<TranslatedMessage> read_translations(const std::string& path)
{
    std::vector<TranslatedMessage> messages;
    QFile file(QString::fromStdString(path));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path;
    QXmlStreamReader xml(&file);
    QString context;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        if (xml.name() == "name") {
            context = xml.readElementText();
        } else if (xml.name() == "message") {
            messages.push_back({context, {}, {}, {}, false});
        } else if (xml.name() == "source") {
            messages.back().source = xml.readElementText();
        } else if (xml.name() == "comment") {
            messages.back().comment = xml.readElementText();
        } else if (xml.name() == "translation") {
            read_translation(xml, messages.back());
        }
    }
    EXPECT_FALSE(xml.hasError()) << path << ": " << xml.errorString().toStdString();
    EXPECT_FALSE(messages.empty()) << path;
    return messages;
}

} // namespace host_test
