#pragma once

#include "io/FileStamp.h"

#include <tarqa/housekeeping/DocumentId.h>
#include <tarqa/housekeeping/DocumentMessage.h>

#include <QtCore/QObject>

#include <map>

class QLabel;
class QMainWindow;
class QPushButton;
class QToolBar;

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

/**
 * Notices when somebody else has written the file that a document was read from, and says so in a bar below
 * the tool bar, one document after the other. It looks when the window becomes active and when it is told to.
 * A file that is gone is nothing to speak of until somebody saves. Main thread.
 */
class ChangedFiles : public QObject
{
    Q_OBJECT

public:
    /// @param p_window gets the bar; becomes the parent
    explicit ChangedFiles(QMainWindow* p_window);

    /// Looks at all files, and shows or hides the bar.
    void look();

    /// The bar; null before it was first shown.
    QToolBar* bar() const { return m_p_bar; }

    /// Sees when the window becomes active.
    bool eventFilter(QObject* p_receiver, QEvent* p_event) override;

signals:
    /// The user wants to have the file instead of the document.
    void reload_asked(const housekeeping::DocumentId& document);

private slots:
    void handle_message(housekeeping::DocumentMessage& message);

private:
    bool is_to_be_told(const housekeeping::DocumentId& document) const;
    void make_bar();
    void keep();

    QMainWindow* m_p_window; // the parent
    QToolBar* m_p_bar = nullptr; // the window's
    QLabel* m_p_text = nullptr; // the bar's
    housekeeping::DocumentId m_shown = housekeeping::DocumentId::null(); // the document in the bar
    std::map<housekeeping::DocumentId, FileStamp> m_kept; // files that the user did not want
};

} // namespace terrain
