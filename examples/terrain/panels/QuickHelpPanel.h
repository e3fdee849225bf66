#pragma once

#include <QtWidgets/QWidget>

class QQuickWidget;

namespace terrain {

class QuickHelpSheet;

/**
 * Shows the quick help of one document, drawn by QML. It draws without OpenGL, which it chooses for all of
 * the program's QML scenes. The scene is loaded when the panel is shown for the first time, and there is no
 * engine of QML before. Main thread.
 */
class QuickHelpPanel : public QWidget
{
    Q_OBJECT

public:
    explicit QuickHelpPanel(QWidget* p_parent = nullptr);
    ~QuickHelpPanel() override;

    /// What it shows; choose the document here.
    QuickHelpSheet& sheet() { return *m_p_sheet; }

    /// How many bindings the scene has laid out; 0 if there is no scene. Loads it if need be.
    int rows_drawn();

    QSize sizeHint() const override;

protected:
    void showEvent(QShowEvent* p_event) override;

private:
    void load();
    void say_what_is_wrong();

    QuickHelpSheet* m_p_sheet; // a child
    QQuickWidget* m_p_scene; // a child
};

} // namespace terrain
