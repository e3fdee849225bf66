#pragma once

class QSurfaceFormat;

namespace terrain {

/// What OpenSceneGraph needs of a window it draws in: OpenGL with fixed functions.
QSurfaceFormat scene_format();

/// Whether scenes can be drawn here. Finds it out when it is asked first, and tells the application manager
/// what the graphics can do. Main thread.
bool has_scene_graphics();

/// Whether the processor does the work of the graphics, as far as is known. Main thread.
bool is_drawn_by_processor();

} // namespace terrain
