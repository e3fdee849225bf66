#pragma once

#include "help/HelpTopics.h"

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtWidgets/QDialog>

#include <vector>

class QComboBox;
class QDialogButtonBox;
class QDoubleSpinBox;
class QFormLayout;
class QLabel;
class QPushButton;

namespace terrain {

/// What a command needs: a number, or one of several ways in which it works.
struct Parameter
{
    /// A number. @param value what is proposed @param unit behind the number; empty for none
    Parameter(
        const QString& label, double value, double lowest, double highest, int decimals, const QString& unit);
    /// A choice. @param chosen what is proposed, as a place in the list
    Parameter(const QString& label, const QStringList& choices, int chosen);

    QString label;
    double value;
    double lowest;
    double highest;
    int decimals = 0;
    QString unit;
    QStringList choices; ///< empty for a number
};

/// Asks for the parameters of a command, before it runs. While it is open the help can be read, the main
/// window not be used. Main thread.
class ParameterDialog : public QDialog
{
    Q_OBJECT

public:
    /// @param topic the page about the command, which F1 and the help button open
    ParameterDialog(const QString& title, Topic topic, const std::vector<Parameter>& parameters,
        QWidget* p_parent = nullptr);

    // What the user chose; parameters are counted in their order, numbers and choices together.
    double value(std::size_t parameter) const;
    int choice(std::size_t parameter) const;

signals:
    /// The user chose something else.
    void changed();

protected:
    // For dialogs that know more about their parameters.

    QDoubleSpinBox& number(std::size_t parameter) const;
    /// Adds a button below the parameters, which becomes a child.
    void add_button(QPushButton* p_button);
    /// Says something below the parameters. @param may_run whether the command may run with them
    void say(const QString& text, bool may_run);

private:
    QWidget* make_number(const Parameter& parameter);
    QWidget* make_choice(const Parameter& parameter);

    std::vector<QWidget*> m_inputs; // children, one for each parameter
    // Children too.
    QFormLayout* m_p_form;
    QLabel* m_p_note;
    QDialogButtonBox* m_p_buttons;
};

} // namespace terrain
