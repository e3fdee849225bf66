#include <tarqa/housekeeping/RecentDocumentsQueue.h>

#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/ErrorProtocol.h>

#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/utilities/Url.h>

#include "Assertion.h"
#include "LoggingExceptions.h"
#include "Platform.h"
#include "SettingsChange.h"
#include "SettingsGroup.h"

#include <boost/make_shared.hpp>

#include <QtCore/QFileInfo>
#include <QtCore/QSettings>
#include <QtCore/QStringList>

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace tarqa::housekeeping {

namespace {

const char* const s_source = "housekeeping/src/RecentDocumentsQueue";

const char* const s_application = "TarqAllVersions";
const char* const s_group = "RecentFileList";

bool file_exists(const QString& url)
{
    return QFileInfo::exists(QString::fromStdString(utilities::url_to_filesystem(url.toStdString())));
}

} // namespace

RecentDocumentsQueue::RecentDocumentsQueue()
    : m_key_prefix("recently_viewed_doc")
{ }

RecentDocumentsQueue::~RecentDocumentsQueue() = default;

pkBase::pkSingleton<RecentDocumentsQueue>& RecentDocumentsQueue::get_instance()
{
    static pkBase::pkSingleton<RecentDocumentsQueue> s_holder(
        pkBase::pkDestructionPhase(5), &RecentDocumentsQueue::destroy_instance);
    return s_holder;
}

RecentDocumentsQueue& RecentDocumentsQueue::instance()
{
    return get_instance().get();
}

const RecentDocumentsQueue& RecentDocumentsQueue::const_instance()
{
    return instance();
}

void RecentDocumentsQueue::destroy_instance()
{
    get_instance().destroy();
}

bool RecentDocumentsQueue::push(boost::shared_ptr<DataSource> ds)
{
    if (!HK_ASSERT(ds, "ds") || ds->url().empty()) {
        return false;
    }
    const auto known = std::find_if(m_queue.begin(), m_queue.end(),
        [&](const boost::shared_ptr<DataSource>& entry) { return entry->url() == ds->url(); });
    if (known != m_queue.end()) {
        *known = ds;
        std::rotate(known, std::next(known), m_queue.end()); // which needs no memory
        return false;
    }
    m_queue.push_back(ds);
    if (m_queue.size() > m_max_size) {
        m_queue.pop_front(); // deliberately one, however many there are too many
    }
    return true;
}

boost::shared_ptr<DataSource> RecentDocumentsQueue::at(unsigned long long i) const
{
    if (i >= m_queue.size()) {
        throw std::out_of_range("invalid deque<T> subscript");
    }
    return m_queue[i];
}

QString RecentDocumentsQueue::key(unsigned long long i) const
{
    return QString::fromStdString(m_key_prefix) + QString::number(i);
}

void RecentDocumentsQueue::load()
{
    m_organization = QString::fromStdString(pkBase::pkProductInfo::instance().organization_name());
    mend_settings_file(settings_file(m_organization, s_application));
    QSettings settings(m_organization, s_application);
    const SettingsGroup group(settings, s_group);
    for (unsigned long long i = 0; settings.contains(key(i)); ++i) {
        const QStringList list = settings.value(key(i)).toStringList();
        if (list.isEmpty() || !file_exists(list.first())) {
            continue;
        }
        const auto sp_source = boost::make_shared<DataSource>();
        // One entry that cannot be read must not cost the others.
        logging_exceptions("An entry of the recent documents cannot be read, for an unknown reason", [&] {
            sp_source->info(list);
            push(sp_source);
        });
    }
}

void RecentDocumentsQueue::save() const
{
    if (m_organization.isEmpty()) {
        return; // without a load nothing is stored over what has not been read
    }
    QSettings settings(m_organization, s_application);
    SettingsChange change(settings);
    if (change.may_begin()) {
        const SettingsGroup group(settings, s_group);
        unsigned long long i = 0;
        for (const boost::shared_ptr<DataSource>& sp_source : m_queue) {
            settings.setValue(key(i++), sp_source->info());
        }
    }
    if (!change.store()) {
        ErrorProtocol::instance().log_message(
            "The recent documents could not be stored in " + settings.fileName().toStdString());
    }
}

} // namespace tarqa::housekeeping
