#include <tarqa/housekeeping/gui/PreferencesDialog.h>

#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/gui/AbstractMainWindow.h>
#include <tarqa/housekeeping/gui/AbstractPreferences.h>
#include <tarqa/housekeeping/gui/AbstractPreferencesFactory.h>

#include <pkBaseQt/QFinalPolish.h>
#include <pkBaseQt/QPKHelpButton.h>
#include <tarqa/utilities/Exception.h>

#include "Assertion.h"
#include "LiveMainWindow.h"
#include "LoggingExceptions.h"

#include <QtGui/QHideEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QShortcut>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <memory>
#include <utility>

namespace tarqa::housekeeping::gui {

namespace {

const char* const s_source = "housekeeping/gui/src/PreferencesDialog";

const char* const s_help_key = "TARQ_FILE_MENU_PREFERENCES";
const QSize s_first_size(493, 500);
const QSize s_smallest_size(450, 378);
const int s_first_tab = 1; // deliberately the second page

const char* const s_unknown_exception = "A page of the preferences failed for an unknown reason";

/// Null if the page is not to be shown, and, logged, if it cannot be made.
std::unique_ptr<AbstractPreferences> create_page(const std::string& product)
{
    std::unique_ptr<AbstractPreferences> page;
    bool failed = true;
    bool valid = false;
    logging_exceptions(s_unknown_exception, [&] {
        page.reset(product.empty() ? AbstractPreferencesFactory::create_unmanaged()
                                   : AbstractPreferencesFactory::create_unmanaged(product));
        valid = page && page->isValidPanel();
        failed = false;
    });
    HK_ASSERT(page || failed, "page");
    return valid ? std::move(page) : nullptr;
}

/// What a page throws here is of no use to the user, who has done nothing but look.
void refresh(AbstractPreferences& page)
{
    logging_exceptions(s_unknown_exception, [&page] { page.aboutToShow(); });
}

} // namespace

PreferencesDialog::PreferencesDialog(QWidget* p_parent, Qt::WindowFlags)
    : QDialog(p_parent ? p_parent : live_main_window())
{
    setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::CustomizeWindowHint
        | Qt::WindowCloseButtonHint);
    connect(new QShortcut(QKeySequence(QKeySequence::Close), this), SIGNAL(activated()), this, SLOT(close()));
    build_form();
    QWidget* const p_placeholder = m_tab->currentWidget();
    m_tab->removeTab(m_tab->currentIndex());
    delete p_placeholder;
    fill_dialog();
    order_tab_stops();
    adjustSize();
    resize(size().expandedTo(s_smallest_size).expandedTo(minimumSizeHint()));
    m_tab->setCurrentIndex(s_first_tab);
    setModal(false);
}

PreferencesDialog::~PreferencesDialog() = default;

void PreferencesDialog::build_form()
{
    setObjectName("PreferenceDialog");
    resize(s_first_size);
    setWindowTitle(tr("Preferences"));

    m_tab = new QTabWidget;
    m_tab->setObjectName("m_tab");
    m_tab->addTab(new QWidget, tr("Tab 1"));
    helpButton = new pkBase::QPKHelpButton(s_help_key);
    helpButton->setObjectName("helpButton");
    helpButton->setAutoDefault(false);
    m_okButton = new QPushButton(tr("Apply"));
    m_okButton->setObjectName("m_okButton");
    m_okButton->setDefault(true);
    m_cancelButton = new QPushButton(tr("Close"));
    m_cancelButton->setObjectName("m_cancelButton");
    m_cancelButton->setAutoDefault(false);

    auto* const p_layout = new QVBoxLayout(this);
    p_layout->addWidget(m_tab);
    auto* const p_buttons = new QHBoxLayout;
    p_buttons->addWidget(helpButton);
    p_buttons->addStretch();
    p_buttons->addWidget(m_okButton);
    p_buttons->addWidget(m_cancelButton);
    p_layout->addLayout(p_buttons);

    connect(m_tab, SIGNAL(currentChanged(int)), this, SLOT(tabChanged(int)));
    connect(m_okButton, SIGNAL(clicked()), this, SLOT(accept()));
    connect(m_cancelButton, SIGNAL(clicked()), this, SLOT(close()));
    // A slot on_..._clicked() of this class would make its button act twice.
    QMetaObject::connectSlotsByName(this);
}

void PreferencesDialog::fill_dialog()
{
    for (const std::string& product : AbstractPreferencesFactory::products()) {
        if (std::unique_ptr<AbstractPreferences> page = create_page(product)) {
            pkBase::QFinalPolish::apply(page.get());
            m_pages.push_back(page.release());
        }
    }
    std::sort(m_pages.begin(), m_pages.end(),
        [](const AbstractPreferences* p_one, const AbstractPreferences* p_other) {
            return p_one->weight() < p_other->weight();
        });
    for (const QPointer<AbstractPreferences>& p_page : m_pages) {
        m_tab->addTab(p_page, p_page->label());
    }
}

/// Leads the Tab key to the buttons after the pages, which were made later.
void PreferencesDialog::order_tab_stops()
{
    QWidget* p_last = previousInFocusChain();
    while (p_last != this && p_last->focusPolicy() == Qt::NoFocus) {
        p_last = p_last->previousInFocusChain(); // the order knows only what can have the keyboard
    }
    for (QWidget* const p_button : {static_cast<QWidget*>(m_okButton), static_cast<QWidget*>(m_cancelButton),
             static_cast<QWidget*>(helpButton)}) {
        setTabOrder(p_last, p_button);
        p_last = p_button;
    }
}

void PreferencesDialog::pre_show_dialog()
{
    const std::vector<QPointer<AbstractPreferences>> pages = m_pages; // one of them may end the dialog
    for (const QPointer<AbstractPreferences>& p_page : pages) {
        if (p_page) {
            refresh(*p_page);
        }
    }
}

void PreferencesDialog::accept()
{
    AbstractPreferences* const p_page = page(m_tab->currentIndex());
    bool applied
        = std::exchange(m_applied, false); // earlier; a page that closes the dialog announces it below
    const QPointer<PreferencesDialog> p_this(this); // a page may end the dialog, or the program
    ErrorHandler& errors = ErrorHandler::instance();
    const std::string title = windowTitle().toStdString();
    try {
        if (p_page) {
            p_page->accept();
        }
        if (p_this) {
            setResult(Accepted); // and deliberately stays open
        }
        applied = applied || p_page;
    } catch (const tarqa::Exception& exception) {
        errors.message(title, exception, QMessageBox::Ok);
    } catch (const std::exception& exception) {
        errors.message(title, exception, QMessageBox::Ok);
    } catch (...) {
        errors.message(title, tr("The page failed for an unknown reason.").toStdString(), QMessageBox::Ok);
    }
    if (p_this && applied) {
        note_applied();
    }
}

void PreferencesDialog::tabChanged(int index)
{
    if (AbstractPreferences* const p_page = page(index)) {
        refresh(*p_page);
    }
}

AbstractPreferences* PreferencesDialog::page(int index) const
{
    return qobject_cast<AbstractPreferences*>(m_tab->widget(index));
}

void PreferencesDialog::setTab(int index)
{
    m_tab->setCurrentIndex(index);
}

/// What a page that closes the dialog applies is announced when it has applied it.
void PreferencesDialog::note_applied()
{
    m_applied = isVisible();
    if (!m_applied) {
        emit accepted_signal();
    }
}

void PreferencesDialog::hideEvent(QHideEvent* p_event)
{
    QDialog::hideEvent(p_event);
    if (!p_event->spontaneous() && std::exchange(m_applied, false)) {
        emit accepted_signal();
    }
}

} // namespace tarqa::housekeeping::gui
