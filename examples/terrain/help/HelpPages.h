#pragma once

#include <QtCore/QString>
#include <QtCore/QUrl>

namespace terrain {

/**
 * The pages of the help: files in a folder. What has no page has an address all the same, which leads
 * nowhere, so that the browser's history knows of it; what people then read in its place is made here. A
 * plain value. Main thread.
 */
class HelpPages
{
public:
    /// Where the pages are installed: in a place that is known from that of the program.
    static QString installed_folder();

    explicit HelpPages(const QString& folder = installed_folder());

    const QString& folder() const { return m_folder; }

    /// @param page a help key or the name of a page; it may end in "#" and the name of a part of the page
    QUrl address(const QString& page) const;
    bool is_shortcuts(const QUrl& address) const;

    /// Whether an address leads to a file.
    static bool exists(const QUrl& address);
    /// What is missing at an address without a page, in a sentence.
    QString what_is_missing(const QUrl& address) const;
    /// Head and body of the page that stands in for the missing one.
    QString page_of_missing(const QUrl& address) const;

private:
    QUrl file(const QString& name) const;

    QString m_folder;
};

} // namespace terrain
