#include "help/HelpPages.h"
#include "../application/SettingsTable.h"
#include "HelpPageFile.h"
#include "PreferencesFixture.h"
#include "help/Bindings.h"
#include "help/HelpTopics.h"
#include "support/App.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtCore/QSet>
#include <QtCore/QUrl>
#include <QtGui/QImage>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>

#include <gmock/gmock.h>

#include <map>

using namespace host_test;
using terrain::help_key;
using terrain::help_page;
using terrain::help_topics;
using terrain::HelpTopic;
using terrain::Topic;

namespace {

const long long s_largest_pictures = 1200000; ///< bytes, all together
const QStringList s_web_hosts = {"gdal.org", "doi.org"};

/// The installed pages; each is parsed once.
class HelpPagesTest : public testing::Test
{
protected:
    HelpPagesTest()
    {
        for (const QString& name : help_files("html")) {
            pages.emplace(name, HelpPageFile(help_file(name)));
        }
    }

    /// The pages that a page leads to. @param everywhere in the navigation too
    QStringList next_pages(const QString& name, bool everywhere) const
    {
        const HelpPageFile& page = pages.at(name);
        std::vector<HelpLink> links = page.links;
        if (everywhere) {
            links.insert(links.end(), page.navigation.begin(), page.navigation.end());
        }
        QStringList next;
        for (const HelpLink& link : links) {
            next.append(link.address.section('#', 0, 0));
        }
        return next;
    }

    support::App application; // the folder is known from that of the program
    std::map<QString, HelpPageFile> pages;
};

int number_of_different(QStringList texts)
{
    texts.removeDuplicates();
    return texts.size();
}

/// Whether an address leads to another host, by a road that nobody listens to.
bool is_good_web_address(const QUrl& url)
{
    return url.scheme() == "https" && s_web_hosts.contains(url.host());
}

} // namespace

// Topics and files

TEST_F(HelpPagesTest, EveryTopicHasAPage)
{
    for (const HelpTopic& topic : help_topics()) {
        EXPECT_EQ(pages.count(topic.page), 1U) << topic.page.toStdString();
    }
}

TEST_F(HelpPagesTest, EveryPageHasATopic)
{
    EXPECT_EQ(pages.size(), help_topics().size());
    for (const auto& page : pages) {
        EXPECT_EQ(help_page(page.first), page.first) << page.first.toStdString() << " has no key";
    }
}

TEST_F(HelpPagesTest, TopicsStandInTheirOrderWithKeysOfTheirOwn)
{
    QSet<QString> keys;
    for (std::size_t i = 0; i < help_topics().size(); ++i) {
        const HelpTopic& topic = help_topics()[i];
        EXPECT_EQ(static_cast<std::size_t>(topic.topic), i) << topic.key.toStdString();
        EXPECT_EQ(help_key(topic.topic), topic.key);
        EXPECT_EQ(help_page(topic.key), topic.page);
        keys.insert(topic.key);
    }
    EXPECT_EQ(keys.size(), static_cast<int>(help_topics().size()));
}

TEST_F(HelpPagesTest, TheLibrarysKeysHavePages)
{
    EXPECT_EQ(help_page("TARQ_CONTENTS"), "index.html");
    EXPECT_EQ(help_page("TARQ_KEYBOARD_SHORTCUTS"), "keyboard-shortcuts.html");
    EXPECT_EQ(help_page("TARQ_FILE_MENU_PREFERENCES"), "preferences.html");
    EXPECT_EQ(help_page("NO_SUCH_KEY"), QString());
}

// What each page is made of

TEST_F(HelpPagesTest, EveryPageHasALanguageACharsetATitleAndOneHeadline)
{
    QSet<QString> titles;
    for (const auto& [name, page] : pages) {
        const std::string text = name.toStdString();
        EXPECT_TRUE(page.begins_as_html5) << text;
        EXPECT_EQ(page.language, "en") << text;
        EXPECT_EQ(page.charset, "utf-8") << text;
        EXPECT_FALSE(page.title.isEmpty()) << text;
        EXPECT_EQ(page.headlines.size(), 1) << text;
        EXPECT_EQ(page.styles, QStringList{"style.css"}) << text;
        EXPECT_EQ(page.scripts, QStringList()) << text;
        titles.insert(page.title);
    }
    EXPECT_EQ(titles.size(), static_cast<int>(pages.size()));
}

TEST_F(HelpPagesTest, NoTwoElementsOfAPageShareAnId)
{
    for (const auto& [name, page] : pages) {
        EXPECT_EQ(number_of_different(page.ids), page.ids.size()) << name.toStdString();
    }
}

TEST_F(HelpPagesTest, EveryPageHasTheSameNavigationAndFindsItselfInIt)
{
    for (const auto& [name, page] : pages) {
        EXPECT_EQ(page.current, QStringList{name}) << name.toStdString();
        QStringList entries;
        for (const HelpLink& link : page.navigation) {
            entries.append(link.address + ' ' + link.text);
            EXPECT_EQ(pages.at(link.address).title, link.text) << name.toStdString();
        }
        EXPECT_EQ(number_of_different(entries), static_cast<int>(help_topics().size())) << name.toStdString();
        EXPECT_EQ(entries.size(), static_cast<int>(help_topics().size())) << name.toStdString();
        QStringList first;
        for (const HelpLink& link : pages.begin()->second.navigation) {
            first.append(link.address + ' ' + link.text);
        }
        EXPECT_EQ(entries, first) << name.toStdString();
    }
}

// Links

TEST_F(HelpPagesTest, EveryLinkLeadsSomewhere)
{
    for (const auto& [name, page] : pages) {
        for (const HelpLink& link : page.links) {
            const std::string text = name.toStdString() + ": " + link.address.toStdString();
            EXPECT_FALSE(link.text.simplified().isEmpty()) << text;
            const QUrl url(link.address);
            if (!url.isRelative()) {
                EXPECT_TRUE(is_good_web_address(url)) << text;
                continue;
            }
            const QString target = url.path().isEmpty() ? name : url.path();
            EXPECT_TRUE(help_files().contains(target)) << text;
            if (url.hasFragment()) {
                ASSERT_EQ(pages.count(target), 1U) << text;
                EXPECT_TRUE(pages.at(target).ids.contains(url.fragment())) << text;
            }
        }
    }
}

TEST_F(HelpPagesTest, StyleSheetsLeadToFilesOfTheHelpOnly)
{
    const QRegularExpression reference("url\\(\\s*[\"']?([^\"')]*)[\"']?\\s*\\)");
    for (const QString& name : help_files("css")) {
        auto found = reference.globalMatch(QString::fromUtf8(help_file_content(name)));
        while (found.hasNext()) {
            const QString target = found.next().captured(1);
            EXPECT_TRUE(help_files().contains(target)) << name.toStdString() << ": " << target.toStdString();
        }
    }
}

TEST_F(HelpPagesTest, EveryPageIsReachableFromTheContentsWithoutTheNavigation)
{
    QStringList reached = {help_page(help_key(Topic::Contents))};
    for (int i = 0; i < reached.size(); ++i) {
        for (const QString& next : next_pages(reached[i], false)) {
            if (pages.count(next) == 1 && !reached.contains(next)) {
                reached.append(next);
            }
        }
    }
    EXPECT_EQ(reached.size(), static_cast<int>(pages.size()));
}

TEST_F(HelpPagesTest, TheContentsListEveryPage)
{
    const QStringList listed = next_pages("index.html", false);
    for (const auto& page : pages) {
        EXPECT_TRUE(page.first == "index.html" || listed.contains(page.first)) << page.first.toStdString();
    }
}

TEST_F(HelpPagesTest, EveryFileIsUsed)
{
    QStringList used = {"dark.css"}; // by the help window, and by the style sheet
    for (const auto& page : pages) {
        used += next_pages(page.first, true) + page.second.styles;
        for (const HelpPicture& picture : page.second.pictures) {
            used.append(picture.source);
        }
    }
    for (const QString& file : help_files()) {
        EXPECT_TRUE(used.contains(file)) << file.toStdString();
    }
}

TEST_F(HelpPagesTest, ThereIsAWebAddressAndADocumentToOpenOutside)
{
    QStringList addresses;
    for (const auto& page : pages) {
        for (const HelpLink& link : page.second.links) {
            addresses.append(link.address);
        }
    }
    EXPECT_TRUE(addresses.contains("https://gdal.org/drivers/raster/index.html"));
    EXPECT_TRUE(addresses.contains("reference-card.pdf"));
}

// Pictures

TEST_F(HelpPagesTest, EveryPictureIsThereInItsSizeWithATextInItsPlace)
{
    for (const auto& [name, page] : pages) {
        for (const HelpPicture& picture : page.pictures) {
            const std::string text = name.toStdString() + ": " + picture.source.toStdString();
            EXPECT_TRUE(picture.source.startsWith("pictures/")) << text;
            EXPECT_GT(picture.alternative.size(), 20) << text;
            const QImage image(help_file(picture.source));
            EXPECT_EQ(image.size(), QSize(picture.width, picture.height)) << text;
            EXPECT_EQ(image.depth(), 8) << text;
        }
    }
}

TEST_F(HelpPagesTest, PicturesTakeLittleRoom)
{
    long long bytes = 0;
    for (const QString& name : help_files("png")) {
        bytes += QFileInfo(help_file(name)).size();
    }
    EXPECT_GT(bytes, 0);
    EXPECT_LT(bytes, s_largest_pictures);
}

// What pages tell of the program

TEST_F(HelpPagesTest, TheReferenceCardHasEveryKey)
{
    // Its texts stand in the file as they are.
    const QByteArray card = help_file_content("reference-card.pdf");
    EXPECT_TRUE(card.startsWith("%PDF-1."));
    const auto has = [&card](const QString& text) { return card.contains('(' + text.toLatin1() + ") Tj"); };
    const auto has_key = [&has](const QKeySequence& keys, const QString& what) {
        return has(keys.toString(QKeySequence::NativeText)) && has(what);
    };
    for (const terrain::KeyBinding& binding : terrain::key_bindings()) {
        EXPECT_TRUE(binding.keys.isEmpty() || has_key(binding.keys, binding.description))
            << binding.description.toStdString();
    }
    for (const auto* const p_table :
        {&terrain::help_bindings(), &terrain::tool_key_bindings(), &terrain::scene_key_bindings()}) {
        for (const terrain::HelpBinding& binding : *p_table) {
            EXPECT_TRUE(has_key(binding.keys, binding.description)) << binding.description.toStdString();
        }
    }
    for (const terrain::MouseBinding& binding : terrain::mouse_bindings()) {
        EXPECT_TRUE(has(binding.description)) << binding.description.toStdString();
    }
    EXPECT_TRUE(has_key(QKeySequence("Ctrl+Z"), "Undo"));
    EXPECT_TRUE(has_key(QKeySequence("Ctrl+Y"), "Redo"));
}

namespace {

/// The pages of the preferences beside the page about them.
class HelpAboutPreferences : public PreferencesTest
{ };

QString plain(QString text)
{
    return text.remove('&').remove(':');
}

/// What stands beside the widget of a setting, or on it.
QString label_of(const QWidget& page, const QString& key)
{
    QWidget* const p_widget = page.findChild<QWidget*>(key);
    if (const auto* p_button = qobject_cast<QAbstractButton*>(p_widget)) {
        if (!p_button->text().isEmpty() && p_button->isCheckable()) {
            return plain(p_button->text());
        }
    }
    for (const QLabel* const p_label : page.findChildren<QLabel*>()) {
        if (p_widget && p_label->buddy() == p_widget) {
            return plain(p_label->text());
        }
    }
    return QString();
}

} // namespace

TEST_F(HelpAboutPreferences, EverySettingIsExplainedUnderItsNameWithItsDefault)
{
    start();
    const HelpPageFile help(help_file(help_page(help_key(Topic::Preferences))));
    for (const Setting& setting : settings_table()) {
        const auto page = make_page(product_for_group(setting.group));
        const QString key = QString::fromStdString(setting.key);
        const QString label = label_of(*page, key);
        ASSERT_EQ(help.rows.count(key), 1U) << setting.key;
        const QStringList& cells = help.rows.at(key); // name, explanation, default
        ASSERT_EQ(cells.size(), 3) << setting.key;
        EXPECT_FALSE(label.isEmpty()) << setting.key;
        EXPECT_EQ(cells[0], label) << setting.key;
        if (setting.initial == "true" || setting.initial == "false") {
            EXPECT_EQ(cells[2], setting.initial == "true" ? "on" : "off") << setting.key;
        }
        EXPECT_TRUE(help.text.contains(' ' + page->label() + ' ')) << page->label().toStdString();
    }
}
