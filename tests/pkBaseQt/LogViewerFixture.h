#pragma once

#include "support/App.h"
#include "support/PrivateHome.h"

#include <pkBase/pkDestructor.h>
#include <pkBaseQt/QLogFileViewer.h>

#include <gtest/gtest.h>

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QPointer>
#include <QtGui/QTextCursor>
#include <QtTest/QTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QScrollBar>

#include <functional>
#include <string>

/// The viewer, with a file of its own.
class QLogFileViewer : public testing::Test
{
protected:
    typedef pkBase::QLogFileViewer Viewer;

    QLogFileViewer() = default;
    ~QLogFileViewer() override { pkBase::pkDestructor::run(); } // before the application object goes

    static Viewer& viewer() { return Viewer::instance(); }
    static QString path(const char* name = "Tarq_1.log")
    {
        return QString::fromStdString(support::PrivateHome::scratch_directory()) + '/' + name;
    }

    /// Writes a file anew, in its place.
    static void write(const QByteArray& bytes, const QString& file = path())
    {
        write_with(bytes, file, QIODevice::WriteOnly | QIODevice::Truncate);
    }
    static void append(const QByteArray& bytes, const QString& file = path())
    {
        write_with(bytes, file, QIODevice::WriteOnly | QIODevice::Append);
    }
    /// Puts another file in its place.
    static void replace(const QByteArray& bytes)
    {
        write(bytes, path("new.log"));
        QFile::remove(path());
        ASSERT_TRUE(QFile::rename(path("new.log"), path()));
    }
    static QByteArray content(const QString& file = path())
    {
        QFile reader(file);
        EXPECT_TRUE(reader.open(QIODevice::ReadOnly));
        return reader.readAll();
    }
    /// "line 0\n" and so on.
    static QByteArray lines(int first, int end)
    {
        QByteArray bytes;
        for (int i = first; i < end; ++i) {
            bytes += "line " + QByteArray::number(i) + '\n';
        }
        return bytes;
    }

    /// Points the viewer to the file with this content, and lets it read.
    static void view(const QByteArray& bytes)
    {
        write(bytes);
        viewer().setPath(path());
        viewer().refresh();
    }
    static void refresh_after(const QByteArray& added)
    {
        append(added);
        viewer().refresh();
    }
    static std::string text() { return viewer().text().toStdString(); }

    /// Waits until the shown window has seen it by itself.
    static bool comes_to(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 10000); }

    /// Shows the window as the active one.
    static void show()
    {
        viewer().resize(600, 400);
        viewer().show();
        QApplication::setActiveWindow(&viewer());
        QCoreApplication::processEvents();
    }

    static QPlainTextEdit& edit() { return *viewer().findChild<QPlainTextEdit*>(); }
    static QLineEdit& search_line() { return *viewer().findChild<QLineEdit*>(); }
    /// The check box whose text holds @p word.
    static QCheckBox& check_box(const QString& word)
    {
        for (QCheckBox* const p_box : viewer().findChildren<QCheckBox*>()) {
            if (p_box->text().remove('&').contains(word, Qt::CaseInsensitive)) {
                return *p_box;
            }
        }
        throw std::runtime_error("no check box " + word.toStdString());
    }
    static QCheckBox& follow() { return check_box("follow"); }
    static QCheckBox& match_case() { return check_box("case"); }

    /// The texts of all lines that say something about the file and the search.
    static QString remarks()
    {
        QString all;
        for (const QLabel* const p_label : viewer().findChildren<QLabel*>()) {
            all += p_label->text() + '\n';
        }
        return all;
    }

    static int begin_of_selection() { return edit().textCursor().selectionStart(); }
    static std::string selection() { return edit().textCursor().selectedText().toStdString(); }
    static void move_to(QTextCursor::MoveOperation place) { edit().moveCursor(place); }

    support::App m_app;

private:
    static void write_with(const QByteArray& bytes, const QString& file, QIODevice::OpenMode mode)
    {
        QFile writer(file);
        ASSERT_TRUE(writer.open(mode));
        ASSERT_EQ(writer.write(bytes), bytes.size());
    }
};
