#pragma once

#include <tarqa/housekeeping/DocumentHistoryMsg.h>

#include <QtCore/QObject>

#include <exception>

namespace tarqa::housekeeping::testkit {

/// Keeps a command from running: the command manager lists it, says so, and here is somebody who throws on
/// hearing it.
class RefusedRun : public QObject
{
    Q_OBJECT

public:
    /// What is thrown.
    class Refusal : public std::exception
    {
    public:
        const char* what() const noexcept override { return "the run is refused"; }
    };

    RefusedRun();
    ~RefusedRun() override;

public slots:
    void handle_message(housekeeping::DocumentHistoryMsg& message);
};

} // namespace tarqa::housekeeping::testkit
