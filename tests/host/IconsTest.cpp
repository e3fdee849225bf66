#include "windows/Icons.h"
#include "WindowFixture.h"
#include "help/Bindings.h"
#include "help/HelpPages.h"
#include "help/HelpWindow.h"
#include "presentations/CommandsPresentation.h"
#include "support/App.h"
#include "support/LogCapture.h"

#include <tarqa/housekeeping/CommandDetails.h>
#include <tarqa/housekeeping/ControllerLocker.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/UndoRedoController.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QXmlStreamReader>
#include <QtGui/QPainter>
#include <QtSvg/QSvgRenderer>
#include <QtWidgets/QAction>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QToolBar>

#include <gtest/gtest.h>

#include <map>

namespace host_test {

namespace {

const QString s_folder = ":/tarq/Resources/icons";
const int s_sizes[] = {16, 24, 32, 48};
const int s_visible = 64; ///< of 255, from which on one sees that a pixel is drawn

QStringList all_names()
{
    QStringList names = QDir(s_folder).entryList({"*.svg"});
    for (QString& name : names) {
        name.chop(4);
    }
    return names;
}

/// What an icon looks like on a screen with @p ratio pixels for each unit of @p size.
QImage picture(const QIcon& icon, int size, int ratio = 1, QIcon::Mode mode = QIcon::Normal)
{
    QImage image(size * ratio, size * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    icon.paint(&painter, QRect(0, 0, size, size), Qt::AlignCenter, mode);
    painter.end();
    image.setDevicePixelRatio(1);
    return image.convertToFormat(QImage::Format_ARGB32);
}

/// The part of the pixels that are drawn.
double coverage(const QImage& image)
{
    int drawn = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            drawn += qAlpha(image.pixel(x, y)) >= s_visible;
        }
    }
    return drawn / static_cast<double>(image.width() * image.height());
}

/// The colour of the pixel that shows it most.
QColor ink(const QImage& image)
{
    QRgb most = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            most = qAlpha(image.pixel(x, y)) > qAlpha(most) ? image.pixel(x, y) : most;
        }
    }
    return QColor::fromRgba(most);
}

void expect_shows(const QIcon& icon, const std::string& what)
{
    ASSERT_FALSE(icon.isNull()) << what;
    for (const int size : s_sizes) {
        for (const int ratio : {1, 2}) {
            const double part = coverage(picture(icon, size, ratio));
            EXPECT_GT(part, 0.04) << what << ' ' << size << ' ' << ratio;
            EXPECT_LT(part, 0.7) << what << ' ' << size << ' ' << ratio;
        }
    }
}

QByteArray content(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

/// All of the host's own sources in one.
QString sources()
{
    QString text;
    QDirIterator files(TERRAIN_SOURCES, {"*.cpp", "*.h", "*.qml"}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        text += QString::fromUtf8(content(files.next()));
    }
    EXPECT_FALSE(text.isEmpty());
    return text;
}

QPalette palette(const QColor& text, const QColor& disabled, const QColor& highlighted)
{
    QPalette palette;
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, disabled);
    palette.setColor(QPalette::HighlightedText, highlighted);
    return palette;
}

class IconsTest : public testing::Test
{
protected:
    support::App application;
    support::LogCapture log;
};

class WindowIconsTest : public WindowTest
{
protected:
    /// Of a menu and those that open from it.
    static void expect_icons(const QMenu& menu)
    {
        for (const QAction* const p_action : menu.actions()) {
            if (p_action->isSeparator()) {
                continue;
            }
            const std::string text = (menu.title() + " " + p_action->text()).toStdString();
            expect_shows(p_action->icon(), text);
            EXPECT_EQ(p_action->isIconVisibleInMenu(), !p_action->isCheckable())
                << text << ": where there may be a tick there is room for nothing else";
            if (p_action->menu()) {
                expect_icons(*p_action->menu());
            }
        }
    }
};

} // namespace

// --- the drawings

TEST_F(IconsTest, AreValidDrawingsInNoColourOfTheirOwn)
{
    const QStringList names = all_names();
    ASSERT_FALSE(names.isEmpty());
    for (const QString& name : names) {
        const QByteArray text = content(s_folder + "/" + name + ".svg");
        EXPECT_TRUE(QSvgRenderer(text).isValid()) << name.toStdString();
        QXmlStreamReader reader(text);
        while (!reader.atEnd()) {
            reader.readNext();
            const QXmlStreamAttributes attributes = reader.attributes();
            EXPECT_FALSE(attributes.hasAttribute("style")) << name.toStdString();
            EXPECT_FALSE(attributes.hasAttribute("color")) << name.toStdString();
            for (const char* const part : {"fill", "stroke"}) {
                const auto colour = attributes.value(part);
                EXPECT_TRUE(colour.isEmpty() || colour == QLatin1String("none")
                    || colour == QLatin1String("currentColor"))
                    << name.toStdString() << ' ' << part;
            }
        }
        EXPECT_FALSE(reader.hasError()) << name.toStdString();
    }
}

TEST_F(IconsTest, AreDrawnOnOneGridWithOnePen)
{
    for (const QString& name : all_names()) {
        QXmlStreamReader reader(content(s_folder + "/" + name + ".svg"));
        ASSERT_TRUE(reader.readNextStartElement()) << name.toStdString();
        const QXmlStreamAttributes drawing = reader.attributes();
        EXPECT_EQ(drawing.value("viewBox"), QLatin1String("0 0 24 24")) << name.toStdString();
        EXPECT_EQ(drawing.value("stroke-width"), QLatin1String("1.7")) << name.toStdString();
        EXPECT_EQ(drawing.value("stroke-linecap"), QLatin1String("round")) << name.toStdString();
        EXPECT_EQ(drawing.value("stroke-linejoin"), QLatin1String("round")) << name.toStdString();
    }
}

TEST_F(IconsTest, ShowInAllSizes)
{
    for (const QString& name : all_names()) {
        expect_shows(terrain::icon(name), name.toStdString());
    }
}

TEST_F(IconsTest, NeverLookTheSame)
{
    for (const int size : s_sizes) {
        std::map<QByteArray, std::string> seen;
        for (const QString& name : all_names()) {
            const QImage image = picture(terrain::icon(name), size);
            const QByteArray bits(
                reinterpret_cast<const char*>(image.constBits()), static_cast<int>(image.sizeInBytes()));
            const auto entered = seen.emplace(bits, name.toStdString());
            EXPECT_TRUE(entered.second)
                << name.toStdString() << " looks like " << entered.first->second << " at " << size;
        }
    }
}

TEST_F(IconsTest, AreAllUsed)
{
    const QString text = sources();
    for (const QString& name : all_names()) {
        EXPECT_TRUE(text.contains('"' + name + '"')) << name.toStdString();
    }
}

TEST_F(IconsTest, AreAllThere)
{
    const QString text = sources();
    const QRegularExpression use("\\bicon\\(\"([^\"]*)\"\\)");
    int uses = 0;
    for (auto matches = use.globalMatch(text); matches.hasNext(); ++uses) {
        const QString name = matches.next().captured(1);
        EXPECT_FALSE(terrain::icon(name).isNull()) << name.toStdString();
    }
    EXPECT_GT(uses, 0);
}

TEST_F(IconsTest, EachDeedHasOneOfItsOwn)
{
    std::map<std::string, QString> seen;
    for (const terrain::KeyBinding& binding : terrain::key_bindings()) {
        EXPECT_FALSE(terrain::icon(binding.icon).isNull()) << binding.text.toStdString();
        EXPECT_TRUE(seen.emplace(binding.icon, binding.text).second) << binding.text.toStdString();
    }
}

// --- drawing

TEST_F(IconsTest, UnknownNameGivesNone)
{
    for (const QString& name : {QString(), QString(""), QString("no such"), QString("../tarqterrain16x16"),
             QString("OPEN"), QString("ö\u6771")}) {
        EXPECT_TRUE(terrain::icon(name).isNull()) << name.toStdString();
    }
}

TEST_F(IconsTest, FollowThePalette)
{
    const QIcon icon = terrain::icon("open");
    QApplication::setPalette(palette(QColor(10, 20, 30), Qt::gray, Qt::white));
    EXPECT_EQ(ink(picture(icon, 24)), QColor(10, 20, 30));
    QApplication::setPalette(palette(QColor(230, 240, 250), Qt::gray, Qt::black));
    EXPECT_EQ(ink(picture(icon, 24)), QColor(230, 240, 250));
    EXPECT_EQ(ink(icon.pixmap(24).toImage()), QColor(230, 240, 250));
    QApplication::setPalette(palette(QColor(10, 20, 30), Qt::gray, Qt::white));
    EXPECT_EQ(ink(picture(icon, 24)), QColor(10, 20, 30));
}

TEST_F(IconsTest, HaveTheColourOfWhatTheyStandFor)
{
    QApplication::setPalette(palette(QColor(20, 20, 20), QColor(150, 150, 150), QColor(255, 250, 200)));
    const QIcon icon = terrain::icon("save");
    EXPECT_EQ(ink(picture(icon, 24, 1, QIcon::Disabled)), QColor(150, 150, 150));
    EXPECT_EQ(ink(picture(icon, 24, 1, QIcon::Selected)), QColor(255, 250, 200));
    EXPECT_EQ(ink(picture(icon, 24, 1, QIcon::Active)), QColor(20, 20, 20));
}

TEST_F(IconsTest, AreDrawnAnewInTransparentColours)
{
    QApplication::setPalette(palette(QColor(0, 0, 0, 128), Qt::gray, Qt::white));
    EXPECT_EQ(ink(picture(terrain::icon("save"), 24)).alpha(), 128);
}

TEST_F(IconsTest, HaveTheColourOfSelectedTextInTheChosenEntryOfAMenu)
{
    QApplication::setPalette(palette(Qt::black, Qt::gray, Qt::white));
    QMenu menu;
    QAction* const p_save = menu.addAction(terrain::icon("save"), "Save");
    QAction* const p_open = menu.addAction(terrain::icon("open"), "Open");
    menu.popup(QPoint(0, 0));
    menu.setActiveAction(p_save);
    EXPECT_EQ(ink(picture(p_save->icon(), 16, 1, QIcon::Active)), QColor(Qt::white));
    EXPECT_EQ(ink(picture(p_open->icon(), 16, 1, QIcon::Active)), QColor(Qt::black));
    menu.setActiveAction(p_open);
    EXPECT_EQ(ink(picture(p_save->icon(), 16, 1, QIcon::Active)), QColor(Qt::black));
    EXPECT_EQ(ink(picture(p_open->icon(), 16, 1, QIcon::Active)), QColor(Qt::white));
    menu.close();
    EXPECT_EQ(ink(picture(p_open->icon(), 16, 1, QIcon::Active)), QColor(Qt::black));
}

TEST_F(IconsTest, AreDrawnForFineScreens)
{
    for (const QString& name : all_names()) {
        EXPECT_EQ(picture(terrain::icon(name), 24, 2), picture(terrain::icon(name), 48))
            << name.toStdString();
    }
}

TEST_F(IconsTest, TakeTheSizeThatIsAskedFor)
{
    const QIcon icon = terrain::icon("fit");
    EXPECT_EQ(icon.pixmap(300, 300).size(), QSize(300, 300));
    EXPECT_EQ(icon.pixmap(1, 1).size(), QSize(1, 1));
    EXPECT_TRUE(icon.pixmap(0, 0).isNull());
    const QImage wide = icon.pixmap(40, 20).toImage();
    EXPECT_EQ(wide.size(), QSize(40, 20));
    EXPECT_EQ(coverage(wide.copy(0, 0, 10, 20)), 0) << "it keeps its proportions, in the middle";
    EXPECT_GT(coverage(wide.copy(10, 0, 20, 20)), 0.1);
}

TEST_F(IconsTest, CopyIsTheSameIcon)
{
    QIcon icon = terrain::icon("crop");
    QIcon copy = icon;
    copy.addPixmap(QPixmap(4, 4)); // which is nothing that it could take
    EXPECT_EQ(copy.name(), "crop");
    EXPECT_EQ(picture(copy, 32), picture(icon, 32));
}

TEST(IconsOnFineScreens, PixmapsHaveThePixelsOfTheScreen)
{
    qputenv("QT_SCALE_FACTOR", "2");
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    support::App application;
    const QPixmap pixmap = terrain::icon("open").pixmap(24);
    EXPECT_EQ(pixmap.size(), QSize(48, 48));
    EXPECT_EQ(pixmap.devicePixelRatio(), 2);
    EXPECT_EQ(pixmap.toImage().convertToFormat(QImage::Format_ARGB32).copy(), [] {
        QImage image = picture(terrain::icon("open"), 48);
        image.setDevicePixelRatio(2);
        return image;
    }());
}

TEST(IconsWithoutDisplay, AreHeldButNotDrawn)
{
    int count = 1;
    char program[] = "test";
    char* arguments[] = {program, nullptr};
    const QCoreApplication application(count, arguments);
    const QIcon icon = terrain::icon("smooth");
    EXPECT_FALSE(icon.isNull());
    EXPECT_EQ(QIcon(icon).name(), "smooth");
    EXPECT_TRUE(icon.pixmap(16).isNull());
}

// --- the windows

TEST_F(WindowIconsTest, EachEntryOfEachMenuHasOne)
{
    open_terrain_file("a.tif");
    EXPECT_FALSE(QCoreApplication::testAttribute(Qt::AA_DontShowIconsInMenus));
    int menus = 0;
    for (const QAction* const p_menu : window->menuBar()->actions()) {
        ASSERT_NE(p_menu->menu(), nullptr);
        emit p_menu->menu()->aboutToShow(); // some are filled then
        expect_icons(*p_menu->menu());
        ++menus;
    }
    EXPECT_GE(menus, 5);
}

TEST_F(WindowIconsTest, EachButtonOfTheToolBarHasOne)
{
    const auto bars = window->findChildren<QToolBar*>();
    ASSERT_FALSE(bars.isEmpty());
    for (const QToolBar* const p_bar : bars) {
        for (const QAction* const p_action : p_bar->actions()) {
            if (!p_action->isSeparator() && !p_action->text().isEmpty()) { // else a widget of its own
                expect_shows(p_action->icon(), p_action->text().toStdString());
            }
        }
    }
}

TEST_F(WindowIconsTest, CommandsHaveThatOfTheirEntryInTheHistory)
{
    open_terrain_file("a.tif");
    EXPECT_EQ(terrain::CommandsPresentation::instance().fill_sinks_action()->icon().name(), "fill-sinks");
    EXPECT_EQ(terrain::CommandsPresentation::instance().clean_up_action()->icon().name(), "clean-up");
    terrain::CommandsPresentation::instance().fill_sinks_action()->trigger();
    runner().wait();
    terrain::CommandsPresentation::instance().clean_up_action()->trigger();
    runner().wait();

    auto& controller = dynamic_cast<housekeeping::UndoRedoController&>(
        *housekeeping::ControllerManager::instance().controller("UndoRedoController"));
    const housekeeping::ControllerLocker locker(controller);
    const auto details = controller.getUndoCommandDetails(10);
    ASSERT_EQ(details.size(), 2u);
    EXPECT_EQ(details[0].icon().name(), "clean-up");
    EXPECT_EQ(details[1].icon().name(), "fill-sinks");
    expect_shows(details[0].icon(), "clean-up");
}

TEST_F(WindowIconsTest, EachDeedOfTheHelpWindowHasOneOfItsOwn)
{
    const terrain::HelpWindow help{terrain::HelpPages()};
    std::map<QString, int> seen;
    for (const QAction* const p_action : help.actions()) {
        expect_shows(p_action->icon(), p_action->text().toStdString());
        EXPECT_EQ(++seen[p_action->icon().name()], 1) << p_action->text().toStdString();
    }
    EXPECT_GE(seen.size(), 12u);
}

} // namespace host_test
