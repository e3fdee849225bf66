#pragma once

#include <pkBase/pkSingleton.h>
#include <pkBaseQt/pkBaseQt_export.h>

#include <QtCore/QObject>
#include <QtCore/QString>

namespace pkBase {

/**
 * The viewer of the program's log; it knows which file to show.
 *
 * A singleton, made at first use, destroyed in phase 5 of the ordered destruction. Main thread.
 */
class PKBASEQT_EXPORT QLogFileViewer : public QObject
{
    Q_OBJECT

public:
    static QLogFileViewer& instance();

    /// Full path of the log file; empty until set.
    const QString& path() const { return m_path; }
    void setPath(const QString& path) { m_path = path; }

private:
    friend class pkSingleton<QLogFileViewer>;
    QLogFileViewer();
    ~QLogFileViewer() override;
    static pkSingleton<QLogFileViewer>& get_instance();
    static void destroy_instance();

    QString m_path;
};

} // namespace pkBase
