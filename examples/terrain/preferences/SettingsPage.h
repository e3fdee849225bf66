#pragma once

#include "preferences/Setting.h"

#include <tarqa/housekeeping/gui/AbstractPreferences.h>

#include <QtGui/QColor>

#include <functional>
#include <string>
#include <vector>

class QComboBox;
class QFormLayout;
class QVBoxLayout;

namespace terrain {

/// One answer to a question that has a few.
struct Choice
{
    int number; ///< as it is stored
    QString text;
    QString hint; ///< what it means, told while it is chosen; may be empty
};

/**
 * A page of the preferences that is made from a list of settings: the derived class names them, in groups, in
 * its constructor, and finish()es. The page then shows the values as they are, applies those that the user
 * has changed, each through its setter, and tells the program that preferences were changed. What is higher
 * than the dialog can be scrolled.
 *
 * Texts have mnemonics; explanations are tool tip and "What's This?" help. Main thread.
 */
class SettingsPage : public housekeeping::gui::AbstractPreferences
{
    Q_OBJECT

public:
    /// What all settings of the page are until the user changes them; applied like everything else.
    void restore_defaults();

public slots:
    void accept() override;
    void aboutToShow() override;

protected:
    /// @param path the group of the stored settings
    SettingsPage(const std::string& path, QWidget* p_parent);

    /// A group of settings. @param note told above them; may be empty
    QFormLayout& add_group(const QString& title, const QString& note = QString());
    void add_switch(
        QFormLayout& group, const Setting<bool>& setting, const QString& text, const QString& explanation);
    void add_colour(
        QFormLayout& group, const Setting<QColor>& setting, const QString& text, const QString& explanation);
    /// A number that is none of the choices is shown as it is, and stays if the user chooses nothing else.
    QComboBox& add_choice(QFormLayout& group, const Setting<int>& setting, const QString& text,
        const QString& explanation, const std::vector<Choice>& choices);
    /// Only the path of an existing program, or an empty one, is applied.
    void add_program(
        QFormLayout& group, const Setting<QString>& setting, const QString& text, const QString& explanation);
    /// After the last setting: shows the values as they are.
    void finish();

    void read(const std::string& path) override;
    /// The setters know where their values belong, so @p path is not looked at.
    void write(const std::string& path) override;

private:
    /// A setting and its widget.
    struct Field
    {
        std::function<void(const QSettings& stored)> show;
        std::function<void()> show_default;
        /// Applies what the user has changed. @return whether that was anything
        std::function<bool()> apply;
    };

    template <class Value>
    void add_field(const Setting<Value>& setting, const std::function<Value()>& entered,
        const std::function<void(const Value&)>& enter, const std::function<bool()>& acceptable = nullptr);
    static void add_row(QFormLayout& group, const QString& text, QWidget& widget, const QString& explanation);

    std::string m_path;
    QVBoxLayout* m_p_groups; // a child's
    std::vector<Field> m_fields;
};

} // namespace terrain
