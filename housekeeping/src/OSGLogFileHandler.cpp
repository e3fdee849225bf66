#include "OSGLogFileHandler.h"

#include <tarqa/housekeeping/ErrorProtocol.h>

namespace tarqa::housekeeping {

OSGLogFileHandler::~OSGLogFileHandler() = default;

void OSGLogFileHandler::notify(osg::NotifySeverity severity, const char* p_message)
{
    const bool severe = severity == osg::ALWAYS || severity == osg::FATAL;
    // The end of a line alone sends an empty text.
    if (severe && p_message && *p_message) {
        ErrorProtocol::instance().log_message(p_message);
    }
}

} // namespace tarqa::housekeeping
