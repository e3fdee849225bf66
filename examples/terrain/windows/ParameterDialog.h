#pragma once

#include "help/HelpTopics.h"

#include <QtCore/QString>
#include <QtWidgets/QDialog>

#include <vector>

class QDoubleSpinBox;

namespace terrain {

/// A number that a command needs.
struct Parameter
{
    QString label;
    double value; ///< what is proposed
    double lowest;
    double highest;
    int decimals;
    QString unit; ///< behind the number; empty for none
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

    /// What the user chose; in the order of the parameters.
    double value(std::size_t parameter) const;

private:
    std::vector<QDoubleSpinBox*> m_numbers; // children
};

} // namespace terrain
