#include "preferences/SettingsPage.h"

#include "preferences/ColourButton.h"
#include "preferences/PreferencesChanged.h"
#include "preferences/ProgramChooser.h"
#include "windows/Icons.h"

#include <QtCore/QEvent>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>

#include <algorithm>
#include <memory>

namespace terrain {

namespace {

/// Scrolls downwards only, and would like to be so large that it need not.
class Column : public QScrollArea
{
public:
    QSize minimumSizeHint() const override
    {
        return {widget()->minimumSizeHint().width() + frame(), QScrollArea::minimumSizeHint().height()};
    }
    QSize sizeHint() const override
    {
        const QSize inside = widget()->sizeHint();
        return {
            inside.width() + frame(), std::max(inside.height(), widget()->heightForWidth(inside.width()))};
    }

protected:
    bool eventFilter(QObject* p_object, QEvent* p_event) override
    {
        if (p_event->type() == QEvent::LayoutRequest) { // what is inside has another size, with the font
            updateGeometry();
        }
        return QScrollArea::eventFilter(p_object, p_event);
    }

private:
    int frame() const { return 2 * frameWidth() + verticalScrollBar()->sizeHint().width(); }
};

QLabel* make_note(const QString& text)
{
    auto* const p_note = new QLabel(text);
    p_note->setWordWrap(true);
    return p_note;
}

QString without_mnemonic(QString text)
{
    return text.remove('&').remove(':');
}

/// As rich text, for plain tool tips are not wrapped.
void explain(QWidget& widget, const QString& explanation)
{
    const QString text = "<qt>" + explanation.toHtmlEscaped() + "</qt>";
    widget.setToolTip(text);
    widget.setWhatsThis(text);
    widget.setAccessibleDescription(explanation);
}

/// Chooses the entry of @p number; one that is not listed gets an entry behind those that are.
void choose(QComboBox& box, int listed, int number)
{
    while (box.count() > listed) {
        box.removeItem(box.count() - 1);
    }
    int index = box.findData(number);
    if (index < 0) {
        index = box.count();
        box.addItem(SettingsPage::tr("Other (%1)").arg(number), number);
    }
    box.setCurrentIndex(index);
}

} // namespace

SettingsPage::SettingsPage(const std::string& path, QWidget* p_parent)
    : AbstractPreferences(p_parent)
    , m_path(path)
{
    auto* const p_inside = new QWidget;
    m_p_groups = new QVBoxLayout(p_inside);
    auto* const p_column = new Column;
    p_column->setWidgetResizable(true);
    p_column->setFrameShape(QFrame::NoFrame);
    p_column->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    p_column->setFocusPolicy(Qt::NoFocus); // it follows the focus of what is inside
    p_column->setWidget(p_inside);
    for (QWidget* const p_filled : {p_column->viewport(), p_inside}) {
        p_filled->setAutoFillBackground(false); // the tab's own ground is to show
    }
    auto* const p_layout = new QVBoxLayout(this);
    p_layout->setContentsMargins(0, 0, 0, 0);
    p_layout->addWidget(p_column);
}

QFormLayout& SettingsPage::add_group(const QString& title, const QString& note)
{
    auto* const p_group = new QGroupBox(title);
    auto* const p_form = new QFormLayout(p_group);
    if (!note.isEmpty()) {
        p_form->addRow(make_note(note));
    }
    m_p_groups->addWidget(p_group);
    return *p_form;
}

void SettingsPage::add_row(
    QFormLayout& group, const QString& text, QWidget& widget, const QString& explanation)
{
    auto* const p_label = new QLabel(text);
    p_label->setBuddy(&widget);
    group.addRow(p_label, &widget);
    explain(widget, explanation);
    p_label->setToolTip(widget.toolTip());
    widget.setAccessibleName(without_mnemonic(text));
}

template <class Value>
void SettingsPage::add_field(const Setting<Value>& setting, const std::function<Value()>& entered,
    const std::function<void(const Value&)>& enter, const std::function<bool()>& acceptable)
{
    const auto sp_shown = std::make_shared<Value>(setting.initial); // what the user found
    Field field;
    field.show = [setting, enter, entered, sp_shown](const QSettings& stored) {
        enter(setting.current(stored));
        *sp_shown = entered();
    };
    field.show_default = [setting, enter] { enter(setting.initial); };
    field.apply = [setting, entered, sp_shown, acceptable] {
        const Value value = entered();
        if (value == *sp_shown || (acceptable && !acceptable())) {
            return false;
        }
        setting.change(value);
        *sp_shown = value;
        return true;
    };
    m_fields.push_back(field);
}

void SettingsPage::add_switch(
    QFormLayout& group, const Setting<bool>& setting, const QString& text, const QString& explanation)
{
    auto* const p_box = new QCheckBox(text);
    p_box->setObjectName(setting.key);
    explain(*p_box, explanation);
    group.addRow(p_box);
    add_field<bool>(
        setting, [p_box] { return p_box->isChecked(); }, [p_box](bool on) { p_box->setChecked(on); });
}

void SettingsPage::add_colour(
    QFormLayout& group, const Setting<QColor>& setting, const QString& text, const QString& explanation)
{
    auto* const p_button = new ColourButton;
    p_button->setObjectName(setting.key);
    p_button->set_title(without_mnemonic(text));
    p_button->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    add_row(group, text, *p_button, explanation);
    add_field<QColor>(
        setting, [p_button] { return p_button->colour(); },
        [p_button](const QColor& colour) { p_button->set_colour(colour); });
}

QComboBox& SettingsPage::add_choice(QFormLayout& group, const Setting<int>& setting, const QString& text,
    const QString& explanation, const std::vector<Choice>& choices)
{
    auto* const p_box = new QComboBox;
    p_box->setObjectName(setting.key);
    for (const Choice& choice : choices) {
        p_box->addItem(choice.text, choice.number);
    }
    add_row(group, text, *p_box, explanation);
    if (std::any_of(choices.begin(), choices.end(), [](const Choice& one) { return !one.hint.isEmpty(); })) {
        QLabel* const p_hint = make_note(choices.front().hint);
        group.addRow(p_hint);
        connect(
            p_box, QOverload<int>::of(&QComboBox::currentIndexChanged), p_hint, [p_hint, choices](int index) {
                const bool is_listed = index >= 0 && index < static_cast<int>(choices.size());
                p_hint->setText(is_listed ? choices[static_cast<std::size_t>(index)].hint : QString());
            });
    }
    const int listed = p_box->count();
    add_field<int>(
        setting, [p_box] { return p_box->currentData().toInt(); },
        [p_box, listed](int number) { choose(*p_box, listed, number); });
    return *p_box;
}

void SettingsPage::add_program(
    QFormLayout& group, const Setting<QString>& setting, const QString& text, const QString& explanation)
{
    auto* const p_chooser = new ProgramChooser;
    p_chooser->setObjectName(setting.key);
    p_chooser->set_title(without_mnemonic(text));
    group.setRowWrapPolicy(QFormLayout::WrapAllRows); // paths are long
    add_row(group, text, *p_chooser, explanation);
    add_field<QString>(
        setting, [p_chooser] { return p_chooser->path(); },
        [p_chooser](const QString& path) { p_chooser->set_path(path); },
        [p_chooser] { return p_chooser->check(); });
}

void SettingsPage::finish()
{
    m_p_groups->addStretch();
    auto* const p_defaults = new QPushButton(icon("restore"), tr("&Restore Defaults"));
    p_defaults->setObjectName("restore_defaults");
    p_defaults->setAutoDefault(false);
    explain(*p_defaults, tr("Enters what all settings of this page were at first. Apply makes them so."));
    connect(p_defaults, &QPushButton::clicked, this, &SettingsPage::restore_defaults);
    const QMargins margins = m_p_groups->contentsMargins();
    auto* const p_row = new QVBoxLayout;
    p_row->setContentsMargins(margins.left(), 0, margins.right(), margins.bottom());
    p_row->addWidget(p_defaults, 0, Qt::AlignRight);
    static_cast<QVBoxLayout*>(layout())->addLayout(p_row);
    SettingsPage::aboutToShow();
}

void SettingsPage::restore_defaults()
{
    for (const Field& field : m_fields) {
        field.show_default();
    }
}

void SettingsPage::accept()
{
    write(m_path);
}

void SettingsPage::aboutToShow()
{
    read(m_path);
}

void SettingsPage::read(const std::string& path)
{
    QSettings stored;
    stored.beginGroup(QString::fromStdString(path));
    for (const Field& field : m_fields) {
        field.show(stored);
    }
}

void SettingsPage::write(const std::string&)
{
    bool changed = false;
    for (const Field& field : m_fields) {
        changed = field.apply() || changed;
    }
    if (changed) {
        send_preferences_changed();
    }
}

} // namespace terrain
