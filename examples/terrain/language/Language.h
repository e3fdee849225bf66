#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>
#include <vector>

class QTranslator;

namespace terrain {

/**
 * The language of the program's texts: its own, the library's and those of Qt. It holds as long as the object
 * lives. Made by the main functions as soon as there is an application object, which it may outlive, and
 * before anything asks for a text, as tables of texts are filled once. Main thread.
 *
 * Numbers are another matter, see use_numbers(): they follow the language where people read them, and never
 * in files and in what a batch prints.
 */
class Language
{
public:
    static const char* const english; ///< the texts in the sources
    static const char* const german;
    static const char* const
        pseudo; ///< no language, but a proof that every text can be translated; right to left

    /// All that there are, in alphabetical order.
    static QStringList names();

    /// The first of @p wanted, as QLocale::uiLanguages() lists them, that there is; English if there is none.
    /// Nobody gets the pseudo-locale in this way.
    static QString best_of(const QStringList& wanted);

    /// @param name one of names()
    /// @throw std::runtime_error if its texts cannot be loaded
    explicit Language(const QString& name);
    ~Language();
    Language(const Language&) = delete;
    Language& operator=(const Language&) = delete;

    /// Lets numbers in windows look as in the language @p name: as the system has them if that is its
    /// language too.
    static void use_numbers(const QString& name);
    /// Lets numbers look as in the sources, for what programs read.
    static void use_plain_numbers();

private:
    void install(const QString& path);

    std::vector<std::unique_ptr<QTranslator>> m_translators;
};

} // namespace terrain
