#pragma once

#include <QtCore/QObject>
#include <QtCore/QVariant>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusVariant>

#include <functional>

namespace support {
class MessageBus;
}

namespace host_test {

/// Stands for the program that tells others what the user of the desktop prefers. It speaks from the event
/// loop.
class FakePortal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    static constexpr unsigned int no_preference = 0;
    static constexpr unsigned int dark = 1;
    static constexpr unsigned int light = 2;

    typedef std::function<QDBusMessage(const QDBusMessage& question)> Answer;

    /// It answers with @p colours. Throws std::runtime_error if it cannot have its name on the bus.
    FakePortal(const support::MessageBus& bus, unsigned int colours);
    ~FakePortal() override;

    /// What it answers instead; nothing if the message has no type.
    void answer_with(const Answer& answer) { m_answer = answer; }
    /// How often it was asked for the colours.
    int questions() const { return m_questions; }

    /// Tells all that listen that the colours have changed, and waits until the bus has passed it on.
    void announce(unsigned int colours);
    void announce(const QString& group, const QString& key, const QVariant& value);

public slots:
    QDBusVariant Read(const QString& group, const QString& key, const QDBusMessage& question);

private:
    QString m_name; // of the connection
    QDBusConnection m_connection;
    Answer m_answer;
    int m_questions = 0;
};

} // namespace host_test
