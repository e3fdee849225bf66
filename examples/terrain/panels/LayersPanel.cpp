#include "panels/LayersPanel.h"

#include "views/TerrainView.h"

#include <tarqa/housekeeping/HousekeepingException.h>

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

namespace terrain {

namespace {

const int s_margin = 8;
const int s_indent = 24; ///< of what belongs to the box above
const int s_narrowest = 220; ///< pixels
const int s_interval_width = 130; ///< at least; the longest numbers need not be seen whole
const double s_largest_interval = 1e6;
const int s_decimals = 3;

} // namespace

LayersPanel::LayersPanel(QWidget* p_parent)
    : QWidget(p_parent)
    , m_p_interval(new QDoubleSpinBox)
    , m_p_hint(new QLabel)
{
    setWindowTitle(tr("Layers"));
    setMinimumWidth(s_narrowest);
    auto* const p_layout = new QVBoxLayout(this);
    p_layout->setContentsMargins(s_margin, s_margin, s_margin, s_margin);
    add_box(&MapLayers::colours, tr("Colours of &heights"), tr("Without them the map is grey"));
    add_box(&MapLayers::relief, tr("&Relief"), tr("Light and shadow, with the light in the north-west"));
    add_box(&MapLayers::contours, tr("C&ontour lines"), tr("Lines of equal height"));
    m_p_interval_line = make_interval();
    p_layout->addWidget(m_p_interval_line);
    add_box(
        &MapLayers::triangulation, tr("Tri&angulation"), tr("The edges of the triangles, if there are any"));
    add_box(&MapLayers::legend, tr("&Legend"), tr("What the colours mean, at the upper right"));
    add_box(&MapLayers::scale_bar, tr("&Scale bar"), tr("How long things are, at the lower left"));
    m_p_hint->setWordWrap(true);
    m_p_hint->setTextFormat(Qt::PlainText);
    p_layout->addWidget(m_p_hint);
    p_layout->addStretch();
    show_map(nullptr, QString());
}

void LayersPanel::add_box(bool MapLayers::*layer, const QString& text, const QString& explanation)
{
    auto* const p_box = new QCheckBox(text);
    p_box->setToolTip(explanation);
    p_box->setAccessibleDescription(explanation);
    connect(p_box, &QCheckBox::clicked, this, &LayersPanel::change_map);
    layout()->addWidget(p_box);
    m_boxes.emplace_back(layer, p_box);
}

QWidget* LayersPanel::make_interval()
{
    m_p_interval->setAccessibleName(tr("Interval of the contour lines"));
    m_p_interval->setToolTip(tr("The height from one line to the next; 0 for one that suits the heights"));
    m_p_interval->setSpecialValueText(tr("automatic"));
    m_p_interval->setDecimals(s_decimals);
    m_p_interval->setRange(0, s_largest_interval);
    m_p_interval->setMinimumWidth(s_interval_width);
    m_p_interval->setStepType(QAbstractSpinBox::AdaptiveDecimalStepType);
    m_p_interval->setKeyboardTracking(false); // lines are not made for each digit
    connect(
        m_p_interval, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, &LayersPanel::change_map);
    auto* const p_line = new QWidget;
    auto* const p_form = new QFormLayout(p_line);
    p_form->setContentsMargins(s_indent, 0, 0, 0);
    p_form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    p_form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    p_form->addRow(tr("&Interval:"), m_p_interval);
    return p_line;
}

QCheckBox& LayersPanel::box(bool MapLayers::*layer) const
{
    return *std::find_if(m_boxes.begin(), m_boxes.end(), [layer](const auto& entry) {
        return entry.first == layer;
    })->second;
}

QSize LayersPanel::sizeHint() const
{
    return QWidget::sizeHint().expandedTo(QSize(280, 0));
}

void LayersPanel::show_map(TerrainView* p_map, const QString& unit)
{
    if (m_map) {
        disconnect(m_map, &TerrainView::layers_changed, this, &LayersPanel::show_layers);
    }
    m_map = p_map;
    if (m_map) {
        connect(m_map, &TerrainView::layers_changed, this, &LayersPanel::show_layers);
    }
    m_p_interval->setSuffix(unit.isEmpty() ? QString() : ' ' + unit);
    show_layers(m_map ? m_map->layers() : MapLayers());
    say(m_map ? QString() : tr("No document is open."));
}

void LayersPanel::show_layers(const MapLayers& layers)
{
    for (const auto& [layer, p_box] : m_boxes) {
        p_box->setChecked(layers.*layer); // no click
        p_box->setEnabled(m_map);
    }
    const QSignalBlocker blocker(m_p_interval);
    m_p_interval->setValue(layers.contour_interval);
    m_p_interval_line->setEnabled(m_map && layers.contours);
    say(QString());
}

void LayersPanel::say(const QString& text)
{
    m_p_hint->setText(text);
    m_p_hint->setVisible(!text.isEmpty());
}

void LayersPanel::change_map()
{
    if (!m_map) {
        return;
    }
    MapLayers layers = m_map->layers();
    for (const auto& [layer, p_box] : m_boxes) {
        layers.*layer = p_box->isChecked();
    }
    layers.contour_interval = m_p_interval->value();
    try {
        m_map->set_layers(layers);
        say(QString());
    } catch (const housekeeping::HousekeepingException& exception) {
        show_layers(m_map->layers()); // as they still are
        say(tr("The map cannot be drawn like this: %1").arg(exception.what()));
    }
}

} // namespace terrain
