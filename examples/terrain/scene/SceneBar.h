#pragma once

#include <QtWidgets/QWidget>

class QDoubleSpinBox;
class QSlider;

namespace terrain {

/// The bar above a scene: how the heights are exaggerated. Main thread.
class SceneBar : public QWidget
{
    Q_OBJECT

public:
    explicit SceneBar(QWidget* p_parent = nullptr);

    /// Tells no one. @param least, most what can be set
    void show_exaggeration(double exaggeration, double least, double most);

    QDoubleSpinBox& box() const { return *m_p_box; }
    QSlider& slider() const { return *m_p_slider; }

signals:
    void exaggeration_chosen(double exaggeration);
    void default_chosen();

protected:
    /// Keeps the keys of menus from taking those with which numbers are set.
    bool eventFilter(QObject* p_watched, QEvent* p_event) override;

private:
    double exaggeration_at(int position) const;
    int position_of(double exaggeration) const;

    double m_least = 0.1;
    double m_most = 10;
    // Children.
    QSlider* m_p_slider;
    QDoubleSpinBox* m_p_box;
};

} // namespace terrain
