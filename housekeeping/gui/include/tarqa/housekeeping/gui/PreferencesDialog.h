#pragma once

#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtCore/QPointer>
#include <QtWidgets/QDialog>

#include <vector>

class QPushButton;
class QTabWidget;

namespace pkBase {
class QPKHelpButton;
}

namespace tarqa::housekeeping {
class TestAccess;
}

namespace tarqa::housekeeping::gui {

class AbstractPreferences;

/**
 * The preferences: a tab for each page whose factory is registered and that is valid. "Apply" applies the
 * page on top and keeps the dialog open; what was entered on other pages waits for their turn. Not modal.
 *
 * The host makes one, keeps it, and calls pre_show_dialog() each time before it shows it. The dialog belongs
 * to its parent, the pages to the dialog. A factory that throws or makes nothing, and a page that throws,
 * cost that page only, and are logged. Main thread.
 */
class TQ_HK_EXPORT PreferencesDialog : public QDialog
{
    Q_OBJECT

public:
    /// @param p_parent null for the main window @param flags not used: the dialog has a title, a system menu
    /// and a close button
    explicit PreferencesDialog(QWidget* p_parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~PreferencesDialog() override;

    /// Lets all pages show the values as they are now.
    void pre_show_dialog();

signals:
    /// The dialog was closed after something was applied; not when it is deleted while it is open.
    void accepted_signal();

public slots:
    /// Applies the page on top.
    void accept() override;
    /// Lets the page of tab @p index show the values as they are now; any other index does nothing.
    virtual void tabChanged(int index);
    /// Brings tab @p index to the front; any other index does nothing.
    void setTab(int index);

protected:
    /// Tells whether something was applied.
    void hideEvent(QHideEvent* p_event) override;

private:
    friend class housekeeping::TestAccess;

    void build_form();
    void fill_dialog();
    void order_tab_stops();
    AbstractPreferences* page(int index) const;
    void note_applied();

    // Children.
    QTabWidget* m_tab = nullptr;
    pkBase::QPKHelpButton* helpButton = nullptr;
    QPushButton* m_okButton = nullptr;
    QPushButton* m_cancelButton = nullptr;
    std::vector<QPointer<AbstractPreferences>> m_pages; // in the order of the tabs; owned by m_tab
    bool m_applied = false; // since the dialog was last hidden
};

} // namespace tarqa::housekeeping::gui
