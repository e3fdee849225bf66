#include "CommandFixture.h"
#include "HelpPageFile.h"
#include "HelpWindowFixture.h"
#include "documents/TerrainDocument.h"
#include "help/HelpTopics.h"
#include "help/OutsideHelp.h"
#include "help/ShortcutsTable.h"
#include "help/TerrainQuickHelp.h"
#include "support/MessageSpy.h"

#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/QuickHelpInputModelFilter.h>
#include <tarqa/housekeeping/QuickHelpKeySequenceEntry.h>
#include <tarqa/housekeeping/QuickHelpManager.h>
#include <tarqa/housekeeping/QuickHelpMouseWheelEntry.h>
#include <tarqa/housekeeping/gui/QHelpWebView.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>
#include <QtGui/QTextDocument>
#include <QtWebKit/QWebElement>
#include <QtWebKitWidgets/QWebFrame>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>

#include <optional>

using namespace host_test;
using housekeeping::DocumentId;
using housekeeping::QuickHelpInputModelFilter;
using housekeeping::QuickHelpKeySequenceEntry;
using housekeeping::QuickHelpManager;
using housekeeping::QuickHelpSection;
using terrain::help_key;
using terrain::HelpDeed;
using terrain::HelpPages;
using terrain::TerrainQuickHelp;
using terrain::Topic;

namespace {

const char* const s_page = "keyboard-shortcuts.html";

/// A text as people see it.
QString as_seen(const QString& html)
{
    QTextDocument document;
    document.setHtml(html);
    return document.toPlainText();
}

/// What the quick help tells about a document, "section: binding: description".
QStringList entries_of_quick_help(const DocumentId& document)
{
    QStringList entries;
    for (unsigned int section = 0; section < static_cast<unsigned int>(QuickHelpSection::NoSection);
         ++section) {
        QAbstractListModel* const p_model
            = QuickHelpManager::instance().sectionModel(static_cast<QuickHelpSection>(section));
        QuickHelpInputModelFilter filter(document, nullptr);
        filter.setSourceModel(p_model);
        for (int row = 0; row < filter.rowCount(); ++row) {
            const QModelIndex index = filter.index(row, 0);
            entries.append(p_model->headerData(0, Qt::Horizontal).toString() + ": "
                + as_seen(index.data(Qt::DisplayRole).toString()) + ": "
                + index.data(Qt::UserRole).toString());
        }
    }
    return entries;
}

/// The same of the page that is shown.
QStringList entries_of_page(const terrain::HelpWindow& window)
{
    QStringList entries;
    const QWebElement place = window.view().page()->mainFrame()->findFirstElement("#shortcuts");
    for (const QWebElement& table : place.findAll("table")) {
        const QString section = table.previousSibling().toPlainText();
        for (const QWebElement& row : table.findAll("tbody tr")) {
            const QWebElement binding = row.firstChild();
            entries.append(
                section + ": " + binding.toPlainText() + ": " + binding.nextSibling().toPlainText());
        }
    }
    return entries;
}

DocumentId current()
{
    return housekeeping::DocumentManager::instance().current_document_id();
}

class HelpShortcutsTest : public HelpWindowTest
{
protected:
    void show_shortcuts()
    {
        show(help_key(Topic::KeyboardShortcuts));
        ShownHelp(*window).expect_page(s_page);
        expect_true_entries();
    }

    /// Waits until the page tells what the quick help tells.
    void expect_true_entries()
    {
        const QStringList expected = entries_of_quick_help(current());
        EXPECT_FALSE(expected.isEmpty());
        EXPECT_TRUE(support::wait_until([&] { return entries_of_page(*window) == expected; }))
            << entries_of_page(*window).join('\n').toStdString();
    }

    void open_document()
    {
        terrain::TerrainDocument& document = make_document(make_raster(2, 1, {1, 2}));
        m_document_help.emplace(document);
    }

    const TerrainQuickHelp m_general_help;
    std::optional<TerrainQuickHelp> m_document_help;
};

} // namespace

// The page in the help window

TEST_F(HelpShortcutsTest, WithoutADocumentThePageListsWhatIsAlwaysPossible)
{
    show_shortcuts();
    EXPECT_EQ(entries_of_page(*window).size(), TerrainQuickHelp::rows(false));
    ShownHelp(*window).expect_text("What is possible while no raster is open.");
}

TEST_F(HelpShortcutsTest, WithADocumentThePageListsItsKeysToo)
{
    open_document();
    show_shortcuts();
    EXPECT_EQ(entries_of_page(*window).size(), TerrainQuickHelp::rows(true));
    ShownHelp(*window).expect_text(QuickHelpManager::instance().title(current()));
}

TEST_F(HelpShortcutsTest, OneGetsThereByALinkToo)
{
    show(help_key(Topic::Contents));
    const ShownHelp shown(*window);
    shown.expect_page("index.html");
    shown.click("nav a[href=\"keyboard-shortcuts.html\"]");
    shown.expect_page(s_page);
    expect_true_entries();
}

TEST_F(HelpShortcutsTest, ThePageIsFreshEachTime)
{
    show_shortcuts();
    open_document();
    show(help_key(Topic::KeyboardShortcuts));
    expect_true_entries();

    QuickHelpKeySequenceEntry entry(
        nullptr, DocumentId::null(), QKeySequence("Ctrl+T"), "a new tool", QuickHelpSection::Tools);
    entry.setAttached(true);
    show(help_key(Topic::Map));
    ShownHelp(*window).expect_page("map.html");
    window->action(HelpDeed::Back).trigger();
    ShownHelp(*window).expect_page(s_page);
    expect_true_entries();
    EXPECT_TRUE(entries_of_page(*window).contains("Tools: Ctrl+T: a new tool"));

    entry.setAttached(false);
    show(help_key(Topic::KeyboardShortcuts));
    expect_true_entries();
}

TEST_F(HelpShortcutsTest, ThePageIsFreshWhenTheWindowIsActivated)
{
    QWidget other;
    other.show();
    show_shortcuts();
    QApplication::setActiveWindow(&other);
    open_document();
    EXPECT_EQ(entries_of_page(*window).size(), TerrainQuickHelp::rows(false));
    QApplication::setActiveWindow(window.get());
    EXPECT_EQ(entries_of_page(*window).size(), TerrainQuickHelp::rows(true));
}

TEST_F(HelpShortcutsTest, TextsAreNotTakenForHtml)
{
    QuickHelpKeySequenceEntry less(
        nullptr, DocumentId::null(), QKeySequence("Ctrl+<"), "<i>less</i> & <more>", QuickHelpSection::Tools);
    QuickHelpKeySequenceEntry ampersand(
        nullptr, DocumentId::null(), QKeySequence("&"), "&amp; and \"&quot;\"", QuickHelpSection::Tools);
    less.setAttached(true);
    ampersand.setAttached(true);
    const QString html = terrain::shortcuts_table(DocumentId::null());
    EXPECT_TRUE(html.contains("<kbd>Ctrl+&lt;</kbd>")) << html.toStdString();
    EXPECT_TRUE(html.contains("&lt;i&gt;less&lt;/i&gt; &amp; &lt;more&gt;")) << html.toStdString();
    EXPECT_TRUE(html.contains("<kbd>&amp;</kbd>")) << html.toStdString();
    show(help_key(Topic::KeyboardShortcuts));
    const ShownHelp shown(*window);
    shown.expect_text("<i>less</i> & <more>");
    shown.expect_text("&amp; and \"&quot;\"");
    EXPECT_TRUE(shown.element("#shortcuts i").isNull());
}

TEST_F(HelpShortcutsTest, SignsOfBindingsAreDrawn)
{
    housekeeping::QuickHelpMouseWheelEntry wheel(
        nullptr, DocumentId::null(), housekeeping::WheelUp, Qt::ShiftModifier, "up", QuickHelpSection::Tools);
    wheel.setAttached(true);
    show_shortcuts();
    EXPECT_TRUE(entries_of_page(*window).contains(QString::fromUtf8(u8"Tools: Shift+Wheel ▲: up")))
        << entries_of_page(*window).join('\n').toStdString();
}

TEST_F(HelpShortcutsTest, SectionsWithoutEntriesAreLeftOut)
{
    const QString html = terrain::shortcuts_table(DocumentId::null());
    EXPECT_TRUE(html.contains("<h2>File</h2>"));
    EXPECT_FALSE(html.contains("<h2>Selection</h2>"));
}

// Outside

TEST_F(HelpShortcutsTest, OutsideAFilledCopyIsOpened)
{
    open_document();
    const HelpPages pages;
    const QUrl page = pages.address(help_key(Topic::KeyboardShortcuts));
    EXPECT_TRUE(terrain::open_help_outside(pages, page));
    ASSERT_EQ(opened.urls.size(), 1U);
    const QString copy = opened.urls[0].toLocalFile();
    EXPECT_TRUE(copy.startsWith(QStandardPaths::writableLocation(QStandardPaths::CacheLocation)))
        << copy.toStdString();
    for (const QString& path : {copy, QFileInfo(copy).path()}) {
        EXPECT_FALSE(QFileInfo(path).permissions() & (QFile::ReadGroup | QFile::ReadOther))
            << path.toStdString();
    }

    const QString expected = terrain::shortcuts_table(current());
    QFile file(copy);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    EXPECT_TRUE(text.contains("<div id=\"shortcuts\">" + expected + "</div>")) << text.toStdString();
    const QString folder = QUrl::fromLocalFile(pages.folder() + '/').toString(QUrl::FullyEncoded);
    EXPECT_TRUE(text.contains("<head><base href=\"" + folder + "\">")) << text.toStdString();
    EXPECT_TRUE(text.contains("href=\"style.css\""));
}

TEST_F(HelpShortcutsTest, TheCopyIsFreshEachTime)
{
    const HelpPages pages;
    const QUrl page = pages.address(help_key(Topic::KeyboardShortcuts));
    EXPECT_TRUE(terrain::open_help_outside(pages, page));
    QuickHelpKeySequenceEntry entry(
        nullptr, DocumentId::null(), QKeySequence("Ctrl+T"), "a new tool", QuickHelpSection::Tools);
    entry.setAttached(true);
    EXPECT_TRUE(terrain::open_help_outside(pages, page));
    ASSERT_EQ(opened.urls.size(), 2U);
    EXPECT_EQ(opened.urls[0], opened.urls[1]);
    QFile file(opened.urls[1].toLocalFile());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("a new tool"));
}

TEST_F(HelpShortcutsTest, WithoutAPlaceForTheCopyThePageItselfIsOpened)
{
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
    ASSERT_TRUE(QDir().mkpath(QFileInfo(cache).path()));
    QFile in_the_way(cache);
    ASSERT_TRUE(in_the_way.open(QIODevice::WriteOnly));
    const HelpPages pages;
    const QUrl page = pages.address(help_key(Topic::KeyboardShortcuts));
    EXPECT_TRUE(terrain::open_help_outside(pages, page));
    ASSERT_EQ(opened.urls.size(), 1U);
    EXPECT_EQ(opened.urls[0], page);
    EXPECT_TRUE(log.take("keyboard-shortcuts.html\" cannot be written"));
}

TEST_F(HelpShortcutsTest, ThePageOnItsOwnSaysWhereTheListIs)
{
    const HelpPageFile page(help_file(s_page));
    EXPECT_TRUE(page.ids.contains("shortcuts"));
    EXPECT_TRUE(page.text.contains("choose Help > Shortcuts... there"));
    // In the copy such a link would lead to the folder.
    for (const HelpLink& link : page.links) {
        EXPECT_FALSE(link.address.startsWith('#')) << link.address.toStdString();
    }
}
