#pragma once

#include "HelpRecorder.h"
#include "help/HelpPages.h"
#include "help/HelpWindow.h"
#include "support/App.h"
#include "support/LogCapture.h"

#include <QtCore/QObject>
#include <QtCore/QString>

#include <gtest/gtest.h>

#include <memory>

class QWebElement;

namespace host_test {

/// Stands for a desktop on which nothing opens web pages and files.
class NoBrowser : public QObject
{
    Q_OBJECT

public:
    NoBrowser();
    ~NoBrowser() override;
};

/// What a help window shows, and what a user does in it.
class ShownHelp
{
public:
    explicit ShownHelp(terrain::HelpWindow& window)
        : m_window(window)
    { }

    /// Waits until a page is shown that holds @p text; fails the test if it never is.
    void expect_text(const QString& text) const;
    /// Waits until the file of this name is shown; fails the test if it never is.
    void expect_page(const QString& name) const;

    QString text() const;
    QString title() const;
    QWebElement element(const QString& selector) const;
    /// Scrolls the element into sight and clicks it.
    void click(const QString& selector) const;

private:
    terrain::HelpWindow& m_window;
};

/// A program with settings of its own, in which nothing is opened outside but what the test takes.
class HelpWindowTest : public testing::Test
{
protected:
    HelpWindowTest();

    /// A folder of pages that is the test's own. @return the file of this name in it
    static QString own_folder();
    static void write_page(const QString& name, const QString& title, const QString& body);

    void show(const QString& page, const terrain::HelpPages& pages = terrain::HelpPages());

    support::App application;
    support::LogCapture log;
    OpenedAddresses opened;
    std::unique_ptr<terrain::HelpWindow> window;
};

} // namespace host_test
