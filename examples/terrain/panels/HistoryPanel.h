#pragma once

#include <tarqa/housekeeping/Updateable.h>

#include <QtWidgets/QWidget>

class QListWidget;

namespace tarqa::housekeeping {
class CommandDetails;
class UndoRedoController;
} // namespace tarqa::housekeeping

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

/**
 * What was done to the current document, the last thing first, below what was undone. It is a view of the
 * undo/redo controller, which must exist, and tells it so. Main thread.
 */
class HistoryPanel : public QWidget, private housekeeping::Updateable
{
    Q_OBJECT

public:
    explicit HistoryPanel(QWidget* p_parent = nullptr);
    ~HistoryPanel() override;

    /// Lists the history as it is now; for changes that the controller does not hear of.
    void refresh();

    QListWidget& entries() const { return *m_p_list; }

    QSize sizeHint() const override;

private:
    void update() override; // when the controller has changed
    void add(const housekeeping::CommandDetails& details, bool undone);

    housekeeping::UndoRedoController* m_p_controller; // the controller manager's
    QListWidget* m_p_list; // a child
};

} // namespace terrain
