#include "interface/Interface.h"

#include <tarqa/housekeeping/gui/AbstractPreferences.h>
#include <tarqa/housekeeping/gui/AbstractPreferencesFactory.h>
#include <tarqa/housekeeping/gui/HelpLauncher.h>
#include <tarqa/housekeeping/gui/HelpLauncherFactory.h>
#include <tarqa/housekeeping/gui/HelpManager.h>
#include <tarqa/housekeeping/gui/PreferencesDialog.h>
#include <tarqa/housekeeping/gui/QHelpWebView.h>
#include <tarqa/housekeeping/gui/QHelpWebViewPage.h>

#include <QtCore/QMetaMethod>

#include <gtest/gtest.h>

#include <string>
#include <vector>

// What the library offers for the help and the preferences.

using namespace tarqa::housekeeping::gui;

namespace {

// The help manager

static_assert(std::is_base_of_v<QObject, HelpManager>);
static_assert(std::has_virtual_destructor_v<HelpManager>);
static_assert(!std::is_default_constructible_v<HelpManager>);
static_assert(!std::is_destructible_v<HelpManager>);
static_assert(!std::is_copy_constructible_v<HelpManager>);
static_assert(!std::is_abstract_v<HelpManager>);
INTERFACE_HAS(HelpManager::instance, HelpManager& (*)());
INTERFACE_HAS(HelpManager::const_instance, const HelpManager& (*)());
INTERFACE_HAS(HelpManager::showQuickHelp, void (HelpManager::*)());
INTERFACE_HAS(HelpManager::onShowPage, void (HelpManager::*)(const QString&));
INTERFACE_HAS(HelpManager::onShowPageExternal, void (HelpManager::*)(const QString&));
INTERFACE_HAS(HelpManager::setCurrPath, void (HelpManager::*)(const QString&));
INTERFACE_HAS(HelpManager::clearCurrPath, void (HelpManager::*)());
INTERFACE_HAS(HelpManager::currPath, const QString& (HelpManager::*)() const);
INTERFACE_HAS(HelpManager::issue_form, const QUrl& (*)());
INTERFACE_HAS(HelpManager::issue_form, void (*)(const QUrl&));

/// What is protected.
class OpenManager : public HelpManager
{
public:
    using HelpManager::handle_message;
    using HelpManager::help_about;
    using HelpManager::help_contents;
    using HelpManager::newJIRAIssue;
    using HelpManager::restart;
    using HelpManager::showLogFile;
    using HelpManager::showShortcuts;
};

INTERFACE_HAS(OpenManager::help_about, void (HelpManager::*)());
INTERFACE_HAS(OpenManager::help_contents, void (HelpManager::*)());
INTERFACE_HAS(OpenManager::showLogFile, void (HelpManager::*)());
INTERFACE_HAS(OpenManager::showShortcuts, void (HelpManager::*)());
INTERFACE_HAS(OpenManager::newJIRAIssue, void (HelpManager::*)());
INTERFACE_HAS(OpenManager::handle_message, void (HelpManager::*)(MainWindowMessage&));
INTERFACE_HAS(OpenManager::restart, void (HelpManager::*)());

// The host's launcher

static_assert(std::is_base_of_v<QObject, HelpLauncher>);
static_assert(std::is_abstract_v<HelpLauncher>);
static_assert(std::has_virtual_destructor_v<HelpLauncher>);
INTERFACE_HAS(HelpLauncher::about, void (HelpLauncher::*)());
INTERFACE_HAS(HelpLauncher::show_page, void (HelpLauncher::*)(const QString&, bool));
INTERFACE_HAS(HelpLauncherFactory::create, boost::shared_ptr<HelpLauncher> (*)(const std::string&));

INTERFACE_HAS(HelpLauncherFactory::factory_name, const char* (*)());

/// The last entry of every object.
class OpenObject : public QObject
{
public:
    using QObject::disconnectNotify;
};

/// The first entry behind the launcher's own; abstract, as only show_page() is pure.
class NextLauncher : public HelpLauncher
{
public:
    virtual void next() { }
};

/// A launcher needs nothing but a way to show pages.
class LeastLauncher : public HelpLauncher
{
public:
    void show_page(const QString&, bool) override { }
};

static_assert(!std::is_abstract_v<LeastLauncher>);

// The help browser

static_assert(std::is_base_of_v<QWebView, QHelpWebView>);
static_assert(std::is_constructible_v<QHelpWebView, const QString&, QWidget*>);
static_assert(!std::is_default_constructible_v<QHelpWebView>);
static_assert(!std::is_convertible_v<QString, QHelpWebView>);
static_assert(std::is_base_of_v<QWebPage, QHelpWebViewPage>);

/// What is protected.
class OpenView : public QHelpWebView
{
public:
    using QHelpWebView::contextMenuEvent;
};

class OpenPage : public QHelpWebViewPage
{
public:
    using QHelpWebViewPage::javaScriptConsoleMessage;
    using QHelpWebViewPage::userAgentForUrl;
};

INTERFACE_HAS(QHelpWebViewPage::opens_outside, bool (*)(const QUrl&));
INTERFACE_HAS(OpenView::contextMenuEvent, void (QHelpWebView::*)(QContextMenuEvent*));
INTERFACE_HAS(
    OpenPage::javaScriptConsoleMessage, void (QHelpWebViewPage::*)(const QString&, int, const QString&));
INTERFACE_HAS(OpenPage::userAgentForUrl, QString (QHelpWebViewPage::*)(const QUrl&) const);

// A page of the preferences

static_assert(std::is_base_of_v<QWidget, AbstractPreferences>);
static_assert(std::has_virtual_destructor_v<AbstractPreferences>);
static_assert(!std::is_copy_constructible_v<AbstractPreferences>);
INTERFACE_HAS(AbstractPreferences::label, const QString& (AbstractPreferences::*)() const);
INTERFACE_HAS(AbstractPreferences::label, void (AbstractPreferences::*)(const QString&));
INTERFACE_HAS(AbstractPreferences::weight, int (AbstractPreferences::*)() const);
INTERFACE_HAS(AbstractPreferences::weight, void (AbstractPreferences::*)(int));
INTERFACE_HAS(AbstractPreferences::isValidPanel, bool (AbstractPreferences::*)());
INTERFACE_HAS(AbstractPreferences::accept, void (AbstractPreferences::*)());
INTERFACE_HAS(AbstractPreferences::aboutToShow, void (AbstractPreferences::*)());
INTERFACE_HAS(AbstractPreferencesFactory::create_unmanaged, AbstractPreferences* (*)());
INTERFACE_HAS(AbstractPreferencesFactory::create_unmanaged, AbstractPreferences* (*)(const std::string&));
INTERFACE_HAS(AbstractPreferencesFactory::factory_name, const char* (*)());

/// What is protected, and the first entry behind the page's own.
class NextPage : public AbstractPreferences
{
public:
    using AbstractPreferences::read;
    using AbstractPreferences::write;
    virtual void next() { }
};

INTERFACE_HAS(NextPage::read, void (AbstractPreferences::*)(const std::string&));
INTERFACE_HAS(NextPage::write, void (AbstractPreferences::*)(const std::string&));

// The preferences

static_assert(std::is_base_of_v<QDialog, PreferencesDialog>);
static_assert(std::has_virtual_destructor_v<PreferencesDialog>);
static_assert(std::is_default_constructible_v<PreferencesDialog>);
static_assert(std::is_constructible_v<PreferencesDialog, QWidget*>);
static_assert(std::is_constructible_v<PreferencesDialog, QWidget*, Qt::WindowFlags>);
static_assert(!std::is_copy_constructible_v<PreferencesDialog>);
INTERFACE_HAS(PreferencesDialog::pre_show_dialog, void (PreferencesDialog::*)());
INTERFACE_HAS(PreferencesDialog::accepted_signal, void (PreferencesDialog::*)());
INTERFACE_HAS(PreferencesDialog::accept, void (PreferencesDialog::*)());
INTERFACE_HAS(PreferencesDialog::tabChanged, void (PreferencesDialog::*)(int));
INTERFACE_HAS(PreferencesDialog::setTab, void (PreferencesDialog::*)(int));

/// The first entry behind the dialog's own.
class NextDialog : public PreferencesDialog
{
public:
    virtual void next() { }
};

/// The signatures of a class's own methods of a kind, in their order; other accesses than @p access are
/// marked.
std::vector<std::string> methods(
    const QMetaObject& meta, QMetaMethod::MethodType type, QMetaMethod::Access access)
{
    std::vector<std::string> signatures;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        if (method.methodType() == type) {
            signatures.push_back(
                (method.access() == access ? "" : "other access: ") + method.methodSignature().toStdString());
        }
    }
    return signatures;
}

typedef std::vector<std::string> Signatures;

} // namespace

TEST(HelpLauncherInterface, VirtualOperationsFollowThoseOfObjectsInTheirOrder)
{
    EXPECT_TRUE(interface::in_a_row(
        &OpenObject::disconnectNotify, &HelpLauncher::about, &HelpLauncher::show_page, &NextLauncher::next));
    EXPECT_TRUE(std::is_abstract_v<NextLauncher>);
}

TEST(HelpManagerInterface, HasNoVirtualOperationsOfItsOwn)
{
    class NextManager : public HelpManager
    {
    public:
        virtual void next() { }
    };
    EXPECT_TRUE(interface::in_a_row(&OpenObject::disconnectNotify, &NextManager::next));
}

TEST(HelpManagerInterface, HasItsSignalAlone)
{
    EXPECT_EQ(methods(HelpManager::staticMetaObject, QMetaMethod::Signal, QMetaMethod::Public),
        Signatures{"showQuickHelp()"});
}

TEST(AbstractPreferencesInterface, VirtualOperationsAreInTheirOrder)
{
    EXPECT_TRUE(interface::in_a_row(&AbstractPreferences::isValidPanel, &AbstractPreferences::accept,
        &AbstractPreferences::aboutToShow, &NextPage::read, &NextPage::write, &NextPage::next));
}

TEST(AbstractPreferencesInterface, SlotsArePublicAndInTheirOrder)
{
    const QMetaObject& meta = AbstractPreferences::staticMetaObject;
    EXPECT_EQ(
        methods(meta, QMetaMethod::Slot, QMetaMethod::Public), (Signatures{"accept()", "aboutToShow()"}));
    EXPECT_EQ(methods(meta, QMetaMethod::Signal, QMetaMethod::Public), Signatures{});
}

TEST(PreferencesDialogInterface, AcceptAndTabChangedAreVirtual)
{
    EXPECT_EQ(interface::slot_of(&QDialog::accept), interface::slot_of(&PreferencesDialog::accept));
    EXPECT_TRUE(interface::in_a_row(&PreferencesDialog::tabChanged, &NextDialog::next));
    EXPECT_FALSE(interface::in_a_row(&PreferencesDialog::setTab));
    EXPECT_FALSE(interface::in_a_row(&PreferencesDialog::pre_show_dialog));
}

TEST(PreferencesDialogInterface, SignalAndSlotsArePublicAndInTheirOrder)
{
    const QMetaObject& meta = PreferencesDialog::staticMetaObject;
    EXPECT_EQ(methods(meta, QMetaMethod::Signal, QMetaMethod::Public), Signatures{"accepted_signal()"});
    EXPECT_EQ(methods(meta, QMetaMethod::Slot, QMetaMethod::Public),
        (Signatures{"accept()", "tabChanged(int)", "setTab(int)"}));
}

TEST(QHelpWebViewInterface, AddsNoSignals)
{
    EXPECT_EQ(
        methods(QHelpWebView::staticMetaObject, QMetaMethod::Signal, QMetaMethod::Public), Signatures{});
    EXPECT_STREQ(
        "tarqa::housekeeping::gui::QHelpWebViewPage", QHelpWebViewPage::staticMetaObject.className());
}
