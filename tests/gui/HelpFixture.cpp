#include "HelpFixture.h"

#include "support/Kept.h"

#include <pkBaseQt/pkProductInfo.h>

#include <QtGui/QDesktopServices>
#include <QtWidgets/QMenu>

#include <utility>

namespace help_test {

namespace {

const char* const s_schemes[] = {"file", "http", "https", "mailto", "ftp", "about", "data", "qrc"};

} // namespace

// The launcher

FakeLauncher::FakeLauncher(const std::string& label, const std::function<void()>& on_show_page)
    : m_label(label)
    , m_on_show_page(on_show_page)
{ }

FakeLauncher::~FakeLauncher()
{
    journal().add(m_label + ".destroyed");
}

void FakeLauncher::about()
{
    journal().add(m_label + ".about");
}

void FakeLauncher::show_page(const QString& page, bool external)
{
    if (m_on_show_page) {
        m_on_show_page();
    }
    journal().add(m_label + ".show_page(" + page.toStdString() + (external ? ", outside)" : ", inside)"));
}

FakeLauncherFactory::FakeLauncherFactory(const std::string& name, bool is_default)
    : HelpLauncherFactory(name, is_default)
    , m_name(name)
{ }

boost::shared_ptr<HelpLauncher> FakeLauncherFactory::create_product()
{
    if (on_create) {
        on_create();
    }
    return boost::shared_ptr<HelpLauncher>(
        gives_nothing ? nullptr : new FakeLauncher(next_label(), on_show_page));
}

HelpLauncher* FakeLauncherFactory::create_unmanaged_product()
{
    return new FakeLauncher(next_label(), on_show_page);
}

std::string FakeLauncherFactory::next_label()
{
    return m_name + ' ' + std::to_string(++m_made);
}

FakeLauncherFactory& register_launcher(const std::string& name, bool is_default)
{
    return support::kept(new FakeLauncherFactory(name, is_default));
}

// The desktop

OpenedUrls::OpenedUrls()
{
    for (const char* const scheme : s_schemes) {
        QDesktopServices::setUrlHandler(scheme, this, "open");
    }
}

OpenedUrls::~OpenedUrls()
{
    EXPECT_TRUE(take_texts().empty()); // otherwise nobody has looked
    for (const char* const scheme : s_schemes) {
        QDesktopServices::unsetUrlHandler(scheme);
    }
}

void OpenedUrls::open(const QUrl& url)
{
    m_urls.push_back(url);
}

std::vector<QUrl> OpenedUrls::take()
{
    return std::exchange(m_urls, {});
}

Lines OpenedUrls::take_texts()
{
    Lines lines;
    for (const QUrl& url : take()) {
        lines.push_back(url.toString(QUrl::FullyEncoded).toStdString());
    }
    return lines;
}

// Messages and menus

std::vector<QObject*> send(int kind, QWidget* p_target, QWidget* p_owner)
{
    MainWindowMessage message;
    message.kind(kind);
    message.target(p_target);
    message.owner(p_owner);
    message.dispatch();
    return TestAccess::entries(message);
}

Lines texts(const QWidget& widget)
{
    Lines lines;
    for (const QAction* p_action : widget.actions()) {
        lines.push_back(p_action->isSeparator() ? "----" : p_action->text().toStdString());
    }
    return lines;
}

QImage picture(const QIcon& icon)
{
    return icon.pixmap(16).toImage();
}

std::vector<QMessageBox*> boxes()
{
    std::vector<QMessageBox*> boxes;
    for (QWidget* p_widget : QApplication::topLevelWidgets()) {
        auto* const p_box = qobject_cast<QMessageBox*>(p_widget);
        if (p_box && p_box->isVisible()) {
            boxes.push_back(p_box);
        }
    }
    return boxes;
}

QString dismiss_box()
{
    const std::vector<QMessageBox*> shown = boxes();
    EXPECT_EQ(1u, shown.size());
    if (shown.size() != 1) {
        return {};
    }
    EXPECT_FALSE(shown[0]->isModal());
    EXPECT_NE("", shown[0]->windowTitle());
    const QString text = shown[0]->text();
    delete shown[0];
    return text;
}

// The fixtures

HelpWithoutLauncher::HelpWithoutLauncher()
{
    pkBase::pkProductInfo::instance().product_name(s_product);
}

HelpWithoutLauncher::~HelpWithoutLauncher()
{
    TestAccess::destroy<HelpManager>();
    EXPECT_TRUE(boxes().empty());
}

void HelpWithoutLauncher::call(const char* slot)
{
    EXPECT_TRUE(QMetaObject::invokeMethod(&manager(), slot, Qt::DirectConnection)) << slot;
}

std::vector<QAction*> HelpWithoutLauncher::entries(QWidget* p_owner)
{
    QMenu menu(s_menu_title);
    std::vector<QAction*> actions;
    for (QObject* p_entry : send(MainWindowMessage::Menu, &menu, p_owner)) {
        actions.push_back(qobject_cast<QAction*>(p_entry));
    }
    return actions;
}

QAction& HelpWithoutLauncher::action(Slot slot)
{
    manager();
    return *entries().at(slot);
}

Lines HelpFixture::calls()
{
    const Lines calls = journal().entries();
    journal().clear();
    return calls;
}

} // namespace help_test
