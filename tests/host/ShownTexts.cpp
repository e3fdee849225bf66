#include "ShownTexts.h"

#include "translations/PseudoText.h"

#include <QtCore/QAbstractItemModel>
#include <QtCore/QRegularExpression>
#include <QtCore/QSet>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QAction>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QToolButton>

namespace host_test {

namespace {

void add_items(const QAbstractItemModel* p_model, QStringList& texts)
{
    for (int row = 0; p_model && row < p_model->rowCount(); ++row) {
        for (const int role : {Qt::DisplayRole, Qt::ToolTipRole, Qt::StatusTipRole, Qt::AccessibleTextRole}) {
            texts.append(p_model->index(row, 0).data(role).toString());
        }
    }
}

/// What a widget shows itself.
void add_own(const QWidget& widget, QStringList& texts)
{
    texts << widget.windowTitle() << widget.toolTip() << widget.statusTip() << widget.whatsThis()
          << widget.accessibleName() << widget.accessibleDescription();
    if (const auto* const p_label = qobject_cast<const QLabel*>(&widget)) {
        texts << p_label->text();
    } else if (const auto* const p_button = qobject_cast<const QAbstractButton*>(&widget)) {
        texts << p_button->text();
    } else if (const auto* const p_group = qobject_cast<const QGroupBox*>(&widget)) {
        texts << p_group->title();
    } else if (const auto* const p_line = qobject_cast<const QLineEdit*>(&widget)) {
        texts << p_line->placeholderText();
    } else if (const auto* const p_menu = qobject_cast<const QMenu*>(&widget)) {
        texts << p_menu->title();
    } else if (const auto* const p_combo = qobject_cast<const QComboBox*>(&widget)) {
        add_items(p_combo->model(), texts);
    } else if (const auto* const p_spin = qobject_cast<const QSpinBox*>(&widget)) {
        texts << p_spin->prefix() << p_spin->suffix();
    } else if (const auto* const p_number = qobject_cast<const QDoubleSpinBox*>(&widget)) {
        texts << p_number->prefix() << p_number->suffix();
    } else if (const auto* const p_list = qobject_cast<const QListView*>(&widget)) {
        add_items(p_list->model(), texts);
    }
    if (const auto* const p_spin = qobject_cast<const QAbstractSpinBox*>(&widget)) {
        texts << p_spin->specialValueText();
    }
    if (const auto* const p_tabs = qobject_cast<const QTabBar*>(&widget)) {
        for (int tab = 0; tab < p_tabs->count(); ++tab) {
            texts << p_tabs->tabText(tab) << p_tabs->tabToolTip(tab);
        }
    }
}

/// Widgets and menus, each of them once.
void add_all(const QWidget& widget, QSet<const QObject*>& seen, QStringList& texts)
{
    if (seen.contains(&widget)) {
        return;
    }
    seen.insert(&widget);
    add_own(widget, texts);
    for (const QAction* const p_action : widget.actions()) {
        texts << p_action->text() << p_action->toolTip() << p_action->statusTip() << p_action->whatsThis();
        if (p_action->menu()) {
            add_all(*p_action->menu(), seen, texts);
        }
    }
    for (const QWidget* const p_child :
        widget.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        add_all(*p_child, seen, texts);
    }
}

/// What stands outside all brackets of the pseudo-locale.
QString unmarked_part(const QString& text)
{
    QString part;
    int depth = 0;
    for (const QChar letter : text) {
        depth += letter == pseudo_locale::opening_bracket ? 1 : 0;
        if (depth == 0) {
            part += letter;
        }
        depth -= letter == pseudo_locale::closing_bracket ? 1 : 0;
    }
    return part;
}

/// In lower case, without entries that have none.
QStringList mnemonics_of(const QWidget& menu)
{
    static const QRegularExpression s_mnemonic("(?<!&)&([^&\\s])");
    QStringList letters;
    for (const QAction* const p_action : menu.actions()) {
        const QString letter = s_mnemonic.match(p_action->text()).captured(1).toLower();
        if (!letter.isEmpty()) {
            letters.append(letter);
        }
    }
    return letters;
}

} // namespace

QStringList texts_of(const QWidget& widget)
{
    QSet<const QObject*> seen;
    QStringList texts;
    add_all(widget, seen, texts);
    texts.removeAll(QString());
    texts.removeDuplicates();
    return texts;
}

QStringList untranslated(const QStringList& texts, const QStringList& data)
{
    static const QRegularExpression s_word("\\p{L}{2}");
    static const QRegularExpression s_tag_or_colour("<[^<>]*>|#[0-9a-f]{6}\\b");
    QStringList found;
    for (const QString& text : texts) {
        QString part = unmarked_part(text).remove(s_tag_or_colour);
        for (const QString& known : data) {
            part.remove(known);
        }
        if (part.contains(s_word)) {
            found.append(text);
        }
    }
    return found;
}

QStringList ambiguous_mnemonics(const QWidget& bar)
{
    QStringList found;
    QStringList letters = mnemonics_of(bar);
    if (letters.removeDuplicates() > 0) {
        found.append("menu bar: " + mnemonics_of(bar).join(' '));
    }
    for (const QAction* const p_action : bar.actions()) {
        if (p_action->menu()) {
            letters = mnemonics_of(*p_action->menu());
            if (letters.removeDuplicates() > 0) {
                found.append(p_action->text() + ": " + mnemonics_of(*p_action->menu()).join(' '));
            }
            for (const QString& inner : ambiguous_mnemonics(*p_action->menu())) {
                if (!inner.startsWith("menu bar")) {
                    found.append(inner);
                }
            }
        }
    }
    return found;
}

} // namespace host_test
