#include "RasterFiles.h"
#include "WindowFixture.h"
#include "commands/ScaleCommand.h"
#include "documents/TerrainDocument.h"
#include "support/DialogDriver.h"

#include <QtCore/QAbstractItemModel>
#include <QtGui/QTextDocument>
#include <QtGui/QWindow>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QAction>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

// Files whose names look like HTML are named as they are, wherever the program names them.

using namespace host_test;
using support::DialogDriver;

namespace {

const char* const s_name = "<b>x<b><img src=y>&z[*].tif";
const char* const s_html = "<img src=y>"; ///< what Qt must never be asked to show as a picture

bool is_picture(const QString& text)
{
    return text.contains(s_html) && Qt::mightBeRichText(text);
}

class HostileNames : public WindowTest
{
protected:
    /// Fails for each text of the window that Qt takes for HTML. @return how many were looked at that hold it
    int expect_text_only(const QWidget& top)
    {
        int named = 0;
        QList<const QWidget*> widgets{&top};
        for (const QWidget* const p_widget : top.findChildren<QWidget*>()) {
            widgets.append(p_widget);
        }
        for (const QWidget* const p_widget : widgets) {
            EXPECT_FALSE(is_picture(p_widget->toolTip())) << p_widget->metaObject()->className();
            EXPECT_FALSE(is_picture(p_widget->whatsThis())) << p_widget->metaObject()->className();
            if (const auto* const p_label = qobject_cast<const QLabel*>(p_widget)) {
                const bool holds = p_label->text().contains(s_html);
                named += holds ? 1 : 0;
                EXPECT_TRUE(!holds || p_label->textFormat() == Qt::PlainText)
                    << p_label->text().toStdString();
            } else if (const auto* const p_view = qobject_cast<const QAbstractItemView*>(p_widget)) {
                named += expect_text_only(p_view->model());
            } else if (const auto* const p_box = qobject_cast<const QComboBox*>(p_widget)) {
                named += expect_text_only(p_box->model());
            }
        }
        return named;
    }

    static void expect_plain_box(QDialog& dialog)
    {
        const auto* const p_text = dialog.findChild<QLabel*>("qt_msgbox_label");
        EXPECT_TRUE(p_text && p_text->text().contains(s_html));
        EXPECT_EQ(Qt::PlainText, p_text ? p_text->textFormat() : Qt::AutoText);
    }

private:
    static int expect_text_only(const QAbstractItemModel* p_model)
    {
        int named = 0;
        for (int row = 0; p_model && row < p_model->rowCount(); ++row) {
            const QModelIndex index = p_model->index(row, 0);
            named += index.data(Qt::DisplayRole).toString().contains(s_html) ? 1 : 0;
            EXPECT_FALSE(is_picture(index.data(Qt::ToolTipRole).toString()))
                << index.data(Qt::ToolTipRole).toString().toStdString();
        }
        return named;
    }
};

} // namespace

TEST_F(HostileNames, AreTextEverywhereInTheWindow)
{
    open_terrain_file(s_name);
    run(boost::make_shared<terrain::ScaleCommand>(current().id(), 2));
    QCoreApplication::processEvents();
    EXPECT_GE(expect_text_only(*window), 3); // the panels and the box of documents
    const QString title = window->windowHandle()->title();
    EXPECT_TRUE(title.contains(s_name)) << title.toStdString();
}

TEST_F(HostileNames, AreTextInTheQuestionAboutChanges)
{
    open_terrain_file(s_name);
    run(boost::make_shared<terrain::ScaleCommand>(current().id(), 2));
    DialogDriver dialogs;
    dialogs.answer([](QDialog& dialog) {
        expect_plain_box(dialog);
        dynamic_cast<QMessageBox&>(dialog).button(QMessageBox::Discard)->click();
    });
    window->close_document();
    ASSERT_EQ(1u, dialogs.shown().size());
    EXPECT_EQ(
        QString("\"%1\" has changes that are not written to a file.").arg(QString(s_name).remove(".tif")),
        dialogs.shown()[0].text);
    EXPECT_EQ("Close", dialogs.shown()[0].title);
    EXPECT_EQ(QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, dialogs.shown()[0].buttons);
}

TEST_F(HostileNames, AreTextInMessagesOfFailures)
{
    const std::string file = scratch(s_name);
    write_text(file, "no raster");
    DialogDriver dialogs;
    dialogs.answer([](QDialog& dialog) {
        expect_plain_box(dialog);
        dialog.done(QMessageBox::Ok);
    });
    EXPECT_FALSE(window->open(QString::fromStdString(file)));
    log.take_all();
}

TEST_F(HostileNames, AreTextOnTheStartPageAndInTheListOfRecentFiles)
{
    open_terrain_file(s_name);
    window->close_document();
    QCoreApplication::processEvents();
    expect_text_only(*window);
    QMenu& file = menu("&File");
    QMenu* p_recent = nullptr;
    for (const QAction* const p_action : file.actions()) {
        if (p_action->text().contains("Recent")) {
            p_recent = p_action->menu();
        }
    }
    ASSERT_TRUE(p_recent);
    emit p_recent->aboutToShow();
    ASSERT_EQ(1, p_recent->actions().size());
    const QAction& entry = *p_recent->actions().first();
    EXPECT_EQ("&1 " + QString(s_name).replace("&", "&&"), entry.text());
    EXPECT_FALSE(is_picture(entry.toolTip()));
    QTextDocument shown;
    shown.setHtml(entry.toolTip());
    EXPECT_TRUE(shown.toPlainText().contains(s_name)) << shown.toPlainText().toStdString();
}
