#pragma once

#include "support/Fakes.h"
#include "support/PrivateHome.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/RecentDocumentsQueue.h>
#include <tarqa/utilities/Url.h>

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <QtCore/QSettings>
#include <QtCore/QVariant>

/// The queue of this process, files for its entries, and what is stored of it.
class RecentDocumentsQueue : public testing::Test
{
protected:
    typedef tarqa::housekeeping::DataSource DataSource;
    typedef tarqa::housekeeping::RecentDocumentsQueue Queue;

    static Queue& queue() { return Queue::instance(); }

    /// Ends the queue, as the end of the program does; the next one begins empty.
    static void restart() { tarqa::housekeeping::TestAccess::destroy<Queue>(); }

    static boost::shared_ptr<DataSource> source(const std::string& url, const std::string& settings = "")
    {
        const auto information = boost::make_shared<support::FakeDataInformation>("fake");
        information->settings = settings;
        return boost::make_shared<DataSource>(url, information);
    }
    static bool push(const std::string& url) { return queue().push(source(url)); }

    /// The URLs of the entries, the oldest first.
    static std::vector<std::string> urls()
    {
        std::vector<std::string> urls;
        for (const auto& entry : queue()) {
            urls.push_back(entry->url());
        }
        return urls;
    }

    /// The URL of a file that exists, made here.
    static std::string file(const std::string& name)
    {
        const std::string path = support::PrivateHome::scratch_directory() + "/" + name;
        std::ofstream(path) << "data";
        return tarqa::utilities::filesystem_to_url(path);
    }
    static std::string missing_file(const std::string& name)
    {
        return tarqa::utilities::filesystem_to_url(support::PrivateHome::scratch_directory() + "/" + name);
    }
    static void remove(const std::string& url)
    {
        std::filesystem::remove(tarqa::utilities::url_to_filesystem(url));
    }

    static QString key(int index) { return "RecentFileList/recently_viewed_doc" + QString::number(index); }
    /// The list as it is stored for the entry @p url.
    static QStringList list(const std::string& url, const std::string& settings = "")
    {
        return {QString::fromStdString(url), "fake", "elevation", "metres", QString::fromStdString(settings)};
    }
    static void store(int index, const QVariant& value)
    {
        QSettings("Tarqa", "TarqAllVersions").setValue(key(index), value);
    }
    static void store(const std::vector<std::string>& stored)
    {
        for (int i = 0; i < static_cast<int>(stored.size()); ++i) {
            store(i, list(stored[static_cast<std::size_t>(i)]));
        }
    }
    static QStringList stored(int index)
    {
        return QSettings("Tarqa", "TarqAllVersions").value(key(index)).toStringList();
    }
    static bool is_stored(int index) { return QSettings("Tarqa", "TarqAllVersions").contains(key(index)); }

    /// Where the list is on the disk.
    static std::string settings_file(const std::string& organization = "Tarqa")
    {
        return std::getenv("XDG_CONFIG_HOME") + ("/" + organization + "/TarqAllVersions.conf");
    }
    /// Writes that file byte by byte, before anybody has read it.
    static void write_settings_file(const std::string& bytes)
    {
        const std::string path = settings_file();
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::ofstream(path, std::ios::binary) << bytes;
    }
};
