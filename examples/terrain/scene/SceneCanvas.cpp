#include "scene/SceneCanvas.h"

#include "scene/Graphics.h"
#include "scene/ReliefPatch.h"
#include "scene/ReliefScene.h"
#include "scene/SceneNavigator.h"
#include "scene/SceneOverlay.h"

#include <tarqa/housekeeping/ApplicationManager.h>

#include <osg/GLObjects>

#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QOpenGLContext>
#include <QtGui/QWheelEvent>

#include <cmath>

namespace terrain {

namespace {

const QSize s_size_hint(640, 480);
const QSize s_least_size(120, 90);
const double s_zoom_step = 1.25; ///< of a notch of the wheel
const double s_notch = 120; ///< what Qt counts for a notch

const housekeeping::ApplicationManager& preferences()
{
    return housekeeping::ApplicationManager::const_instance();
}

} // namespace

SceneCanvas::SceneCanvas(SceneNavigator& navigator, QWidget* p_parent)
    : QOpenGLWidget(p_parent)
    , m_navigator(navigator)
    , m_p_overlay(new SceneOverlay(this))
    , m_root(new osg::Group)
{
    setFormat(scene_format());
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true); // a move without a button tells that a drag has ended elsewhere
    setMinimumSize(s_least_size);
    setAccessibleName(tr("3D view"));
    setAccessibleDescription(
        tr("Dragging turns, the wheel zooms; with the keyboard, arrow keys turn, plus and minus zoom"));
    connect(&m_navigator, &SceneNavigator::moved, this, [this] {
        m_p_overlay->show_heading(m_navigator.drawn_camera().heading);
        update();
    });
    connect(&m_navigator, &SceneNavigator::mode_changed, this, &SceneCanvas::show_cursor);
    show_cursor();
}

SceneCanvas::~SceneCanvas()
{
    release_graphics();
    // The context goes after this part of the widget has gone.
    if (context()) {
        disconnect(context(), &QOpenGLContext::aboutToBeDestroyed, this, &SceneCanvas::release_graphics);
    }
}

QSize SceneCanvas::sizeHint() const
{
    return s_size_hint;
}

void SceneCanvas::show(ReliefScene* p_scene)
{
    m_p_scene = p_scene;
    if (m_viewer && context()) {
        makeCurrent();
        m_root->releaseGLObjects(m_window->getState());
        doneCurrent();
    }
    m_root->removeChildren(0, m_root->getNumChildren());
    if (p_scene) {
        m_root->addChild(&p_scene->node());
    }
    update();
}

void SceneCanvas::background(const QColor& colour)
{
    m_background = colour;
    update();
}

// --- OpenGL

/// Each time that there is a new context: a widget that moves to another window may get one.
void SceneCanvas::initializeGL()
{
    connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, &SceneCanvas::release_graphics,
        Qt::UniqueConnection);
    m_viewer = new osgViewer::Viewer;
    m_viewer->setThreadingModel(osgViewer::ViewerBase::SingleThreaded);
    m_viewer->setUseConfigureAffinity(false); // or all of the program would get one processor
    m_viewer->setKeyEventSetsDone(0);
    m_viewer->setQuitEventSetsDone(false);
    m_viewer->setLightingMode(osg::View::NO_LIGHT);
    m_window = m_viewer->setUpViewerAsEmbeddedInWindow(0, 0, width(), height());
    m_viewer->getCamera()->setComputeNearFarMode(osg::Camera::DO_NOT_COMPUTE_NEAR_FAR);
    m_viewer->getCamera()->setCullingMode(osg::CullSettings::VIEW_FRUSTUM_SIDES_CULLING);
    m_viewer->setSceneData(m_root);
    m_viewer->realize();
}

void SceneCanvas::release_graphics()
{
    if (!m_viewer) {
        return;
    }
    makeCurrent();
    osg::State* const p_state = m_window->getState();
    m_viewer->getCamera()->releaseGLObjects(p_state);
    osg::deleteAllGLObjects(p_state->getContextID());
    m_viewer->setSceneData(nullptr);
    m_window = nullptr;
    m_viewer = nullptr;
    doneCurrent();
}

bool SceneCanvas::draws_coarsely() const
{
    return (m_drag != SceneDrag::None || m_navigator.is_moving()) && is_drawn_by_processor();
}

void SceneCanvas::paintGL()
{
    const SceneCamera camera = m_navigator.drawn_camera();
    const QSize pixels = size() * devicePixelRatioF();
    m_window->setDefaultFboId(defaultFramebufferObject());
    m_window->resized(0, 0, pixels.width(), pixels.height());
    // Qt has changed things too. After reset() alone, modes that are to be on would be taken for being on.
    m_window->getState()->reset();
    m_window->getState()->apply();
    osg::Camera& drawn = *m_viewer->getCamera();
    drawn.setViewport(0, 0, pixels.width(), pixels.height());
    drawn.setClearColor(osg::Vec4(static_cast<float>(m_background.redF()),
        static_cast<float>(m_background.greenF()), static_cast<float>(m_background.blueF()), 1));
    drawn.setCullMask(~(draws_coarsely() ? fine_surface : coarse_surface));
    const osg::BoundingBoxd bounds
        = m_p_scene ? m_p_scene->bounds() : osg::BoundingBoxd(osg::Vec3d(), osg::Vec3d());
    drawn.setViewMatrix(camera.view_matrix());
    drawn.setProjectionMatrix(camera.projection_matrix(size(), bounds));
    m_viewer->frame();
    ++m_frames;
}

// --- events

/// Keys that belong to it, and not to the entries of menus.
bool SceneCanvas::takes(const QKeyEvent& event) const
{
    if (event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) {
        return false;
    }
    switch (event.key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Plus:
    case Qt::Key_Minus:
    case Qt::Key_0:
    case Qt::Key_N:
        return true;
    default:
        return m_navigator.mode() == SceneMode::Fly && SceneFlight::is_key(event.key());
    }
}

bool SceneCanvas::event(QEvent* p_event)
{
    if (p_event->type() == QEvent::ShortcutOverride && takes(*static_cast<QKeyEvent*>(p_event))) {
        p_event->accept();
        return true;
    }
    return QOpenGLWidget::event(p_event);
}

void SceneCanvas::keyPressEvent(QKeyEvent* p_event)
{
    if (!takes(*p_event)) {
        QOpenGLWidget::keyPressEvent(p_event);
        return;
    }
    if (m_navigator.mode() == SceneMode::Fly && SceneFlight::is_key(p_event->key())) {
        m_navigator.press(p_event->key());
        return;
    }
    switch (p_event->key()) {
    case Qt::Key_Left:
        m_navigator.turn(-1, 0);
        break;
    case Qt::Key_Right:
        m_navigator.turn(1, 0);
        break;
    case Qt::Key_Up:
        m_navigator.turn(0, -1);
        break;
    case Qt::Key_Down:
        m_navigator.turn(0, 1);
        break;
    case Qt::Key_Plus:
        m_navigator.zoom_in();
        break;
    case Qt::Key_Minus:
        m_navigator.zoom_out();
        break;
    case Qt::Key_0:
        m_navigator.home();
        break;
    default:
        m_navigator.north();
    }
}

void SceneCanvas::keyReleaseEvent(QKeyEvent* p_event)
{
    if (!p_event->isAutoRepeat()) {
        m_navigator.release(p_event->key());
    }
    QOpenGLWidget::keyReleaseEvent(p_event);
}

/// What is released elsewhere is not heard here.
void SceneCanvas::focusOutEvent(QFocusEvent* p_event)
{
    m_navigator.release_all();
    end_drag();
    QOpenGLWidget::focusOutEvent(p_event);
    update();
}

void SceneCanvas::hideEvent(QHideEvent* p_event)
{
    end_drag();
    QOpenGLWidget::hideEvent(p_event);
}

void SceneCanvas::resizeEvent(QResizeEvent* p_event)
{
    QOpenGLWidget::resizeEvent(p_event);
    m_p_overlay->setGeometry(rect());
    m_navigator.resize(size());
}

void SceneCanvas::show_cursor()
{
    const bool looks = m_navigator.mode() == SceneMode::Fly;
    setCursor(m_drag != SceneDrag::None ? Qt::ClosedHandCursor
            : looks                     ? Qt::CrossCursor
                                        : Qt::OpenHandCursor);
}

void SceneCanvas::mousePressEvent(QMouseEvent* p_event)
{
    if (m_drag != SceneDrag::None) {
        return;
    }
    m_drag = scene_drag(preferences().mouseMode(), p_event->button(), p_event->modifiers());
    if (m_drag == SceneDrag::None) {
        QOpenGLWidget::mousePressEvent(p_event);
        return;
    }
    m_drag_button = p_event->button();
    m_pointer = p_event->localPos();
    m_navigator.stop_gliding();
    show_cursor();
}

void SceneCanvas::mouseMoveEvent(QMouseEvent* p_event)
{
    if (m_drag == SceneDrag::None) {
        return;
    }
    if (!p_event->buttons().testFlag(m_drag_button)) {
        end_drag(); // it was released where this widget did not hear of it
        return;
    }
    const QPointF by = p_event->localPos() - m_pointer;
    m_pointer = p_event->localPos();
    m_navigator.drag(m_drag, by);
}

void SceneCanvas::mouseReleaseEvent(QMouseEvent* p_event)
{
    if (p_event->button() == m_drag_button) {
        end_drag();
    }
}

void SceneCanvas::end_drag()
{
    if (m_drag != SceneDrag::None) {
        m_drag = SceneDrag::None;
        show_cursor();
        update(); // the fine surface again
    }
}

void SceneCanvas::mouseDoubleClickEvent(QMouseEvent* p_event)
{
    if (p_event->button() == Qt::LeftButton) {
        m_navigator.centre(p_event->localPos());
    }
}

void SceneCanvas::wheelEvent(QWheelEvent* p_event)
{
    const double notches = p_event->angleDelta().y() / s_notch;
    if (notches != 0) {
        m_navigator.zoom(std::pow(s_zoom_step, notches), p_event->position());
    }
    p_event->accept();
}

} // namespace terrain
