#include <tarqa/housekeeping/TimerObject.h>

#include <tarqa/housekeeping/ErrorProtocol.h>

namespace tarqa::housekeeping {

namespace {

constexpr double s_nanoseconds_to_milliseconds = 0.000001;
constexpr double s_nanoseconds_to_microseconds = 0.001;
constexpr double s_nanoseconds_to_percent_of_milliseconds = 0.0001;
constexpr int s_milliseconds_of_day = 24 * 60 * 60 * 1000;

} // namespace

TimerObject::TimerObject(const QString& task)
    : m_task(task)
    , m_start(QTime::currentTime())
{
    m_step_timer.start();
}

TimerObject::TimerObject(const TimerObject&) = default;
TimerObject& TimerObject::operator=(const TimerObject&) = default;

TimerObject::~TimerObject()
{
    const int milliseconds = milliseconds_between(m_start, QTime::currentTime());
    ErrorProtocol::instance().log_message(report(m_task, milliseconds, m_order, m_statistics).toStdString());
}

void TimerObject::addStep(const QString& step)
{
    const qint64 elapsed = m_step_timer.nsecsElapsed(); // restart() would give milliseconds only
    m_step_timer.restart();
    Statistics& statistics = m_statistics[step];
    statistics.nanoseconds += elapsed;
    if (++statistics.count == 1) {
        m_order.append(step);
    }
}

int TimerObject::milliseconds_between(const QTime& start, const QTime& end)
{
    const int milliseconds = start.msecsTo(end);
    return milliseconds < 0 ? milliseconds + s_milliseconds_of_day : milliseconds;
}

/// The numbers are written first and filled in together: a name that holds "%1" must come out as it is.
QString TimerObject::report(const QString& task, int milliseconds, const QList<QString>& order,
    const QHash<QString, Statistics>& statistics)
{
    QString text = QString("Task %1 (%2 ms total)").arg(task, QString::number(milliseconds));
    int number = 0;
    for (const QString& step : order) {
        const Statistics step_statistics = statistics.value(step);
        const auto total = static_cast<double>(step_statistics.nanoseconds);
        const double percentage = total * s_nanoseconds_to_percent_of_milliseconds / milliseconds;
        QString mean;
        if (step_statistics.count > 1) {
            mean = QString(", mean %1 \u00b5s")
                       .arg(QString::number(
                           total * s_nanoseconds_to_microseconds / step_statistics.count, 'g', 6));
        }
        text += QString("\n  %1. %2 in %3 ms (%4%%5)")
                    .arg(QString::number(++number), step,
                        QString::number(total * s_nanoseconds_to_milliseconds, 'g', 6),
                        QString::number(percentage, 'f', 2), mean);
    }
    return text;
}

} // namespace tarqa::housekeeping
