#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <map>
#include <vector>

namespace host_test {

/// A picture as a page shows it.
struct HelpPicture
{
    QString source;
    QString alternative; ///< the text in its place
    int width = 0;
    int height = 0;
};

/// A link and its text.
struct HelpLink
{
    QString address;
    QString text;
};

/// What stands in a page of the help. Fails the test if the page cannot be read, or is no well-formed XML,
/// which all pages are although browsers would not ask for it.
class HelpPageFile
{
public:
    explicit HelpPageFile(const QString& path);

    QString language;
    QString charset;
    QString title;
    QStringList headlines; ///< of the first level
    QStringList ids;
    QStringList styles; ///< what the page links to for its looks
    std::vector<HelpLink> links; ///< outside of the navigation
    std::vector<HelpLink> navigation;
    QStringList current; ///< pages that the navigation marks
    std::vector<HelpPicture> pictures;
    std::map<QString, QStringList> rows; ///< of tables: the cells of a row with an id
    QString text; ///< all of it, with single blanks between the words
    bool begins_as_html5 = false;
    QStringList scripts;
};

/// The files below the folder of the installed help, as "index.html" and "pictures/window.png".
QStringList help_files(const QString& suffix = QString());
QString help_file(const QString& name);
QByteArray help_file_content(const QString& name);

} // namespace host_test
