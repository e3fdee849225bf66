#include "language/Language.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>
#include <QtCore/QTranslator>

#include <stdexcept>

namespace terrain {

const char* const Language::english = "en";
const char* const Language::german = "de";
const char* const Language::pseudo = "pseudo";

namespace {

const char* const s_texts_of_the_host = ":/terrain/translations/terrain_%1.qm";
const char* const s_texts_of_the_library = ":/housekeeping/translations/tq_hk_%1.qm";
const char* const s_texts_of_qt = ":/terrain/translations/qtbase_%1.qm";

/// The files of a language. That of the pseudo-locale holds the texts of all.
QStringList files_of(const QString& name)
{
    if (name == Language::english) {
        return {};
    }
    if (name == Language::pseudo) {
        return {QString(s_texts_of_the_host).arg(name)};
    }
    return {QString(s_texts_of_qt).arg(name), QString(s_texts_of_the_library).arg(name),
        QString(s_texts_of_the_host).arg(name)};
}

QLocale locale_of(const QString& name)
{
    return QLocale(name == Language::pseudo ? Language::english : name);
}

} // namespace

QStringList Language::names()
{
    return {german, english, pseudo};
}

QString Language::best_of(const QStringList& wanted)
{
    for (const QString& tag : wanted) {
        const QString language = tag.section('-', 0, 0).section('_', 0, 0).section('.', 0, 0).toLower();
        if (language == german || language == english) {
            return language;
        }
    }
    return english;
}

Language::Language(const QString& name)
{
    for (const QString& file : files_of(name)) {
        install(file);
    }
}

Language::~Language() = default; // a translator that goes takes itself out

void Language::install(const QString& path)
{
    auto p_translator = std::make_unique<QTranslator>();
    if (!p_translator->load(path) || !QCoreApplication::installTranslator(p_translator.get())) {
        throw std::runtime_error("no texts in " + path.toStdString());
    }
    m_translators.push_back(std::move(p_translator));
}

void Language::use_numbers(const QString& name)
{
    const QLocale locale = locale_of(name);
    const QLocale system = QLocale::system();
    QLocale::setDefault(system.language() == locale.language() ? system : locale);
}

void Language::use_plain_numbers()
{
    QLocale::setDefault(QLocale::c());
}

} // namespace terrain
