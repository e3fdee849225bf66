#pragma once

#include <QtWidgets/QWidget>

class QQuickWidget;

namespace terrain {

class QuickHelpSheet;

/**
 * Shows the quick help of one document, drawn by QML. It draws without OpenGL, which it chooses for all of
 * the program's QML scenes. Main thread.
 */
class QuickHelpPanel : public QWidget
{
    Q_OBJECT

public:
    explicit QuickHelpPanel(QWidget* p_parent = nullptr);
    ~QuickHelpPanel() override;

    /// What it shows; choose the document here.
    QuickHelpSheet& sheet() { return *m_p_sheet; }

    /// How many bindings the scene has laid out; 0 if there is no scene.
    int rows_drawn() const;

    QSize sizeHint() const override;

private:
    void say_what_is_wrong();

    QuickHelpSheet* m_p_sheet; // a child
    QQuickWidget* m_p_scene; // a child
};

} // namespace terrain
