#pragma once

#include "views/MapLayers.h"

#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

#include <utility>
#include <vector>

class QCheckBox;
class QDoubleSpinBox;
class QLabel;

namespace terrain {

class TerrainView;

/// What the map that is shown shows: a box to check for each layer, and the interval of the contour lines. It
/// changes the map at once, and follows it when somebody else does. Main thread.
class LayersPanel : public QWidget
{
    Q_OBJECT

public:
    explicit LayersPanel(QWidget* p_parent = nullptr);

    /// Is about another map from now on; null for none. @param unit of its heights
    void show_map(TerrainView* p_map, const QString& unit);

    /// The box of a layer.
    QCheckBox& box(bool MapLayers::*layer) const;
    QDoubleSpinBox& interval() const { return *m_p_interval; }
    const QLabel& hint() const { return *m_p_hint; }

    QSize sizeHint() const override;

private:
    void add_box(bool MapLayers::*layer, const QString& text, const QString& explanation);
    QWidget* make_interval();
    void show_layers(const MapLayers& layers);
    void say(const QString& text);
    void change_map();

    QPointer<TerrainView> m_map; // not owned
    // Children.
    std::vector<std::pair<bool MapLayers::*, QCheckBox*>> m_boxes; // in their order
    QDoubleSpinBox* m_p_interval;
    QWidget* m_p_interval_line = nullptr;
    QLabel* m_p_hint;
};

} // namespace terrain
