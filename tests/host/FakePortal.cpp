#include "FakePortal.h"

#include "support/MessageBus.h"

#include <QtDBus/QDBusConnectionInterface>

#include <stdexcept>

namespace host_test {

namespace {

const char* const s_service = "org.freedesktop.portal.Desktop";
const char* const s_path = "/org/freedesktop/portal/desktop";
const char* const s_interface = "org.freedesktop.portal.Settings";
const char* const s_group = "org.freedesktop.appearance";
const char* const s_key = "color-scheme";

QString fresh_connection_name()
{
    static int s_connections = 0;
    return QString("portal %1").arg(++s_connections);
}

QVariant wrapped(const QVariant& value)
{
    return QVariant::fromValue(QDBusVariant(value));
}

} // namespace

FakePortal::FakePortal(const support::MessageBus& bus, unsigned int colours)
    : m_name(fresh_connection_name())
    , m_connection(QDBusConnection::connectToBus(bus.address(), m_name))
    , m_answer(
          [colours](const QDBusMessage& question) { return question.createReply(wrapped(wrapped(colours))); })
{
    if (!m_connection.registerObject(s_path, this, QDBusConnection::ExportAllSlots)
        || !m_connection.registerService(s_service)) {
        throw std::runtime_error("no portal on the bus");
    }
}

FakePortal::~FakePortal()
{
    QDBusConnection::disconnectFromBus(m_name);
}

void FakePortal::announce(unsigned int colours)
{
    announce(s_group, s_key, colours);
}

void FakePortal::announce(const QString& group, const QString& key, const QVariant& value)
{
    QDBusMessage signal = QDBusMessage::createSignal(s_path, s_interface, "SettingChanged");
    signal << group << key << wrapped(value);
    if (!m_connection.send(signal)) {
        throw std::runtime_error("the announcement was not sent");
    }
    m_connection.interface()->serviceOwner("org.freedesktop.DBus");
}

QDBusVariant FakePortal::Read(const QString& group, const QString& key, const QDBusMessage& question)
{
    question.setDelayedReply(true);
    if (group == s_group && key == s_key) {
        ++m_questions;
        const QDBusMessage answer = m_answer(question);
        if (answer.type() != QDBusMessage::InvalidMessage) {
            m_connection.send(answer);
        }
    }
    return QDBusVariant();
}

} // namespace host_test
