#include "Check.h"
#include "FuzzApplication.h"
#include "KeptInformation.h"
#include "LogWatch.h"
#include "SettingsFile.h"
#include "Targets.h"

#include "support/TestAccess.h"

#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/RecentDocumentsQueue.h>
#include <tarqa/utilities/Url.h>

#include <QtCore/QFileInfo>
#include <QtCore/QSettings>

#include <algorithm>
#include <vector>

namespace fuzz {

using tarqa::housekeeping::DataSource;
using tarqa::housekeeping::RecentDocumentsQueue;

namespace {

const std::size_t s_most = 20;

QSettings& settings()
{
    static QSettings s_settings("Tarqa", "TarqAllVersions");
    return s_settings;
}

bool exists(const std::string& url)
{
    return QFileInfo::exists(QString::fromStdString(tarqa::utilities::url_to_filesystem(url)));
}

/// The lists of the entries, up to the first gap.
QList<QStringList> stored_lists()
{
    QSettings stored("Tarqa", "TarqAllVersions");
    stored.beginGroup("RecentFileList");
    QList<QStringList> lists;
    for (int i = 0;; ++i) {
        const QString key = "recently_viewed_doc" + QString::number(i);
        if (!stored.contains(key)) {
            return lists;
        }
        lists.append(stored.value(key).toStringList());
    }
}

/// The rules of the queue, for the urls alone.
class Model
{
public:
    void load(const QList<QStringList>& lists)
    {
        for (const QStringList& list : lists) {
            if (!list.isEmpty() && exists(list.first().toStdString())) {
                push(list.first().toStdString());
            }
        }
    }
    const std::vector<std::string>& urls() const { return m_urls; }

private:
    void push(const std::string& url)
    {
        if (url.empty()) {
            return;
        }
        m_urls.erase(std::remove(m_urls.begin(), m_urls.end(), url), m_urls.end());
        m_urls.push_back(url);
        if (m_urls.size() > s_most) {
            m_urls.erase(m_urls.begin());
        }
    }

    std::vector<std::string> m_urls;
};

void load_and_check(Model& model)
{
    RecentDocumentsQueue& queue = RecentDocumentsQueue::instance();
    queue.load();
    model.load(stored_lists());
    std::vector<std::string> urls;
    for (const auto& sp_source : queue) {
        urls.push_back(sp_source->url());
        DataSource again;
        again.info(sp_source->info());
        check(again.info() == sp_source->info(), "the list of an entry is read as something else");
    }
    check(urls == model.urls(), "other documents than those that are stored");
}

void save_and_check()
{
    QList<QStringList> expected = stored_lists();
    RecentDocumentsQueue::instance().save();
    int i = 0;
    for (const auto& sp_source : RecentDocumentsQueue::instance()) {
        check(i < expected.size(), "there are more documents than were stored");
        expected[i++] = sp_source->info();
    }
    forget_settings(settings());
    check(stored_lists() == expected, "what was stored is read as something else");
}

} // namespace

void recent_documents(const std::string& input)
{
    make_application();
    KeptInformation::register_factory();
    const LogWatch log;
    put_settings_file(settings(), input);
    Model model;
    load_and_check(model);
    load_and_check(model); // a second time moves entries
    save_and_check();
    tarqa::housekeeping::TestAccess::destroy<RecentDocumentsQueue>();

    Model next;
    load_and_check(next);
    tarqa::housekeeping::TestAccess::destroy<RecentDocumentsQueue>();
    log.check_assertions({"units_found"});
}

} // namespace fuzz
