#pragma once

#include <pkBaseQt/pkBaseQt_export.h>

#include <QtCore/QString>
#include <QtWidgets/QDialog>

class QLabel;
class QTextBrowser;
class QUrl;

namespace pkBase {

/**
 * Says what the program is: name, version and build from the product information, a page about it and the
 * libraries that it uses, and where its log file is. All of it can be copied, for reports; links from the
 * page to others open outside the program. Main thread.
 */
class PKBASEQT_EXPORT QPKAboutBox : public QDialog
{
    Q_OBJECT

public:
    /// @param page path of an HTML page, in the file system or compiled in (":/..."); one that cannot be read
    /// is named in its place
    /// @param p_parent the window that the box stands over, and its owner; may be null
    /// @param log_file full path of the log; empty for none
    explicit QPKAboutBox(
        const QString& page, QWidget* p_parent = nullptr, const QString& log_file = QString());
    ~QPKAboutBox() override;

    /// Full path of the log; empty for none.
    const QString& log_file() const { return m_log_file; }

    /// Product, version, build, versions of Qt and of the system, and log file, a line each: what a report
    /// should say.
    QString facts() const;

public slots:
    /// Puts facts() on the clipboard.
    void copy_facts();
    /// Shows the log in its viewer, and closes the box, which would keep the viewer from being used.
    void show_log_file();

private:
    QWidget* make_head();
    QWidget* make_log_line();
    void show_page(const QString& page);
    void open_link(const QUrl& link);

    QString m_log_file;
    // Children.
    QTextBrowser* m_p_page;
    QLabel* m_p_remark;
};

} // namespace pkBase
