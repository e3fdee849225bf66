// Makes a language that nobody speaks, for testing: every text gets other letters, which can still be read,
// grows, stands in brackets and runs from right to left. A text that shows none of that did not go through
// tr(), or was put together from pieces.
//
//     pseudo-locale TEXTS.ts RESULT.ts
//
// TEXTS.ts is what lupdate collects, or a translation of another library into any language.

#include "PseudoText.h"

#include <QtCore/QFile>
#include <QtCore/QString>
#include <QtXml/QDomDocument>

#include <iostream>
#include <stdexcept>

namespace {

const int s_indentation = 4;
const int s_failed = 1;
const int s_wrong_usage = 2;

QDomDocument read(const QString& path)
{
    QFile file(path);
    QDomDocument document;
    QString reason;
    int line = 0;
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error((path + ": " + file.errorString()).toStdString());
    }
    if (!document.setContent(&file, &reason, &line)) {
        throw std::runtime_error(QString("%1:%2: %3").arg(path).arg(line).arg(reason).toStdString());
    }
    return document;
}

void write(const QDomDocument& document, const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)
        || file.write(document.toByteArray(s_indentation)) < 0 || !file.flush()) {
        throw std::runtime_error((path + ": " + file.errorString()).toStdString());
    }
}

void add_text(QDomElement parent, const QString& text)
{
    parent.appendChild(parent.ownerDocument().createTextNode(text));
}

/// What stands for a message, with all plural forms alike.
void translate(QDomElement message, const QString& context)
{
    const QString source = message.firstChildElement("source").text();
    const QString text = pseudo_locale::translation(context, source);
    message.removeChild(message.firstChildElement("translation"));
    QDomElement translation = message.ownerDocument().createElement("translation");
    if (message.attribute("numerus") == "yes") {
        for (int form = 0; form < pseudo_locale::plural_forms; ++form) {
            QDomElement numerus = message.ownerDocument().createElement("numerusform");
            add_text(numerus, text);
            translation.appendChild(numerus);
        }
    } else {
        add_text(translation, text);
    }
    message.appendChild(translation);
}

void translate(QDomDocument& document)
{
    QDomElement root = document.documentElement();
    root.setAttribute("language", pseudo_locale::plural_rules);
    for (QDomElement context = root.firstChildElement("context"); !context.isNull();
         context = context.nextSiblingElement("context")) {
        const QString name = context.firstChildElement("name").text();
        for (QDomElement message = context.firstChildElement("message"); !message.isNull();
             message = message.nextSiblingElement("message")) {
            translate(message, name);
        }
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "Usage: pseudo-locale TEXTS.ts RESULT.ts\n";
        return s_wrong_usage;
    }
    try {
        QDomDocument document = read(QString::fromLocal8Bit(argv[1]));
        translate(document);
        write(document, QString::fromLocal8Bit(argv[2]));
    } catch (const std::exception& exception) {
        std::cerr << "pseudo-locale: " << exception.what() << '\n';
        return s_failed;
    }
    return 0;
}
