#include "scene/SceneBar.h"

#include <QtCore/QSignalBlocker>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QSlider>
#include <QtWidgets/QToolButton>

#include <algorithm>
#include <cmath>

namespace terrain {

namespace {

const int s_positions = 200; ///< of the slider
const int s_slider_width = 130;
const int s_digits = 3; ///< of an exaggeration
const int s_margin = 4;

int decimals_of(double exaggeration)
{
    return std::max(s_digits - 1 - static_cast<int>(std::floor(std::log10(exaggeration))), 1);
}

} // namespace

SceneBar::SceneBar(QWidget* p_parent)
    : QWidget(p_parent)
    , m_p_slider(new QSlider(Qt::Horizontal))
    , m_p_box(new QDoubleSpinBox)
{
    auto* const p_label = new QLabel(tr("E&xaggeration:"));
    p_label->setBuddy(m_p_box);
    m_p_slider->setRange(0, s_positions);
    m_p_slider->setMaximumWidth(s_slider_width);
    m_p_slider->setAccessibleName(tr("Vertical exaggeration"));
    m_p_slider->setToolTip(tr("How many times higher than wide the terrain is drawn"));
    m_p_box->setSuffix(tr("×", "times"));
    m_p_box->setAccessibleName(tr("Vertical exaggeration"));
    m_p_box->setStepType(QAbstractSpinBox::AdaptiveDecimalStepType);
    m_p_box->setKeyboardTracking(false);
    auto* const p_reset = new QToolButton;
    p_reset->setText(tr("Default"));
    p_reset->setToolTip(tr("Exaggerate the heights so that the relief shows"));
    p_reset->setAutoRaise(true);
    auto* const p_layout = new QHBoxLayout(this);
    p_layout->setContentsMargins(s_margin * 2, s_margin, s_margin * 2, s_margin);
    for (QWidget* const p_part : {static_cast<QWidget*>(p_label), static_cast<QWidget*>(m_p_slider),
             static_cast<QWidget*>(m_p_box), static_cast<QWidget*>(p_reset)}) {
        p_layout->addWidget(p_part);
    }
    p_layout->addStretch(1);
    m_p_slider->installEventFilter(this);
    m_p_box->installEventFilter(this);
    connect(m_p_slider, &QSlider::valueChanged, this,
        [this](int position) { emit exaggeration_chosen(exaggeration_at(position)); });
    connect(
        m_p_box, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, &SceneBar::exaggeration_chosen);
    connect(p_reset, &QToolButton::clicked, this, &SceneBar::default_chosen);
}

void SceneBar::show_exaggeration(double exaggeration, double least, double most)
{
    m_least = least;
    m_most = most;
    const QSignalBlocker slider_blocker(m_p_slider);
    const QSignalBlocker box_blocker(m_p_box);
    m_p_box->setDecimals(decimals_of(exaggeration));
    m_p_box->setRange(0, most); // the least may have more digits
    m_p_box->setValue(exaggeration);
    m_p_slider->setValue(position_of(exaggeration));
}

/// By equal factors.
double SceneBar::exaggeration_at(int position) const
{
    return m_least * std::pow(m_most / m_least, static_cast<double>(position) / s_positions);
}

int SceneBar::position_of(double exaggeration) const
{
    return static_cast<int>(
        std::lround(std::log(exaggeration / m_least) / std::log(m_most / m_least) * s_positions));
}

bool SceneBar::eventFilter(QObject* p_watched, QEvent* p_event)
{
    if (p_event->type() == QEvent::ShortcutOverride) {
        const auto& key = *static_cast<QKeyEvent*>(p_event);
        const bool is_plain = !(key.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier));
        if (is_plain && (key.key() < Qt::Key_F1 || key.key() > Qt::Key_F35) && key.key() != Qt::Key_Escape) {
            p_event->accept();
            return true;
        }
    }
    return QWidget::eventFilter(p_watched, p_event);
}

} // namespace terrain
