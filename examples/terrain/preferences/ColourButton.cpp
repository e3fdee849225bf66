#include "preferences/ColourButton.h"

#include <QtCore/QEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QColorDialog>

namespace terrain {

namespace {

const int s_sample_proportion = 2; ///< how much wider than high the sample is

} // namespace

ColourButton::ColourButton(QWidget* p_parent)
    : QPushButton(p_parent)
{
    setAutoDefault(false);
    connect(this, &QPushButton::clicked, this, &ColourButton::choose);
    draw_sample();
}

void ColourButton::set_colour(const QColor& colour)
{
    if (colour.isValid()) {
        m_colour = colour;
        draw_sample();
    }
}

void ColourButton::choose()
{
    // Not with an event loop of its own, in which the page might be deleted.
    auto* const p_dialog = new QColorDialog(m_colour, this);
    p_dialog->setAttribute(Qt::WA_DeleteOnClose);
    p_dialog->setWindowTitle(m_title);
    connect(p_dialog, &QColorDialog::colorSelected, this, &ColourButton::set_colour);
    p_dialog->open();
}

void ColourButton::changeEvent(QEvent* p_event)
{
    QPushButton::changeEvent(p_event);
    if (p_event->type() == QEvent::FontChange || p_event->type() == QEvent::PaletteChange) {
        draw_sample();
    }
}

/// As high as the text, with a rim, so that it shows on any background.
void ColourButton::draw_sample()
{
    const int height = fontMetrics().ascent();
    const QSize size(height * s_sample_proportion, height);
    QPixmap sample(size * devicePixelRatioF());
    sample.setDevicePixelRatio(devicePixelRatioF());
    sample.fill(m_colour);
    QPainter painter(&sample);
    painter.setPen(palette().color(QPalette::ButtonText));
    painter.drawRect(0, 0, size.width() - 1, size.height() - 1);
    painter.end();
    setIconSize(size);
    setIcon(sample);
    setText(m_colour.name());
}

} // namespace terrain
