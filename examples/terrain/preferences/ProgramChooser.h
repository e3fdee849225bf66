#pragma once

#include <QtWidgets/QWidget>

class QLabel;
class QLineEdit;

namespace terrain {

/**
 * A field for the path of a program, with a button that looks for it. What is wrong with the path is said
 * below the field, when the user leaves it and when it is asked for; an empty path is right. Main thread.
 */
class ProgramChooser : public QWidget
{
    Q_OBJECT

public:
    explicit ProgramChooser(QWidget* p_parent = nullptr);

    /// Without blanks at its ends.
    QString path() const;
    void set_path(const QString& path);

    /// Whether the path is empty or that of a program that can be run. Says below the field what is wrong.
    bool check();
    /// What is said below the field; empty if nothing.
    QString complaint() const;

    /// What the dialog is titled.
    void set_title(const QString& title) { m_title = title; }

private:
    void choose();
    void say(const QString& complaint);

    // Children.
    QLineEdit* m_p_edit;
    QLabel* m_p_sign;
    QLabel* m_p_complaint;

    QString m_title;
};

} // namespace terrain
