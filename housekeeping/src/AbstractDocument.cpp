#include <tarqa/housekeeping/AbstractDocument.h>

#include "Assertion.h"

#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/housekeeping/AbstractController.h>
#include <tarqa/housekeeping/AbstractControllerFactory.h>
#include <tarqa/housekeeping/AbstractDataInformation.h>
#include <tarqa/housekeeping/AbstractModel.h>
#include <tarqa/housekeeping/AbstractState.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/HousekeepingException.h>
#include <tarqa/utilities/Pointers.h>
#include <tarqa/utilities/TemporaryDirectory.h>
#include <tarqa/utilities/Url.h>
#include <tarqa/utilities/UserName.h>

#include <QtCore/QDateTime>
#include <QtCore/QFileInfo>
#include <QtCore/QObject>

#include <boost/make_shared.hpp>

#include <sstream>

namespace tarqa::housekeeping {

namespace {

const char* const s_source = "housekeeping/src/AbstractDocument";
constexpr unsigned int s_line_of_model = 81;
constexpr unsigned int s_no_model = 7006;
const char* const s_model_condition = "!utilities::null_pointer(m_model)";
const char* const s_work_directory_kind = "vista";
constexpr std::size_t s_max_history = 50;

/// The local time without zero padding, for example "2021-3-7 9:5:12".
std::string date_of_now()
{
    return QDateTime::currentDateTime().toString("yyyy-M-d h:m:s").toStdString();
}

} // namespace

unsigned int AbstractDocument::m_s_new_document_counter = 0;

AbstractDocument::AbstractDocument()
{
    m_id = DocumentManager::instance().createId();
    ++m_s_new_document_counter;
    m_title = "Document " + std::to_string(m_s_new_document_counter);
}

AbstractDocument::~AbstractDocument() = default;

bool AbstractDocument::empty() const
{
    return HK_ASSERT(!utilities::null_pointer(m_model), s_model_condition) ? m_model->empty() : true;
}

unsigned long long AbstractDocument::size() const
{
    return HK_ASSERT(!utilities::null_pointer(m_model), s_model_condition) ? m_model->size() : 0;
}

const std::string& AbstractDocument::document_type() const
{
    static const std::string s_no_type;
    return HK_ASSERT(!utilities::null_pointer(m_model), s_model_condition) ? m_model->document_type()
                                                                           : s_no_type;
}

void AbstractDocument::clear()
{
    if (HK_ASSERT(!utilities::null_pointer(m_model), s_model_condition)) {
        m_model->clear();
    }
}

void AbstractDocument::buildModel()
{
    if (m_history.size() <= s_max_history) {
        return;
    }
    // The first record tells which run created the file; it stays for ever.
    const std::size_t surplus = m_history.size() - s_max_history;
    m_history.erase(m_history.begin() + 1, m_history.begin() + 1 + static_cast<std::ptrdiff_t>(surplus));
}

bool AbstractDocument::beingRendered()
{
    return false;
}

bool AbstractDocument::is_closing() const
{
    return m_closing;
}

void AbstractDocument::set_closing()
{
    m_closing = true;
}

bool AbstractDocument::is_transforming() const
{
    return m_transforming;
}

void AbstractDocument::set_transforming(bool transforming)
{
    m_transforming = transforming;
}

void AbstractDocument::setupDatabase(const QString& path)
{
    if (HK_ASSERT(!utilities::null_pointer(m_model), s_model_condition)) {
        m_model->setupDatabase(path);
    }
}

void AbstractDocument::mergeDatabase(const QString& path)
{
    if (HK_ASSERT(!utilities::null_pointer(m_model), s_model_condition)) {
        m_model->mergeDatabase(path);
    }
}

QString AbstractDocument::getDatabasePath()
{
    return HK_ASSERT(!utilities::null_pointer(m_model), s_model_condition) ? m_model->getDatabasePath()
                                                                           : QString();
}

AbstractModel& AbstractDocument::model() const
{
    if (!m_model) {
        throw HousekeepingException(
            s_no_model, QObject::tr("Attempt to get invalid model from document"), s_source, s_line_of_model);
    }
    return *m_model;
}

boost::shared_ptr<AbstractState> AbstractDocument::state(const std::string& controller_name) const
{
    const auto iter = m_states.find(controller_name);
    if (!HK_ASSERT(iter != m_states.end(), "iter != m_states.end()")) {
        return {};
    }
    return iter->second;
}

void AbstractDocument::datasource(boost::shared_ptr<DataSource> ds)
{
    const bool valid = HK_ASSERT(utilities::valid_pointer(ds), "utilities::valid_pointer(ds)");
    m_datasource = ds;
    if (!valid || !ds->data_information()) {
        return;
    }
    title(ds->ds_key().empty() ? ds->url() : ds->ds_key());
}

void AbstractDocument::dataExport(boost::shared_ptr<DataSource> ds)
{
    HK_ASSERT(utilities::valid_pointer(ds), "utilities::valid_pointer(ds)");
    m_data_export = ds;
}

bool AbstractDocument::inTime() const
{
    return m_datasource && m_datasource->inTime();
}

void AbstractDocument::title(const std::string& key)
{
    if (key.empty()) {
        return;
    }
    m_title = utilities::file_from_url(key);
    const int count = DocumentManager::instance().documents_of(key);
    if (count >= 2) {
        m_title += ' ' + std::to_string(count);
    }
    title_changed();
}

std::string AbstractDocument::short_title() const
{
    const QString whole = QString::fromStdString(m_title);
    int separator = whole.lastIndexOf('/');
    if (separator < 0) {
        separator = whole.lastIndexOf('\\'); // QFileInfo knows it on Windows only
    }
    QString text = QFileInfo(whole.mid(separator + 1)).completeBaseName();
    if (m_linked_to_petrel) {
        text += " (Linked to Petrel)";
    }
    return text.toStdString();
}

boost::shared_ptr<utilities::TemporaryDirectory> AbstractDocument::work_dir()
{
    if (m_work_directories.empty()) {
        work_dir(boost::make_shared<utilities::TemporaryDirectory>(s_work_directory_kind));
    }
    return m_work_directories.front();
}

void AbstractDocument::work_dir(boost::shared_ptr<utilities::TemporaryDirectory> directory)
{
    m_work_directories.push_back(directory);
}

std::string AbstractDocument::add_history()
{
    std::ostringstream version;
    version << pkBase::pkProductInfo::instance().build_number();
    const std::string user = utilities::user_name();
    add_history(pkBase::pkProductInfo::instance().marketing_name(), version.str(), user, user, date_of_now());
    return m_history.back().description();
}

void AbstractDocument::add_history(const std::string& program, const std::string& version,
    const std::string& user, const std::string& name, const std::string& date)
{
    m_history.push_back(DocumentHistory(program, version, user, name, date));
}

void AbstractDocument::create_states()
{
    for (const std::string& name : AbstractControllerFactory::products()) {
        const boost::shared_ptr<AbstractController> sp_ac = ControllerManager::instance().controller(name);
        if (!HK_ASSERT(!utilities::null_pointer(sp_ac), "!utilities::null_pointer( sp_ac )")) {
            continue;
        }
        // A controller without states gives an empty one, which is kept so that state(name) knows the name.
        const bool inserted
            = m_states.insert(std::make_pair(name, sp_ac->create_associated_state(*this))).second;
        HK_ASSERT(true == inserted, "true == inserted");
    }
}

} // namespace tarqa::housekeeping
