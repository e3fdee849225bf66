#include "help/HelpPages.h"

#include "help/HelpTopics.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QUrlQuery>

namespace terrain {

namespace {

const char* const s_folder_from_program = "../share/tarq-terrain/help";
const char* const s_no_page = "no-such-page.html"; ///< where an unknown topic leads
const char* const s_topic = "topic"; ///< the part of that address that names it

QString unknown_topic(const QUrl& address)
{
    return QUrlQuery(address).queryItemValue(s_topic, QUrl::FullyDecoded);
}

} // namespace

QString HelpPages::installed_folder()
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + '/' + s_folder_from_program);
}

HelpPages::HelpPages(const QString& folder)
    : m_folder(QDir(folder).absolutePath())
{ }

QUrl HelpPages::file(const QString& name) const
{
    return QUrl::fromLocalFile(m_folder + '/' + name);
}

QUrl HelpPages::address(const QString& page) const
{
    const int mark = page.indexOf('#');
    const QString name = help_page(page.left(mark));
    if (name.isEmpty()) {
        QUrlQuery query;
        query.addQueryItem(s_topic, QUrl::toPercentEncoding(page));
        QUrl nowhere = file(s_no_page);
        nowhere.setQuery(query);
        return nowhere;
    }
    QUrl address = file(name);
    if (mark >= 0) {
        address.setFragment(page.mid(mark + 1));
    }
    return address;
}

bool HelpPages::is_shortcuts(const QUrl& address) const
{
    return address.adjusted(QUrl::RemoveFragment) == file(help_page(help_key(Topic::KeyboardShortcuts)));
}

bool HelpPages::exists(const QUrl& address)
{
    return QFileInfo(address.toLocalFile()).isFile();
}

QString HelpPages::what_is_missing(const QUrl& address) const
{
    if (!QFileInfo(m_folder).isDir()) {
        return QObject::tr("The help is not installed: there is no folder \"%1\".")
            .arg(QDir::toNativeSeparators(m_folder));
    }
    if (address.hasQuery()) {
        return QObject::tr("The help has no page about \"%1\".").arg(unknown_topic(address));
    }
    return QObject::tr("The page \"%1\" of the help is missing.")
        .arg(QDir::toNativeSeparators(address.toLocalFile()));
}

QString HelpPages::page_of_missing(const QUrl& address) const
{
    const QUrl contents = this->address(help_key(Topic::Contents));
    const QString way_out = exists(contents)
        ? QObject::tr("<a href=\"%1\">Contents</a> leads to all pages that there are.")
              .arg(QString::fromUtf8(contents.toEncoded()).toHtmlEscaped())
        : QObject::tr("Installing the program again brings the help back.");
    // The style sheet may be missing too, so the page brings what it needs.
    return QString("<head><title>%1</title><style>body { margin: 2em; font-family: sans-serif; }</style>"
                   "<link rel=\"stylesheet\" href=\"style.css\"></head>"
                   "<body class=\"missing\"><h1>%1</h1><p>%2</p><p>%3</p></body>")
        .arg(QObject::tr("There is no such page"), what_is_missing(address).toHtmlEscaped(), way_out);
}

} // namespace terrain
