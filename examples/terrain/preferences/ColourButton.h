#pragma once

#include <QtGui/QColor>
#include <QtWidgets/QPushButton>

namespace terrain {

/// A button that shows a colour; a click opens a dialog to choose another one. Main thread.
class ColourButton : public QPushButton
{
    Q_OBJECT

public:
    explicit ColourButton(QWidget* p_parent = nullptr);

    const QColor& colour() const { return m_colour; }
    /// An invalid colour changes nothing.
    void set_colour(const QColor& colour);

    /// What the dialog is titled.
    void set_title(const QString& title) { m_title = title; }

protected:
    void changeEvent(QEvent* p_event) override;

private:
    void choose();
    void draw_sample();

    QColor m_colour = Qt::white;
    QString m_title;
};

} // namespace terrain
