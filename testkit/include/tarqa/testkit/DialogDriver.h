#pragma once

#include <tarqa/testkit/ShownDialog.h>
#include <tarqa/testkit/tq_hk_testkit_export.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtWidgets/QDialog>
#include <QtWidgets/QMessageBox>

#include <functional>
#include <list>
#include <string>
#include <vector>

namespace tarqa::housekeeping::testkit {

/**
 * Answers the modal dialogs that the code under test opens, in the order of the script:
 *
 *     DialogDriver dialogs;
 *     dialogs.click(QMessageBox::Yes).choose_file("/path/of/a/file");
 *     code_under_test();
 *     EXPECT_EQ(dialogs.shown().at(0).title, "Save?");
 *     EXPECT_TRUE(dialogs.problems().empty());
 *
 * It looks from a timer, so it works inside the dialogs' own event loops; it needs an application object and
 * lives on the main thread. A problem is a dialog that the script does not answer (it is closed), an answer
 * that does not fit its dialog or does not close it (it is closed then, the latter after some seconds), and
 * an answer that was never asked for. Qt's own file dialogs can be driven, the desktop's cannot:
 * StartedApplication sees to it.
 */
class TQ_HK_TESTKIT_EXPORT DialogDriver : public QObject
{
public:
    /// Makes the dialog close, at once or soon.
    typedef std::function<void(QDialog&)> Answer;

    DialogDriver();
    ~DialogDriver() override;

    /// The next dialog is a message box that has this button: clicks it.
    DialogDriver& click(QMessageBox::StandardButton button);
    /// The next dialog is a file dialog: enters the absolute path @p file and accepts.
    DialogDriver& choose_file(const QString& file);
    /// The next dialog is a QInputDialog: enters @p text, which may stand for a number, and accepts.
    DialogDriver& enter(const QString& text);
    /// The next dialog, of any kind: closes it as the escape key does.
    DialogDriver& cancel();
    /// The next dialog, of any kind.
    DialogDriver& answer(Answer answer);

    /// Every dialog that appeared so far, also those without an answer.
    const std::vector<ShownDialog>& shown() const { return m_shown; }
    /// How many answers no dialog has asked for yet.
    int pending() const { return static_cast<int>(m_script.size()); }
    /// What went wrong so far; answers that are pending are the last line.
    std::vector<std::string> problems() const;

protected:
    /// Told each problem when it appears, but not of pending answers; the base keeps it for problems().
    virtual void problem(const std::string& text);

private:
    struct Answered
    {
        QPointer<QDialog> dialog;
        int polls; // since it was answered
    };

    void poll_soon();
    void poll();
    void answer_next(QDialog& dialog);
    void reject(QDialog& dialog, const std::string& text);
    void click_button(QDialog& dialog, QMessageBox::StandardButton button);
    void enter_file(QDialog& dialog, const QString& file);
    void enter_value(QDialog& dialog, const QString& text);
    Answered* find_answered(QDialog* p_dialog);
    void forget_closed();

    std::list<Answer> m_script;
    std::list<Answered> m_answered;
    std::vector<ShownDialog> m_shown;
    std::vector<std::string> m_problems;
};

} // namespace tarqa::housekeeping::testkit
