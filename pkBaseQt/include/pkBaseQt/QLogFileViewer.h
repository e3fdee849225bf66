#pragma once

#include <pkBase/pkSingleton.h>
#include <pkBaseQt/pkBaseQt_export.h>

#include <QtCore/QString>
#include <QtWidgets/QWidget>

#include <memory>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QTimer;

namespace pkBase {

class LogTail;

/**
 * The window that shows the program's log: it follows the file as it grows, finds text in it and copies it.
 *
 * While it is visible it looks at the file once a second. What was read stays to be seen when the file is
 * deleted, with a line that says so; a file that was emptied or replaced is shown from its beginning. Of a
 * very large file only the end is shown, and the first line says so. The file is read as UTF-8 and never
 * written.
 *
 * A singleton, made at first use, which must come after the application object; destroyed in phase 5 of the
 * ordered destruction. It keeps no program alive: it closes with the program's last other window. Main
 * thread.
 */
class PKBASEQT_EXPORT QLogFileViewer : public QWidget
{
    Q_OBJECT

public:
    /// The one object; made at first use.
    static QLogFileViewer& instance();

    /// Full path of the log file; empty until set.
    const QString& path() const { return m_path; }
    /// Shows another file from now on.
    void setPath(const QString& path);

    /// What is shown of the file.
    QString text() const;

    /// How much is shown of the end of a larger file, in bytes: this much when it is first read, and up to
    /// twice as much when it has grown since.
    static constexpr long long longest_text = 4 * 1024 * 1024;

    /// Shows the window in front, and what the file holds now.
    void present();

public slots:
    /// Shows what was added to the file since the last time.
    void refresh();

    /// Selects the next place with the text of the search line, from the other end on after the
    /// last one, and marks all that are on the screen. The line says if there is none.
    void find_next();
    /// Selects the previous place with the text of the search line; otherwise as find_next().
    void find_previous();

    /// Copies the selected text, or all of it if nothing is selected, to the clipboard.
    void copy();

protected:
    /// Begins to look at the file once a second.
    void showEvent(QShowEvent* p_event) override;
    /// Ends that.
    void hideEvent(QHideEvent* p_event) override;
    /// Escape closes the window; Return in the search line finds the next place, with Shift the previous one.
    void keyPressEvent(QKeyEvent* p_event) override;

private:
    friend class pkSingleton<QLogFileViewer>;
    QLogFileViewer();
    ~QLogFileViewer() override;
    static pkSingleton<QLogFileViewer>& get_instance();
    static void destroy_instance();

    void build();
    void show_anew(const QString& text, long long skipped);
    void append(const QString& text);
    bool is_at_end() const;
    void find(bool backwards);
    void mark_found();
    void say(const QString& text);

    QString m_path;
    std::unique_ptr<LogTail> m_tail; // how far the file was read
    bool m_missing = false; // when it was last looked at
    // Children; null until the window is first shown or refreshed.
    QPlainTextEdit* m_p_text = nullptr;
    QLineEdit* m_p_search = nullptr;
    QCheckBox* m_p_match_case = nullptr;
    QCheckBox* m_p_follow = nullptr;
    QLabel* m_p_file = nullptr;
    QLabel* m_p_status = nullptr;
    QTimer* m_p_timer = nullptr;
};

} // namespace pkBase
