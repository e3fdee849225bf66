#include "support/App.h"
#include "support/Fakes.h"

#include <tarqa/housekeeping/QuickHelpInputModelFilter.h>
#include <tarqa/housekeeping/QuickHelpKeySequenceEntry.h>
#include <tarqa/housekeeping/QuickHelpManager.h>
#include <tarqa/housekeeping/QuickHelpMouseButtonEntry.h>
#include <tarqa/housekeeping/QuickHelpSection.h>
#include <tarqa/housekeeping/QuickHelpTitleEntry.h>

#include <QtCore/QAbstractListModel>
#include <QtWidgets/QListView>

#include <gtest/gtest.h>

// docs/quick-help.md

namespace quick_help_guide {

//! [offer]
namespace housekeeping = tarqa::housekeeping;
using housekeeping::QuickHelpSection;

class RotateTool : public QObject
{
public:
    explicit RotateTool(const housekeeping::DocumentId& document)
        : m_rotate(
            nullptr, document, Qt::LeftButton, Qt::ControlModifier, tr("Rotate"), QuickHelpSection::View)
        , m_cancel(
              nullptr, document, QKeySequence(Qt::Key_Escape), tr("Cancel"), QuickHelpSection::CurrentTool)
        , m_title(nullptr, document, tr("Rotating"))
    { }

    void activate(bool active)
    {
        m_rotate.setAttached(active);
        m_cancel.setAttached(active);
        m_title.setAttached(active);
    }

private:
    housekeeping::QuickHelpMouseButtonEntry m_rotate; // "Ctrl+LMB"
    housekeeping::QuickHelpKeySequenceEntry m_cancel; // "Esc"
    housekeeping::QuickHelpTitleEntry m_title;
};
//! [offer]

void show(const housekeeping::DocumentId& document, const housekeeping::DocumentId& other_document,
    QListView* p_view)
{
    //! [show]
    housekeeping::QuickHelpManager& manager = housekeeping::QuickHelpManager::instance();
    auto* const p_filter = new housekeeping::QuickHelpInputModelFilter(document, p_view);
    p_filter->setSourceModel(manager.sectionModel(QuickHelpSection::View));
    p_view->setModel(p_filter); // a QListView, for example
    EXPECT_EQ(p_filter->rowCount(), 1);
    p_filter->setDocId(other_document); // when another document becomes current
    //! [show]
}

} // namespace quick_help_guide

TEST(QuickHelpGuide, ToolOffersEntriesWhileItIsActive)
{
    const support::App app;
    const tarqa::housekeeping::DocumentId one = support::create_document().id();
    const tarqa::housekeeping::DocumentId other = support::create_document().id();
    auto& manager = tarqa::housekeeping::QuickHelpManager::instance();
    quick_help_guide::RotateTool tool(one);
    tool.activate(true);
    EXPECT_EQ(manager.title(one), "Rotating");
    EXPECT_EQ(manager.title(other), "");
    QListView view;
    quick_help_guide::show(one, other, &view);
    EXPECT_EQ(view.model()->rowCount(), 0); // it shows the other document now
    tool.activate(false);
    EXPECT_EQ(manager.title(one), "");
    EXPECT_EQ(manager.sectionModel(quick_help_guide::QuickHelpSection::View)->rowCount(), 0);
}
