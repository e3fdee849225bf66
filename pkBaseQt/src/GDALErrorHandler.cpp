#include <pkBaseQt/GDALErrorHandler.h>

#include <cpl_error.h>

namespace pkBase {

namespace {

/// What GDAL calls.
void CPL_STDCALL take_message(CPLErr error_class, CPLErrorNum, const char* message)
{
    GDALErrorHandler::hand_over(error_class, message);
}

const char* prefix_of(int error_class)
{
    switch (error_class) {
    case CE_None:
        return "CE_None: ";
    case CE_Debug:
        return "CE_Debug: ";
    case CE_Warning:
        return "CE_Warning: ";
    case CE_Failure:
        return "CE_Failure: ";
    case CE_Fatal:
        return "CE_Fatal: ";
    default:
        return nullptr;
    }
}

} // namespace

/// GDAL's former handler, in GDAL's types.
struct GDALErrorHandler::Former
{
    CPLErrorHandler handler;
    void* p_user_data; // the host's
};

GDALErrorHandler::GDALErrorHandler() = default;

GDALErrorHandler::~GDALErrorHandler()
{
    restore();
}

pkSingleton<GDALErrorHandler>& GDALErrorHandler::get_instance()
{
    static pkSingleton<GDALErrorHandler> s_holder(pkDestructionPhase(5), &GDALErrorHandler::destroy_instance);
    return s_holder;
}

GDALErrorHandler& GDALErrorHandler::instance()
{
    return get_instance().get();
}

void GDALErrorHandler::destroy_instance()
{
    get_instance().destroy();
}

void GDALErrorHandler::restore_if_installed()
{
    if (GDALErrorHandler* const p_handler = get_instance().peek()) {
        p_handler->restore();
    }
}

void GDALErrorHandler::install()
{
    if (!m_former) {
        void* const p_user_data = CPLGetErrorHandlerUserData();
        m_former = std::make_unique<Former>(Former{CPLSetErrorHandler(&take_message), p_user_data});
    }
}

void GDALErrorHandler::restore()
{
    if (m_former) {
        CPLSetErrorHandlerEx(m_former->handler, m_former->p_user_data);
        m_former.reset();
    }
}

std::string GDALErrorHandler::text(int error_class, const char* message)
{
    const char* const prefix = prefix_of(error_class);
    return prefix ? std::string(prefix) + (message ? message : "") : std::string();
}

void GDALErrorHandler::hand_over(int error_class, const char* message)
{
    // A thread may be in GDAL while the ordered destruction is under way.
    const GDALErrorHandler* const p_handler = get_instance().peek();
    const Sink sink = p_handler ? p_handler->m_sink.load() : nullptr;
    const std::string entry = text(error_class, message);
    if (sink && !entry.empty()) {
        sink(entry);
    }
}

} // namespace pkBase
