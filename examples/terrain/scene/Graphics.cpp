#include "scene/Graphics.h"

#include <tarqa/housekeeping/ApplicationManager.h>

#include <QtGui/QGuiApplication>
#include <QtGui/QOffscreenSurface>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>
#include <QtGui/QOpenGLShaderProgram>
#include <QtGui/QSurfaceFormat>

namespace terrain {

namespace {

const int s_depth_bits = 24;
const int s_samples = 4; ///< of a pixel, for smooth edges
/// Parts of the names of renderers.
const char* const s_renderers_in_software[] = {"llvmpipe", "softpipe", "swrast", "Software Rasterizer"};
const char* const s_platforms_without_screen[] = {"offscreen", "minimal"};

bool has_screen()
{
    for (const char* const platform : s_platforms_without_screen) {
        if (QGuiApplication::platformName() == platform) {
            return false;
        }
    }
    return true;
}

void tell(QOpenGLContext& context)
{
    auto& application = tarqa::housekeeping::ApplicationManager::instance();
    const QSurfaceFormat format = context.format();
    application.setGlTest(true);
    application.setGLVersion(static_cast<float>(format.majorVersion() + format.minorVersion() / 10.0));
    const auto* const p_renderer = context.functions()->glGetString(GL_RENDERER);
    application.setGlRenderer(p_renderer ? reinterpret_cast<const char*>(p_renderer) : "");
    const bool shaders = QOpenGLShaderProgram::hasOpenGLShaderPrograms(&context);
    application.setVertShaderAvail(shaders);
    application.setFragShaderAvail(shaders);
    application.setGlslAvail(shaders);
}

bool find_out()
{
    if (!has_screen()) {
        return false;
    }
    QOpenGLContext context;
    context.setFormat(scene_format());
    QOffscreenSurface surface;
    surface.setFormat(scene_format());
    surface.create();
    if (!context.create() || context.isOpenGLES() || !context.makeCurrent(&surface)) {
        return false;
    }
    const bool can = context.format().profile() != QSurfaceFormat::CoreProfile
        && context.functions()->hasOpenGLFeature(QOpenGLFunctions::Framebuffers);
    tell(context);
    context.doneCurrent();
    return can;
}

} // namespace

QSurfaceFormat scene_format()
{
    QSurfaceFormat format;
    format.setRenderableType(QSurfaceFormat::OpenGL);
    format.setVersion(2, 1);
    format.setProfile(QSurfaceFormat::CompatibilityProfile);
    format.setDepthBufferSize(s_depth_bits);
    if (!is_drawn_by_processor()) {
        format.setSamples(s_samples);
    }
    return format;
}

bool has_scene_graphics()
{
    static const bool s_has = find_out();
    return s_has;
}

bool is_drawn_by_processor()
{
    const auto& application = tarqa::housekeeping::ApplicationManager::const_instance();
    for (const char* const name : s_renderers_in_software) {
        if (application.glRenderer().find(name) != std::string::npos) {
            return true;
        }
    }
    return application.likelyUsingSoftwareMesa();
}

} // namespace terrain
