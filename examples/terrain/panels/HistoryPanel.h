#pragma once

#include <tarqa/housekeeping/DocumentMessage.h>
#include <tarqa/housekeeping/Updateable.h>

#include <QtWidgets/QWidget>

#include <vector>

class QListView;

namespace tarqa::housekeeping {
class UndoRedoController;
} // namespace tarqa::housekeeping

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class HistoryModel;
struct HistoryLine;

/**
 * What was done to the current document, the last thing first, below what was undone and above the document
 * as it was opened. Choosing a line, with a click, Enter or Space, takes the document to the state right
 * after it, as the lists of undo and redo do; nothing happens while any document is busy.
 *
 * It is a view of the undo/redo controller, which must exist, and tells it so. Main thread.
 */
class HistoryPanel : public QWidget, private housekeeping::Updateable
{
    Q_OBJECT

public:
    static constexpr unsigned long long most_entries = 100; ///< of each kind; nobody looks further back

    explicit HistoryPanel(QWidget* p_parent = nullptr);
    ~HistoryPanel() override;

    /// Lists the history as it is now; for changes that the controller does not hear of.
    void refresh();

    QListView& entries() const { return *m_p_list; }
    const HistoryModel& model() const { return *m_p_model; }

    QSize sizeHint() const override;

private slots:
    void handle_message(housekeeping::DocumentMessage& message);

protected:
    /// The keys that choose a line.
    bool eventFilter(QObject* p_watched, QEvent* p_event) override;

private:
    void update() override; // when the controller has changed
    void choose(const QModelIndex& line);
    void show_lines(
        const std::vector<HistoryLine>& lines, qulonglong done, const housekeeping::DocumentId& document);

    housekeeping::UndoRedoController* m_p_controller; // the controller manager's
    HistoryModel* m_p_model; // a child, as the next one
    QListView* m_p_list;
    housekeeping::DocumentId m_document = housekeeping::DocumentId::null(); // whose lines these are
};

} // namespace terrain
