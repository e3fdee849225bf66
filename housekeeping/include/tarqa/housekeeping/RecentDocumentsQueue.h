#pragma once

#include <pkBase/pkSingleton.h>
#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtCore/QString>

#include <boost/shared_ptr.hpp>

#include <deque>
#include <string>

namespace tarqa::housekeeping {

class DataSource;
class TestAccess;

/**
 * The recently used documents, oldest first, none twice, up to a maximum number. The list is stored for the
 * user, and shared by all installed versions of the product.
 *
 * The host pushes each document that it opens or writes, loads the list at start-up and saves it after each
 * change. Loading again merges what another running program has saved meanwhile.
 *
 * A singleton, made at first use, destroyed in phase 5 of the ordered destruction, without saving. Main
 * thread.
 */
class TQ_HK_EXPORT RecentDocumentsQueue
{
public:
    /// The entries, the oldest at the front.
    typedef std::deque<boost::shared_ptr<DataSource>> Queue;
    /// For looking at the entries.
    typedef Queue::const_iterator const_iterator;

    /// The one object; made at first use.
    static RecentDocumentsQueue& instance();
    /// The same, to look at only.
    static const RecentDocumentsQueue& const_instance();

    /// Makes @p ds the newest entry, in place of one with the same URL; the oldest entry goes if there are
    /// too many then. Null, which is logged, and an empty URL change nothing.
    /// @return whether the document was not in the list before
    bool push(boost::shared_ptr<DataSource> ds);

    /// The entry @p i places after the oldest one.
    /// @throws std::out_of_range unless i < size()
    boost::shared_ptr<DataSource> at(unsigned long long i) const;
    /// From the oldest to the newest.
    const_iterator begin() const { return m_queue.begin(); }
    /// Behind the newest.
    const_iterator end() const { return m_queue.end(); }
    /// How many entries there are.
    unsigned long long size() const { return m_queue.size(); }

    /// How many entries are kept, 20 until set. From the next push on, which drops one entry at most.
    void max_size(unsigned long long size) { m_max_size = size; }

    /// Pushes the stored entries whose files exist, the oldest first.
    void load();
    /// Stores the entries. What was stored behind the last one deliberately stays, and is loaded again.
    /// An entry without data information is stored as an empty list, which is not loaded. Before the first
    /// load() nothing is stored. What cannot be stored is logged, and the stored list stays as it was.
    void save() const;

private:
    friend class pkBase::pkSingleton<RecentDocumentsQueue>;
    friend class TestAccess;
    RecentDocumentsQueue();
    virtual ~RecentDocumentsQueue();
    static pkBase::pkSingleton<RecentDocumentsQueue>& get_instance();
    static void destroy_instance();

    QString key(unsigned long long i) const;

    Queue m_queue; // the oldest at the front
    unsigned long long m_max_size = 20;
    std::string m_key_prefix;
    QString m_organization; // empty until the list is loaded
};

} // namespace tarqa::housekeeping
