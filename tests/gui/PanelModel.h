#pragma once

#include <QtCore/QPoint>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <map>
#include <optional>
#include <set>
#include <vector>

/**
 * The rules for panels without a single widget: where each panel is, which tabs there are, and what is
 * stored. The odd rules are rules too. Panels are numbers; the one who asks tells where windows are on the
 * screen.
 */
class PanelModel
{
public:
    struct Float
    {
        QString title; // of the window
        int panel;
    };
    /// Where a floating window opens.
    struct Place
    {
        bool at_cursor = false;
        bool by_default = false; // where Qt puts it
        std::optional<QPoint> stored; // without any of these: wherever
    };

    /// @return what addPanel gives
    int add(int panel, const QString& title);
    void remove(int index, const std::vector<std::optional<QPoint>>& places);
    /// @return the index that detachingPanel tells; empty if nothing is torn off
    std::optional<int> tear_off(const QString& text);
    /// @return the index that attachedPanel tells
    int close(int position);
    /// The owner deletes a panel.
    void destroy(int panel);
    void move_tab(int from, int to);
    void read();
    /// @param places of the floating windows; empty for those that will not open there again
    void write(const std::vector<std::optional<QPoint>>& places);
    /// The program ends; the settings stay.
    void restart();

    void clear_settings();
    void store_geometry(const QString& title) { m_geometries[title] = std::nullopt; }
    void store_order(const QStringList& order) { m_order = order; }

    const QStringList& tabs() const { return m_tabs; }
    const std::vector<int>& stack() const { return m_stack; }
    const std::vector<Float>& floats() const { return m_floats; }
    /// What indexOf gives.
    int index_of(int panel) const;
    /// The panel of a tab; empty if it has none.
    std::optional<int> panel_of(const QString& text) const;
    const Place& last_place() const { return m_last_place; }

    /// All keys that are stored, sorted.
    QStringList keys() const;
    const std::map<QString, bool>& flags() const { return m_flags; }
    const std::optional<QStringList>& order() const { return m_order; }

private:
    int float_panel(int panel);
    bool has_group(const QString& title) const;
    void store_float(const Float& entry, const std::optional<QPoint>& place);

    QStringList m_tabs;
    std::vector<int> m_stack;
    std::vector<Float> m_floats;
    std::map<int, QString> m_titles;
    Place m_last_place;

    std::map<QString, bool> m_flags;
    std::map<QString, std::optional<QPoint>> m_geometries;
    std::set<QString> m_closed; // titles with the geometry that is never read
    std::optional<QStringList> m_order;
};
