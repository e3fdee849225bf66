#pragma once

#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QTime>

namespace tarqa::housekeeping {

/**
 * Measures the named steps of a long task and writes a timing report to the error log when it goes out of
 * scope:
 *
 *     TimerObject timer("Import");
 *     read();
 *     timer.addStep("read");
 *     index();
 *     timer.addStep("index");
 *
 * Time before the first step counts for that step, time after the last one for the whole task only. Used by
 * one thread, on its stack; a copy writes a report of its own.
 */
class TQ_HK_EXPORT TimerObject
{
public:
    /// Starts to measure. @param task the name in the report
    explicit TimerObject(const QString& task);
    TimerObject(const TimerObject&);
    TimerObject& operator=(const TimerObject&);
    ~TimerObject();

    /// Counts the time since the previous step, or since the start, for @p step; steps of the same name add
    /// up.
    void addStep(const QString& step);

private:
    friend class TestAccess;

    struct Statistics
    {
        qint64 nanoseconds = 0;
        int count = 0;
    };

    /// Of the wall clock; the end may be past midnight.
    static int milliseconds_between(const QTime& start, const QTime& end);
    static QString report(const QString& task, int milliseconds, const QList<QString>& order,
        const QHash<QString, Statistics>& statistics);

    QString m_task;
    QElapsedTimer m_step_timer;
    QTime m_start;
    QList<QString> m_order; // of the steps, as first seen
    QHash<QString, Statistics> m_statistics;
};

} // namespace tarqa::housekeeping
