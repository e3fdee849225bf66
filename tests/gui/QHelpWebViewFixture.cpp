#include "QHelpWebViewFixture.h"

#include "support/MessageSpy.h"
#include "support/PrivateHome.h"

#include <pkBaseQt/pkProductInfo.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWebKit/QWebElement>

namespace help_test {

WebViewFixture::WebViewFixture()
{
    pkBase::pkProductInfo::instance().product_name(s_product);
}

QString WebViewFixture::directory()
{
    // What is special in an address is not in a path.
    return QString::fromStdString(support::PrivateHome::scratch_directory())
        + QString::fromUtf8(u8"/Hilfe für 100% #1/");
}

QString WebViewFixture::write(const QString& name, const QString& body)
{
    QFile file(path(name));
    EXPECT_TRUE(QFileInfo(file).dir().mkpath("."));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
    file.write(("<html><head><meta charset='utf-8'></head><body>" + body + "</body></html>").toUtf8());
    return path(name);
}

void WebViewFixture::open(const QString& file)
{
    view = std::make_unique<QHelpWebView>(file);
    view->resize(600, 400);
    view->show();
    QSignalSpy finished(view.get(), &QWebView::loadFinished);
    EXPECT_TRUE(support::wait_until([&finished] { return !finished.isEmpty(); }));
}

QWebFrame* WebViewFixture::frame(const QString& name) const
{
    for (QWebFrame* p_frame : main_frame().childFrames()) {
        if (p_frame->frameName() == name) {
            return p_frame;
        }
    }
    return nullptr;
}

void WebViewFixture::click(const QString& id, const QWebFrame& where)
{
    const QRect place = where.findFirstElement('#' + id).geometry();
    ASSERT_FALSE(place.isEmpty()) << id.toStdString();
    QTest::mouseClick(view.get(), Qt::LeftButton, Qt::NoModifier, where.pos() + place.center());
    QTest::qWait(20);
}

void WebViewFixture::expect_text(const QString& expected)
{
    EXPECT_TRUE(support::wait_until([this, &expected] { return text().contains(expected); }))
        << text().toStdString();
}

} // namespace help_test
