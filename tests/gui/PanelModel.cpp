#include "PanelModel.h"

#include <algorithm>
#include <string>

namespace {

QString replaced(const QString& text, const std::u16string& what, const std::u16string& by)
{
    std::u16string result = text.toStdU16String();
    for (std::size_t at = result.find(what); at != std::u16string::npos; at = result.find(what, at)) {
        result.replace(at, what.size(), by);
        at += by.size();
    }
    return QString::fromStdU16String(result);
}

/// Slashes at a key's beginning do not count.
QString key_of(const QString& title, const QString& name)
{
    return title.isEmpty() ? name : title + "/" + name;
}

} // namespace

int PanelModel::add(int panel, const QString& title)
{
    m_titles[panel] = title;
    const auto flag = m_flags.find(title);
    if (flag != m_flags.end() && flag->second) {
        return float_panel(panel);
    }
    m_stack.push_back(panel);
    const int index = static_cast<int>(m_stack.size()) - 1;
    m_tabs.insert(std::min(index, m_tabs.size()), title);
    return index;
}

int PanelModel::float_panel(int panel)
{
    const QString title = replaced(m_titles[panel], u"&&", u"&");
    const auto geometry = m_geometries.find(title);
    m_last_place = Place();
    if (!has_group(title)) {
        m_last_place.at_cursor = true;
    } else if (geometry == m_geometries.end()) {
        m_last_place.by_default = true;
    } else {
        m_last_place.stored = geometry->second;
    }
    m_floats.push_back({title, panel});
    return static_cast<int>(m_floats.size()) - 1;
}

void PanelModel::remove(int index, const std::vector<std::optional<QPoint>>& places)
{
    if (index < 0) {
        return;
    }
    if (index < static_cast<int>(m_stack.size())) {
        const QString title = m_titles[m_stack[static_cast<std::size_t>(index)]];
        int tab = m_tabs.indexOf(title);
        while (tab >= 0) {
            m_tabs.removeAt(tab);
            tab = m_tabs.indexOf(title, 1);
        }
        m_stack.erase(m_stack.begin() + index);
    } else if (m_tabs.size() <= index && !m_floats.empty()) {
        store_float(m_floats.front(), places.front());
        m_floats.erase(m_floats.begin());
    }
}

std::optional<int> PanelModel::tear_off(const QString& text)
{
    const int tab = m_tabs.indexOf(text);
    const std::optional<int> panel = panel_of(text);
    if (text == "Home" || tab < 0 || !panel) {
        return std::nullopt;
    }
    m_tabs.removeAt(tab);
    const auto page = std::find(m_stack.begin(), m_stack.end(), *panel);
    const int index = static_cast<int>(page - m_stack.begin());
    m_stack.erase(page);
    float_panel(*panel);
    return index;
}

int PanelModel::close(int position)
{
    const Float closed = m_floats[static_cast<std::size_t>(position)];
    const QString title = replaced(closed.title, u" & ", u" && ");
    m_floats.erase(m_floats.begin() + position);
    m_closed.insert(title);
    m_tabs.append(title);
    m_stack.push_back(closed.panel);
    return m_tabs.size() - 1;
}

void PanelModel::destroy(int panel)
{
    m_stack.erase(std::remove(m_stack.begin(), m_stack.end(), panel), m_stack.end());
    m_floats.erase(std::remove_if(m_floats.begin(), m_floats.end(),
                       [panel](const Float& entry) { return entry.panel == panel; }),
        m_floats.end());
}

void PanelModel::move_tab(int from, int to)
{
    m_tabs.move(from, to);
}

void PanelModel::read()
{
    if (!m_order || m_order->isEmpty()) {
        return;
    }
    QStringList ordered;
    QStringList unknown;
    for (const QString& text : *m_order) {
        if (m_tabs.contains(text)) {
            ordered.append(text);
        }
    }
    for (const QString& text : m_tabs) {
        if (!m_order->contains(text)) {
            unknown.append(text);
        }
    }
    m_tabs = ordered + unknown;
}

void PanelModel::write(const std::vector<std::optional<QPoint>>& places)
{
    for (const QString& text : m_tabs) {
        m_flags[text] = false;
    }
    m_order = m_tabs;
    for (std::size_t i = 0; i < m_floats.size(); ++i) {
        store_float(m_floats[i], places[i]);
    }
}

void PanelModel::store_float(const Float& entry, const std::optional<QPoint>& place)
{
    m_geometries[entry.title] = place;
    m_flags[entry.title] = true;
    m_flags[m_titles[entry.panel]] = true;
}

void PanelModel::restart()
{
    m_tabs.clear();
    m_stack.clear();
    m_floats.clear();
    m_titles.clear();
}

void PanelModel::clear_settings()
{
    m_flags.clear();
    m_geometries.clear();
    m_closed.clear();
    m_order.reset();
}

int PanelModel::index_of(int panel) const
{
    const auto page = std::find(m_stack.begin(), m_stack.end(), panel);
    if (page != m_stack.end()) {
        return static_cast<int>(page - m_stack.begin());
    }
    for (std::size_t i = 0; i < m_floats.size(); ++i) {
        if (m_floats[i].panel == panel) {
            return m_tabs.size() + static_cast<int>(i);
        }
    }
    return -1;
}

std::optional<int> PanelModel::panel_of(const QString& text) const
{
    for (const int panel : m_stack) {
        if (m_titles.at(panel) == text) {
            return panel;
        }
    }
    return std::nullopt;
}

bool PanelModel::has_group(const QString& title) const
{
    return !title.isEmpty() && (m_flags.count(title) || m_geometries.count(title) || m_closed.count(title));
}

QStringList PanelModel::keys() const
{
    QStringList keys;
    for (const auto& entry : m_flags) {
        keys.append(key_of(entry.first, "floating"));
    }
    for (const auto& entry : m_geometries) {
        keys.append(key_of(entry.first, "dockSize"));
    }
    for (const QString& title : m_closed) {
        keys.append(key_of(title, "dockGeom"));
    }
    if (m_order) {
        keys.append("tabOrder");
    }
    keys.sort();
    return keys;
}
