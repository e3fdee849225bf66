#pragma once

#include "HelpFixture.h"

#include <tarqa/housekeeping/gui/QHelpWebView.h>
#include <tarqa/housekeeping/gui/QHelpWebViewPage.h>

#include <QtCore/QPoint>
#include <QtWebKitWidgets/QWebFrame>
#include <QtWidgets/QMenu>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace help_test {

using tarqa::housekeeping::gui::QHelpWebView;
using tarqa::housekeeping::gui::QHelpWebViewPage;

/// A help browser with pages of the test's own. Nothing is opened outside but what the test takes.
class WebViewFixture : public testing::Test
{
protected:
    WebViewFixture();

    /// Where the pages are, with a slash at its end.
    static QString directory();
    static QString path(const QString& name) { return directory() + name; }
    static QUrl url(const QString& name) { return QUrl::fromLocalFile(path(name)); }
    /// Writes a page, or any other file. @return its path
    static QString write(const QString& name, const QString& body);

    /// Makes the view and waits until it shows the page.
    void open(const QString& file);
    /// The same with a page of this content.
    void open_page(const QString& body) { open(write("index.html", body)); }

    QWebFrame& main_frame() const { return *view->page()->mainFrame(); }
    /// The frame of this name in the page; null if there is none.
    QWebFrame* frame(const QString& name) const;
    QString text() const { return main_frame().toPlainText(); }
    /// Clicks the element of this id, in the page or in a frame of it, and lets what it does begin.
    void click(const QString& id) { click(id, main_frame()); }
    void click(const QString& id, const QWebFrame& where);
    /// Waits until the page shows the text; fails the test if it never does.
    void expect_text(const QString& expected);

    support::App app;
    OpenedUrls opened;
    std::unique_ptr<QHelpWebView> view;
};

} // namespace help_test
