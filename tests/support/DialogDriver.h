#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtWidgets/QDialog>
#include <QtWidgets/QMessageBox>

#include <functional>
#include <list>
#include <vector>

namespace support {

/// What a modal dialog looked like when it appeared.
struct ShownDialog
{
    QString class_name; ///< for example "QMessageBox"
    QString title;
    QWidget* parent = nullptr;

    // Message boxes
    QString text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons = QMessageBox::NoButton;

    // File dialogs
    QString file; ///< the proposed file name, as it stands in the dialog
    QStringList filters;
    bool saves = false; ///< asks for a file to write
};

/**
 * Answers the modal dialogs that the code under test opens, in the order of the script:
 *
 *     DialogDriver dialogs;
 *     dialogs.click(QMessageBox::Yes).choose_file("/path/of/a/file");
 *     code_under_test();
 *     EXPECT_EQ(dialogs.shown().at(0).title, "Save?");
 *
 * It looks from a timer, so it works inside the dialogs' own event loops; it needs an application object and
 * lives on the main thread. The test fails when a dialog appears that the script does not answer (it is
 * closed), when an answer does not close a dialog (it is closed then), and when an answer of the script was
 * never asked for.
 */
class DialogDriver : public QObject
{
public:
    typedef std::function<void(QDialog&)> Answer;

    DialogDriver();
    ~DialogDriver() override;

    /// The next dialog is a message box that has this button: clicks it.
    DialogDriver& click(QMessageBox::StandardButton button);
    /// The next dialog is a file dialog: enters the absolute path @p file and accepts.
    DialogDriver& choose_file(const QString& file);
    /// The next dialog, of any kind: closes it as the escape key does.
    DialogDriver& cancel();
    /// The next dialog, of any kind: @p answer makes it close, at once or soon.
    DialogDriver& answer(Answer answer);

    /// Every dialog that appeared so far, also those without an answer.
    const std::vector<ShownDialog>& shown() const { return m_shown; }

private:
    struct Answered
    {
        QPointer<QDialog> dialog;
        int polls; // since it was answered
    };

    void poll_soon();
    void poll();
    void answer_next(QDialog& dialog);
    Answered* find_answered(QDialog* p_dialog);
    void forget_closed();

    std::list<Answer> m_script;
    std::list<Answered> m_answered;
    std::vector<ShownDialog> m_shown;
};

} // namespace support
