#pragma once

#include "support/App.h"
#include "support/Fakes.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/gui/AbstractMainWindow.h>
#include <tarqa/housekeeping/gui/HelpLauncher.h>
#include <tarqa/housekeeping/gui/HelpLauncherFactory.h>
#include <tarqa/housekeeping/gui/HelpManager.h>
#include <tarqa/housekeeping/gui/MainWindowMessage.h>

#include <QtCore/QTranslator>
#include <QtCore/QUrl>
#include <QtGui/QIcon>
#include <QtGui/QImage>
#include <QtWidgets/QAction>
#include <QtWidgets/QMessageBox>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace help_test {

using support::journal;
using tarqa::housekeeping::TestAccess;
using tarqa::housekeeping::gui::AbstractMainWindow;
using tarqa::housekeeping::gui::HelpLauncher;
using tarqa::housekeeping::gui::HelpLauncherFactory;
using tarqa::housekeeping::gui::HelpManager;
using tarqa::housekeeping::gui::MainWindowMessage;

typedef std::vector<std::string> Lines;

const char* const s_product = "TarqHelpful";
const char* const s_menu_title = " &Help"; // the blank belongs to it

/// A launcher that journals as its name: "TarqHelpful 1.about", "TarqHelpful 1.show_page(KEY, inside)",
/// "(KEY, outside)" and "TarqHelpful 1.destroyed".
class FakeLauncher : public HelpLauncher
{
public:
    /// @param on_show_page called when a page is asked for, before the launcher looks which one; must outlive
    /// the launcher
    FakeLauncher(const std::string& label, const std::function<void()>& on_show_page);
    ~FakeLauncher() override;
    void about() override;
    void show_page(const QString& page, bool external) override;

private:
    std::string m_label;
    const std::function<void()>& m_on_show_page; // the factory's
};

/// A launcher with the library's about box.
class PlainLauncher : public HelpLauncher
{
public:
    void show_page(const QString&, bool) override { }
};

/// Makes FakeLaunchers, the first of which is labelled like the product with " 1". Registered for ever by
/// register_launcher().
class FakeLauncherFactory : public HelpLauncherFactory
{
public:
    FakeLauncherFactory(const std::string& name, bool is_default);
    boost::shared_ptr<HelpLauncher> create_product() override;
    HelpLauncher* create_unmanaged_product() override;

    bool gives_nothing = false;
    std::function<void()> on_create; // before one is made
    std::function<void()> on_show_page; // of all that were made

private:
    std::string next_label();

    std::string m_name;
    int m_made = 0;
};

FakeLauncherFactory& register_launcher(const std::string& name = s_product, bool is_default = false);

/// Takes the addresses of some schemes that are to be opened by the desktop, which opens nothing then.
class OpenedUrls : public QObject
{
    Q_OBJECT

public:
    OpenedUrls();
    ~OpenedUrls() override;

    /// What was opened since the last call, in order.
    std::vector<QUrl> take();
    /// The same as texts.
    Lines take_texts();

public slots:
    void open(const QUrl& url);

private:
    std::vector<QUrl> m_urls;
};

/// Puts "[T]" before each text of a class.
class ClassTranslator : public QTranslator
{
public:
    explicit ClassTranslator(const char* class_name)
        : m_class_name(class_name)
    {
        QCoreApplication::installTranslator(this);
    }
    ~ClassTranslator() override { QCoreApplication::removeTranslator(this); }
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char*, int) const override
    {
        return m_class_name == context ? "[T]" + QString(text) : QString();
    }

private:
    QString m_class_name;
};

/// Sends a message. @return its entries; they are in the target when the function returns
std::vector<QObject*> send(int kind, QWidget* p_target, QWidget* p_owner);

/// The texts of a widget's actions, "----" for a separator.
Lines texts(const QWidget& widget);

/// The 16 pixels wide picture of an icon, of the current style.
QImage picture(const QIcon& icon);

/// The visible message boxes of the program.
std::vector<QMessageBox*> boxes();
/// Takes away the only box, which does not block. @return its text; empty, and a failure, if there is none
/// or more than one
QString dismiss_box();

/// A program with a window, but no launcher.
class HelpWithoutLauncher : public testing::Test
{
protected:
    /// Slots of the Help menu.
    enum Slot
    {
        Contents = 0,
        QuickHelp = 1,
        Shortcuts = 2,
        LogFile = 3,
        Separator = 4,
        About = 5
    };

    HelpWithoutLauncher();
    ~HelpWithoutLauncher() override;

    static HelpManager& manager() { return HelpManager::instance(); }
    /// Calls a protected slot without parameters.
    static void call(const char* slot);

    /// The window asks for the entries of the Help menu; null where there is none.
    std::vector<QAction*> entries() { return entries(&window); }
    static std::vector<QAction*> entries(QWidget* p_owner);
    QAction& action(Slot slot);

    support::App app;
    QWidget window;
};

/// The same with a launcher of the product's name.
class HelpFixture : public HelpWithoutLauncher
{
protected:
    /// What the launchers were asked for since the last call.
    static Lines calls();

    FakeLauncherFactory& factory = register_launcher();
};

} // namespace help_test
