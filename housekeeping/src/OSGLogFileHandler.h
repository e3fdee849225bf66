#pragma once

#include <osg/Notify>

namespace tarqa::housekeeping {

/// Writes OpenSceneGraph's messages of the two most severe kinds to the error log and drops all others.
/// OpenSceneGraph owns it. Any thread.
class OSGLogFileHandler : public osg::NotifyHandler
{
public:
    void notify(osg::NotifySeverity severity, const char* p_message) override;

protected:
    ~OSGLogFileHandler() override;
};

} // namespace tarqa::housekeeping
