#include "views/TerrainWatch.h"

#include "views/TerrainController.h"

#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/utilities/Exception.h>

#include <exception>
#include <utility>

namespace terrain {

TerrainWatch::TerrainWatch(const housekeeping::DocumentId& document, Tell tell, Fail fail)
    : m_controller(TerrainController::instance())
    , m_document(document)
    , m_tell(std::move(tell))
    , m_fail(std::move(fail))
{
    register_controller(&m_controller);
}

TerrainWatch::~TerrainWatch()
{
    unregister();
}

void TerrainWatch::update()
{
    if (m_controller.changed_document() != m_document) {
        return;
    }
    try {
        m_tell(m_controller.changes());
    } catch (const tarqa::Exception& exception) {
        housekeeping::ErrorHandler::instance().report_exception(exception);
        m_fail(QString::fromUtf8(exception.what()));
    } catch (const std::exception& exception) {
        housekeeping::ErrorHandler::instance().report_exception(exception);
        m_fail(QString::fromUtf8(exception.what()));
    }
}

} // namespace terrain
