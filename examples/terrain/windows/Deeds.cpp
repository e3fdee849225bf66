#include "windows/Deeds.h"

#include "windows/Icons.h"

#include <QtWidgets/QAction>

namespace terrain {

Deeds::Deeds(QObject* p_parent)
    : QObject(p_parent)
{
    for (const KeyBinding& binding : key_bindings()) {
        auto* const p_action = new QAction(binding.text, this);
        p_action->setShortcut(binding.keys);
        p_action->setCheckable(binding.checkable);
        p_action->setShortcutContext(
            binding.scope == Scope::Map ? Qt::WidgetWithChildrenShortcut : Qt::WindowShortcut);
        p_action->setStatusTip(binding.description);
        p_action->setIcon(icon(binding.icon));
        p_action->setIconVisibleInMenu(!binding.checkable); // it would take the place of the tick
        m_actions[binding.deed] = p_action;
    }
    document_open(false);
    scene_seen(false);
}

void Deeds::document_open(bool open)
{
    for (const KeyBinding& binding : key_bindings()) {
        if (binding.scope != Scope::Scene) {
            action(binding.deed).setEnabled(open || binding.scope == Scope::Program);
        }
    }
}

void Deeds::scene_seen(bool seen) const
{
    for (const KeyBinding& binding : key_bindings()) {
        if (binding.scope == Scope::Scene) {
            action(binding.deed).setEnabled(seen);
        }
    }
}

} // namespace terrain
