#include "windows/Closing.h"

#include "commands/CommandsController.h"
#include "documents/TerrainDocument.h"
#include "windows/DocumentFiles.h"
#include "windows/Questions.h"

#include <tarqa/housekeeping/DocumentManager.h>

#include <QtCore/QScopedValueRollback>
#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

#include <algorithm>
#include <utility>

namespace terrain {

namespace {

housekeeping::DocumentManager& documents()
{
    return housekeeping::DocumentManager::instance();
}

CommandRunner& runner()
{
    return CommandsController::instance().runner();
}

/// Those with changes that are not written.
std::vector<housekeeping::DocumentId> changed_documents()
{
    std::vector<housekeeping::DocumentId> list = documents().current_documents();
    const auto is_unchanged = [](const housekeeping::DocumentId& id) {
        return !dynamic_cast<const TerrainDocument&>(documents().document_from_id(id)).is_modified();
    };
    list.erase(std::remove_if(list.begin(), list.end(), is_unchanged), list.end());
    return list;
}

} // namespace

Closing::Closing(QWidget* p_window, DocumentFiles& files)
    : QObject(p_window)
    , m_p_window(p_window)
    , m_files(files)
{
    connect(&runner(), &CommandRunner::finished, this, &Closing::close_after);
    housekeeping::DocumentMessage::subscribe(this, Qt::AutoConnection);
}

bool Closing::may_close()
{
    if (m_asks) {
        return false;
    }
    const QScopedValueRollback<bool> asking(m_asks, true);
    m_answer.reset();
    if (ask()) {
        m_answer = changed_documents();
        QTimer::singleShot(0, this, [this] { m_answer.reset(); });
    }
    return m_answer.has_value();
}

bool Closing::ask()
{
    runner().cancel();
    runner().wait();
    if (documents().documents_busy()) {
        say_that_it_is_busy(tr("Quit"), tr("A command is running. Wait until it has ended, or cancel it."));
        return false;
    }
    const std::vector<housekeeping::DocumentId> list = documents().current_documents();
    return std::all_of(list.begin(), list.end(),
        [this](const housekeeping::DocumentId& id) { return m_files.may_lose(id); });
}

/// Whatever happens to documents: what the user has agreed to was another state of them.
void Closing::handle_message(housekeeping::DocumentMessage&)
{
    m_answer.reset();
}

bool Closing::answer_holds() const
{
    if (!m_answer) {
        return false;
    }
    const std::vector<housekeeping::DocumentId> changed = changed_documents();
    return std::all_of(changed.begin(), changed.end(), [this](const housekeeping::DocumentId& id) {
        return std::find(m_answer->begin(), m_answer->end(), id) != m_answer->end();
    });
}

bool Closing::close_event_may_go_on()
{
    const bool agreed = answer_holds();
    m_answer.reset();
    if (runner().is_running()) {
        // Not waiting in here: Qt takes another request meanwhile for granted.
        m_closes_after_command = true;
        runner().cancel();
        return false;
    }
    return agreed || may_close();
}

/// A command that failed before it could be cancelled keeps the window open: people are to see why.
void Closing::close_after(CommandRunner::Outcome outcome)
{
    if (std::exchange(m_closes_after_command, false) && outcome != CommandRunner::Outcome::Failed) {
        QTimer::singleShot(0, m_p_window, &QWidget::close);
    }
}

bool Closing::close_documents()
{
    for (const housekeeping::DocumentId& id : documents().current_documents()) {
        documents().destroy_document(id, false, false, false, housekeeping::DocumentId::null());
    }
    return documents().num_documents() == 0;
}

} // namespace terrain
