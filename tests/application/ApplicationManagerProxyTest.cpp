#include "BusyPool.h"
#include "support/LogCapture.h"
#include "support/StartedApplication.h"
#include "support/TestAccess.h"

#include <QtCore/QThread>
#include <QtCore/QUrl>
#include <QtNetwork/QHostAddress>
#include <QtNetwork/QNetworkProxy>
#include <QtNetwork/QNetworkProxyFactory>
#include <QtNetwork/QTcpServer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using support::LogCapture;
using support::StartedApplication;
using tarqa::housekeeping::ApplicationManager;
using tarqa::housekeeping::TestAccess;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const char* const s_no_proxy = "No system proxy configuration found.";

/// Without what the environment of the tests says about proxies.
class ApplicationManagerProxy : public testing::Test
{
protected:
    ApplicationManagerProxy()
    {
        for (const char* name : {"http_proxy", "https_proxy", "ftp_proxy", "all_proxy", "no_proxy",
                 "HTTP_PROXY", "HTTPS_PROXY", "FTP_PROXY", "ALL_PROXY", "NO_PROXY"}) {
            qunsetenv(name);
        }
    }

    /// What testProxySettings() logs with @p proxy in the environment.
    static std::vector<std::string> logged_with(const char* proxy)
    {
        qputenv("http_proxy", proxy);
        LogCapture log;
        ApplicationManager::testProxySettings();
        const std::vector<std::string> lines = log.lines();
        log.take_all();
        return lines;
    }
};

/// Gives the proxies of its list and notes what was asked.
class Factory : public QNetworkProxyFactory
{
public:
    explicit Factory(const QList<QNetworkProxy>& proxies)
        : m_proxies(proxies)
    { }
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override
    {
        s_queries.append(query);
        return m_proxies;
    }

    static QList<QNetworkProxyQuery> s_queries;

private:
    QList<QNetworkProxy> m_proxies;
};

QList<QNetworkProxyQuery> Factory::s_queries;

/// What testProxySettings() logs when the program's proxies are these.
std::vector<std::string> logged_for(const QList<QNetworkProxy>& proxies)
{
    QNetworkProxyFactory::setApplicationProxyFactory(new Factory(proxies));
    LogCapture log;
    ApplicationManager::testProxySettings();
    const std::vector<std::string> lines = log.lines();
    log.take_all();
    return lines;
}

std::string report(const char* host, int port, int type)
{
    return TestAccess::proxy_report(host, port, type).toStdString();
}

} // namespace

// The text

TEST_F(ApplicationManagerProxy, EveryTypeHasItsName)
{
    EXPECT_EQ("System proxy: host:80 (default)", report("host", 80, QNetworkProxy::DefaultProxy));
    EXPECT_EQ("System proxy: host:1080 (SOCKS5)", report("host", 1080, QNetworkProxy::Socks5Proxy));
    EXPECT_EQ("System proxy: host:3128 (HTTP)", report("host", 3128, QNetworkProxy::HttpProxy));
    EXPECT_EQ(
        "System proxy: host:65535 (HTTP caching)", report("host", 65535, QNetworkProxy::HttpCachingProxy));
    EXPECT_EQ("System proxy: host:0 (FTP caching)", report("host", 0, QNetworkProxy::FtpCachingProxy));
    for (const int type : {6, 99, -1}) {
        EXPECT_EQ("System proxy: host:80 (none)", report("host", 80, type));
    }
}

TEST_F(ApplicationManagerProxy, PlaceholdersInTheHostStay)
{
    EXPECT_EQ("System proxy: %1%2%3:80 (HTTP)", report("%1%2%3", 80, QNetworkProxy::HttpProxy));
    EXPECT_EQ("System proxy: :80 (HTTP)", report("", 80, QNetworkProxy::HttpProxy));
    EXPECT_EQ("System proxy: 2001:db8::1:80 (HTTP)", report("2001:db8::1", 80, QNetworkProxy::HttpProxy));
}

// What is asked, and what is logged

TEST_F(ApplicationManagerProxy, IsThatOfARequestForTheMakersAddress)
{
    const StartedApplication started;
    EXPECT_EQ(1u, logged_for({QNetworkProxy(QNetworkProxy::HttpProxy, "host", 1)}).size());
    ASSERT_EQ(1, Factory::s_queries.size());
    const QNetworkProxyQuery& query = Factory::s_queries.front();
    EXPECT_EQ(QNetworkProxyQuery::UrlRequest, query.queryType());
    EXPECT_TRUE(query.url().isValid());
    EXPECT_EQ("http", query.url().scheme());
    EXPECT_FALSE(query.url().host().isEmpty());
    EXPECT_TRUE(query.url().userInfo().isEmpty());
}

TEST_F(ApplicationManagerProxy, FirstOneIsLogged)
{
    const StartedApplication started;
    EXPECT_THAT(logged_for({QNetworkProxy(QNetworkProxy::Socks5Proxy, "first", 1080, "user", "secret"),
                    QNetworkProxy(QNetworkProxy::HttpProxy, "second", 3128)}),
        ElementsAre("System proxy: first:1080 (SOCKS5)"));
}

TEST_F(ApplicationManagerProxy, EveryTypeIsLogged)
{
    const StartedApplication started;
    const auto logged
        = [](QNetworkProxy::ProxyType type) { return logged_for({QNetworkProxy(type, "host", 8080)}); };
    EXPECT_THAT(logged(QNetworkProxy::DefaultProxy), ElementsAre("System proxy: host:8080 (default)"));
    EXPECT_THAT(logged(QNetworkProxy::Socks5Proxy), ElementsAre("System proxy: host:8080 (SOCKS5)"));
    EXPECT_THAT(logged(QNetworkProxy::HttpProxy), ElementsAre("System proxy: host:8080 (HTTP)"));
    EXPECT_THAT(
        logged(QNetworkProxy::HttpCachingProxy), ElementsAre("System proxy: host:8080 (HTTP caching)"));
    EXPECT_THAT(logged(QNetworkProxy::FtpCachingProxy), ElementsAre("System proxy: host:8080 (FTP caching)"));
}

TEST_F(ApplicationManagerProxy, NoProxyIsLogged)
{
    const StartedApplication started;
    EXPECT_THAT(logged_for({QNetworkProxy(QNetworkProxy::NoProxy, "host", 8080)}), ElementsAre(s_no_proxy));
    EXPECT_THAT(logged_for({QNetworkProxy(QNetworkProxy::NoProxy),
                    QNetworkProxy(QNetworkProxy::HttpProxy, "second", 3128)}),
        ElementsAre(s_no_proxy));
    EXPECT_THAT(logged_for({}), ElementsAre(s_no_proxy));
}

TEST_F(ApplicationManagerProxy, WithoutAnyConfigurationThereIsNone)
{
    const StartedApplication started;
    LogCapture log;
    ApplicationManager::testProxySettings();
    EXPECT_THAT(log.lines(), ElementsAre(s_no_proxy));
    log.take_all();
}

TEST_F(ApplicationManagerProxy, SystemsOneIsFound)
{
    const StartedApplication started;
    QNetworkProxyFactory::setUseSystemConfiguration(true);
    EXPECT_THAT(logged_with("http://127.0.0.1:3128"), ElementsAre("System proxy: 127.0.0.1:3128 (HTTP)"));
    EXPECT_THAT(logged_with("socks5://127.0.0.1:1080"), ElementsAre("System proxy: 127.0.0.1:1080 (SOCKS5)"));
    EXPECT_THAT(logged_with(""), ElementsAre(s_no_proxy));
}

TEST_F(ApplicationManagerProxy, MayBeAskedInAnyThread)
{
    const StartedApplication started;
    QNetworkProxyFactory::setApplicationProxyFactory(
        new Factory({QNetworkProxy(QNetworkProxy::HttpProxy, "host", 1)}));
    LogCapture log;
    QThread* const p_thread = QThread::create([] { ApplicationManager::testProxySettings(); });
    p_thread->start();
    p_thread->wait();
    delete p_thread;
    EXPECT_TRUE(log.take("System proxy: host:1 (HTTP)"));
}

TEST_F(ApplicationManagerProxy, IsNotConnectedTo)
{
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    qputenv("http_proxy", "http://127.0.0.1:" + QByteArray::number(server.serverPort()));
    const StartedApplication started;
    LogCapture log;
    started.manager().updateProxySettings();
    QThreadPool::globalInstance()->waitForDone();
    EXPECT_TRUE(log.take("System proxy: 127.0.0.1:" + std::to_string(server.serverPort()) + " (HTTP)"));
    EXPECT_FALSE(server.waitForNewConnection(100));
}

// Applying the setting

TEST_F(ApplicationManagerProxy, StartDoesNotApplyTheSetting)
{
    QNetworkProxyFactory::setUseSystemConfiguration(false);
    const StartedApplication started; // and nothing else is logged
    QThreadPool::globalInstance()->waitForDone();
    EXPECT_TRUE(started.manager().useSystemProxySettings());
    EXPECT_FALSE(QNetworkProxyFactory::usesSystemConfiguration());
}

TEST_F(ApplicationManagerProxy, SetterDoesNotApplyTheSetting)
{
    const StartedApplication started;
    LogCapture log;
    for (const bool use : {false, true}) {
        QNetworkProxyFactory::setUseSystemConfiguration(!use);
        started.manager().setUseSystemProxySettings(use);
        QThreadPool::globalInstance()->waitForDone();
        EXPECT_EQ(!use, QNetworkProxyFactory::usesSystemConfiguration());
    }
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(ApplicationManagerProxy, SettingThatIsOnUsesTheSystemsAndLogsItOnce)
{
    qputenv("http_proxy", "http://127.0.0.1:3128");
    const StartedApplication started;
    LogCapture log;
    started.manager().updateProxySettings();
    EXPECT_TRUE(QNetworkProxyFactory::usesSystemConfiguration());
    QThreadPool::globalInstance()->waitForDone();
    EXPECT_THAT(log.lines(), ElementsAre("System proxy: 127.0.0.1:3128 (HTTP)"));
    log.take_all();
}

TEST_F(ApplicationManagerProxy, SettingThatIsOffLogsNothing)
{
    qputenv("http_proxy", "http://127.0.0.1:3128");
    const StartedApplication started;
    started.manager().setUseSystemProxySettings(false);
    QNetworkProxyFactory::setUseSystemConfiguration(true);
    LogCapture log;
    started.manager().updateProxySettings();
    EXPECT_FALSE(QNetworkProxyFactory::usesSystemConfiguration());
    EXPECT_EQ(0, QThreadPool::globalInstance()->activeThreadCount());
    QThreadPool::globalInstance()->waitForDone();
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(ApplicationManagerProxy, SettingIsAppliedAnewAtEveryCall)
{
    const StartedApplication started;
    LogCapture log;
    for (const bool use : {true, false, true, true}) {
        started.manager().setUseSystemProxySettings(use);
        started.manager().updateProxySettings();
        EXPECT_EQ(use, QNetworkProxyFactory::usesSystemConfiguration());
    }
    QThreadPool::globalInstance()->waitForDone();
    EXPECT_THAT(log.lines(), ElementsAre(s_no_proxy, s_no_proxy, s_no_proxy));
    log.take_all();
}

TEST_F(ApplicationManagerProxy, IsLookedUpByThePoolWithoutWaitingForIt)
{
    const StartedApplication started;
    LogCapture log;
    QThreadPool::globalInstance()->waitForDone();
    QThreadPool::globalInstance()->setMaxThreadCount(2);
    {
        const BusyPool busy(2);
        started.manager().updateProxySettings(); // returns although the pool is busy
        EXPECT_THAT(log.lines(), IsEmpty());
    }
    QThreadPool::globalInstance()->waitForDone();
    EXPECT_THAT(log.lines(), ElementsAre(s_no_proxy));
    log.take_all();
}

TEST_F(ApplicationManagerProxy, OrderedEndComesAfterTheLookUp)
{
    LogCapture log;
    {
        const StartedApplication started(log);
        support::take_start_up_lines(log);
        started.manager().updateProxySettings();
    }
    EXPECT_TRUE(log.take(s_no_proxy));
}
