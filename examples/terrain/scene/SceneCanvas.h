#pragma once

#include "scene/SceneMouse.h"

#include <osg/Group>
#include <osg/ref_ptr>
#include <osgViewer/GraphicsWindow>
#include <osgViewer/Viewer>

#include <QtCore/QPointF>
#include <QtGui/QColor>
#include <QtWidgets/QOpenGLWidget>

#include <optional>

namespace terrain {

class ReliefScene;
class SceneNavigator;
class SceneOverlay;

/**
 * Draws a scene with OpenSceneGraph, from where the navigator's camera is, and hands mouse and keys on to the
 * navigator. A picture is drawn only when something has changed; while something moves on a machine that
 * draws without graphics hardware, the coarse surface is. Needs has_scene_graphics(). Main thread.
 */
class SceneCanvas : public QOpenGLWidget
{
    Q_OBJECT

public:
    /// @param navigator must outlive it
    explicit SceneCanvas(SceneNavigator& navigator, QWidget* p_parent = nullptr);
    /// Gives back what OpenGL holds.
    ~SceneCanvas() override;

    /// Draws this one from now on; null for none. Not owned; must stay until another one is shown.
    void show(ReliefScene* p_scene);
    void background(const QColor& colour);

    SceneOverlay& overlay() const { return *m_p_overlay; }
    /// How many pictures have been drawn so far.
    int frames() const { return m_frames; }

    QSize sizeHint() const override;

protected:
    void initializeGL() override;
    void paintGL() override;
    bool event(QEvent* p_event) override;
    void resizeEvent(QResizeEvent* p_event) override;
    void mousePressEvent(QMouseEvent* p_event) override;
    void mouseMoveEvent(QMouseEvent* p_event) override;
    void mouseReleaseEvent(QMouseEvent* p_event) override;
    void mouseDoubleClickEvent(QMouseEvent* p_event) override;
    void wheelEvent(QWheelEvent* p_event) override;
    void keyPressEvent(QKeyEvent* p_event) override;
    void keyReleaseEvent(QKeyEvent* p_event) override;
    void focusOutEvent(QFocusEvent* p_event) override;
    void hideEvent(QHideEvent* p_event) override;

private:
    bool takes(const QKeyEvent& event) const;
    void release_graphics();
    void show_cursor();
    void end_drag();
    bool draws_coarsely() const;

    SceneNavigator& m_navigator;
    SceneOverlay* m_p_overlay; // a child
    osg::ref_ptr<osg::Group> m_root; // of all that is drawn
    osg::ref_ptr<osgViewer::Viewer> m_viewer; // while there is a context
    osg::ref_ptr<osgViewer::GraphicsWindowEmbedded> m_window; // the viewer's
    ReliefScene* m_p_scene = nullptr; // not owned
    QColor m_background = Qt::white;
    SceneDrag m_drag = SceneDrag::None;
    Qt::MouseButton m_drag_button = Qt::NoButton; // that began it
    QPointF m_pointer; // where it was last, while it drags
    int m_frames = 0;
};

} // namespace terrain
