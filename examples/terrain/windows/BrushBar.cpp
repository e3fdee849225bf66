#include "windows/BrushBar.h"

#include "documents/RoundStep.h"

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>

#include <algorithm>
#include <cmath>

namespace terrain {

namespace {

const double s_largest_height = 1e6; ///< or if this is more ...
const double s_most_usual = 1000; ///< ... this multiple of the usual height
const int s_least_decimals = 3; ///< of a height
const int s_most_decimals = 20;
const int s_gap = 6; ///< pixels

QDoubleSpinBox* add_number(QHBoxLayout& layout, const QString& label)
{
    auto* const p_label = new QLabel(label);
    auto* const p_number = new QDoubleSpinBox;
    p_label->setBuddy(p_number);
    p_number->setAccessibleName(label);
    p_number->setStepType(QAbstractSpinBox::AdaptiveDecimalStepType);
    p_number->setKeyboardTracking(false); // "2." on the way to "2.5" is no choice
    layout.addWidget(p_label);
    layout.addWidget(p_number);
    return p_number;
}

/// How many decimals it takes to choose heights about as large as the usual one, and to show this one as it
/// is.
int decimals_for(double height, double usual_height)
{
    int decimals = std::clamp(decimals_of(usual_height) + 1, s_least_decimals, s_most_decimals);
    while (decimals < s_most_decimals && QString::number(height, 'f', decimals).toDouble() != height) {
        ++decimals;
    }
    return decimals;
}

/// Sets only what differs: what is being written in the box stays.
void show_number(QDoubleSpinBox& box, double number)
{
    if (box.value() != number) {
        box.setValue(number);
    }
}

} // namespace

BrushBar::BrushBar(QWidget* p_parent)
    : QWidget(p_parent)
    , m_p_options(new QWidget)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    auto* const p_layout = new QHBoxLayout(this);
    p_layout->setContentsMargins(s_gap, 0, s_gap, 0);
    p_layout->addWidget(m_p_options);
    p_layout->addStretch();
    auto* const p_options = new QHBoxLayout(m_p_options);
    p_options->setContentsMargins(0, 0, 0, 0);
    p_options->setSpacing(s_gap);
    m_p_radius = add_number(*p_options, tr("Radius:"));
    m_p_radius->setDecimals(1);
    m_p_radius->setRange(Brush::least_radius, Brush::largest_radius);
    m_p_radius->setSuffix(' ' + tr("cells"));
    m_p_radius->setStatusTip(tr("How far the brush reaches from its middle"));
    m_p_height = add_number(*p_options, tr("Height:"));
    m_p_height->setStatusTip(tr("How much a stroke raises or lowers in the middle of the brush"));
    const auto changed = QOverload<double>::of(&QDoubleSpinBox::valueChanged);
    connect(m_p_radius, changed, this, &BrushBar::radius_chosen);
    connect(m_p_height, changed, this, &BrushBar::height_chosen);
    m_p_options->hide();
}

void BrushBar::show_brush(const Brush& brush, const QString& unit, double usual_height)
{
    const QSignalBlocker radius_blocker(m_p_radius);
    const QSignalBlocker height_blocker(m_p_height);
    show_number(*m_p_radius, brush.radius);
    const int decimals = decimals_for(brush.height, usual_height);
    const double least = std::pow(10, -decimals);
    const double largest = std::max({s_largest_height, s_most_usual * usual_height, brush.height});
    const QString suffix = unit.isEmpty() ? QString() : ' ' + unit;
    if (m_p_height->decimals() != decimals) {
        m_p_height->setDecimals(decimals);
    }
    if (m_p_height->minimum() != least || m_p_height->maximum() != largest) {
        m_p_height->setRange(least, largest);
    }
    if (m_p_height->suffix() != suffix) {
        m_p_height->setSuffix(suffix);
    }
    show_number(*m_p_height, brush.height);
    m_p_options->show();
}

void BrushBar::hide_brush()
{
    m_p_options->hide();
}

void BrushBar::take_input()
{
    m_p_radius->interpretText();
    m_p_height->interpretText();
}

} // namespace terrain
