#pragma once

#include "commands/CommandRunner.h"

#include <tarqa/housekeeping/DocumentId.h>
#include <tarqa/housekeeping/DocumentMessage.h>

#include <QtCore/QObject>

#include <optional>
#include <vector>

class QWidget;

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class DocumentFiles;

/**
 * Sees to it that the window takes no work with it when it is closed: commands are cancelled and waited for,
 * and the user is asked about each document that has unsaved changes.
 *
 * Whoever asks may_close() and then closes the window, all at once, does not have the user asked again. The
 * answer holds no longer than that: once the main loop goes on, or a document has changed, it counts for
 * nothing. Main thread.
 */
class Closing : public QObject
{
    Q_OBJECT

public:
    /// @param p_window what is closed; becomes the parent @param files asks about the documents; must outlive
    /// the object
    Closing(QWidget* p_window, DocumentFiles& files);

    /// Cancels the running command and waits for it, then asks about each document that has unsaved changes.
    bool may_close();

    /// For the window's close event. While a command is running it has that cancelled, and the window closed
    /// again when it has ended. @return whether the window may go now
    bool close_event_may_go_on();
    /// @return whether all documents were closed
    static bool close_documents();

private slots:
    void handle_message(housekeeping::DocumentMessage& message);

private:
    bool ask();
    bool answer_holds() const;
    void close_after(CommandRunner::Outcome outcome);

    QWidget* m_p_window; // the parent
    DocumentFiles& m_files;
    bool m_closes_after_command = false; // the window, once the cancelled command has ended
    bool m_asks = false; // in may_close(), whose event loops may bring another request
    /// The documents whose changes the user has just agreed to lose; nothing without such an answer.
    std::optional<std::vector<housekeeping::DocumentId>> m_answer;
};

} // namespace terrain
