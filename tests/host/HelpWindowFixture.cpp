#include "HelpWindowFixture.h"

#include "support/MessageSpy.h"
#include "support/PrivateHome.h"

#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/housekeeping/gui/QHelpWebView.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtGui/QDesktopServices>
#include <QtTest/QTest>
#include <QtWebKit/QWebElement>
#include <QtWebKitWidgets/QWebFrame>

namespace host_test {

namespace {

QWebFrame& frame_of(const terrain::HelpWindow& window)
{
    return *window.view().page()->mainFrame();
}

} // namespace

NoBrowser::NoBrowser()
{
    for (const char* const scheme : {"file", "http", "https"}) {
        QDesktopServices::setUrlHandler(scheme, this, "there_is_no_such_slot");
    }
}

NoBrowser::~NoBrowser()
{
    for (const char* const scheme : {"file", "http", "https"}) {
        QDesktopServices::unsetUrlHandler(scheme);
    }
}

void ShownHelp::expect_text(const QString& expected) const
{
    EXPECT_TRUE(support::wait_until([this, &expected] { return text().contains(expected); }))
        << "expected " << expected.toStdString() << ", there is " << text().toStdString();
}

void ShownHelp::expect_page(const QString& name) const
{
    // The address comes before the page, and the page before its looks.
    const auto is_shown = [this, &name] {
        return m_window.view().url().fileName() == name && !title().isEmpty()
            && frame_of(m_window).evaluateJavaScript("document.readyState") == "complete";
    };
    EXPECT_TRUE(support::wait_until(is_shown)) << "expected " << name.toStdString() << ", there is "
                                               << m_window.view().url().toString().toStdString();
}

QString ShownHelp::text() const
{
    return frame_of(m_window).toPlainText();
}

QString ShownHelp::title() const
{
    return m_window.view().title();
}

QWebElement ShownHelp::element(const QString& selector) const
{
    return frame_of(m_window).findFirstElement(selector);
}

void ShownHelp::click(const QString& selector) const
{
    QWebFrame& frame = frame_of(m_window);
    const QRect place = element(selector).geometry();
    ASSERT_FALSE(place.isEmpty()) << selector.toStdString();
    frame.setScrollPosition(QPoint(0, place.top() - m_window.view().height() / 2));
    // The left end of the first line, for links that go over two.
    const QPoint at = place.topLeft() + QPoint(4, 8) - frame.scrollPosition();
    QTest::mouseClick(&m_window.view(), Qt::LeftButton, Qt::NoModifier, at);
    QTest::qWait(20);
}

HelpWindowTest::HelpWindowTest()
{
    QCoreApplication::setOrganizationName("Tarqa");
    QCoreApplication::setApplicationName("tarq-terrain");
    pkBase::pkProductInfo::instance().marketing_name("Tarq Terrain");
}

QString HelpWindowTest::own_folder()
{
    // What is special in an address is not in a path.
    return QString::fromStdString(support::PrivateHome::scratch_directory())
        + QString::fromUtf8(u8"/Hilfe für 100% #1");
}

void HelpWindowTest::write_page(const QString& name, const QString& title, const QString& body)
{
    ASSERT_TRUE(QDir().mkpath(own_folder()));
    QFile file(own_folder() + '/' + name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(
        QString("<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\"/><title>%1</title></head>"
                "<body>%2</body></html>")
            .arg(title, body)
            .toUtf8());
}

void HelpWindowTest::show(const QString& page, const terrain::HelpPages& pages)
{
    if (!window) {
        window = std::make_unique<terrain::HelpWindow>(pages);
    }
    window->show_page(page);
}

} // namespace host_test
