#include "HelpRecorder.h"

#include "support/Kept.h"

#include <tarqa/housekeeping/gui/HelpLauncher.h>
#include <tarqa/housekeeping/gui/HelpLauncherFactory.h>

#include <QtGui/QDesktopServices>

#include <boost/make_shared.hpp>

#include <utility>

namespace host_test {

namespace gui = tarqa::housekeeping::gui;

const std::string s_recorded_product = "RecordedHelp";

namespace {

const char* const s_schemes[] = {"file", "http", "https"};

QStringList s_pages;

class RecordedHelp : public gui::HelpLauncher
{
public:
    void show_page(const QString& page, bool external) override
    {
        s_pages.append((external ? "!" : "") + page);
    }
};

class RecordedHelpFactory : public gui::HelpLauncherFactory
{
public:
    RecordedHelpFactory()
        : HelpLauncherFactory(s_recorded_product, false)
    { }
    boost::shared_ptr<gui::HelpLauncher> create_product() override
    {
        return boost::make_shared<RecordedHelp>();
    }
    gui::HelpLauncher* create_unmanaged_product() override { return new RecordedHelp; }
};

} // namespace

void register_recorded_help()
{
    static const RecordedHelpFactory& s_factory = support::kept(new RecordedHelpFactory);
    static_cast<void>(s_factory);
}

QStringList take_pages()
{
    return std::exchange(s_pages, {});
}

OpenedAddresses::OpenedAddresses()
{
    for (const char* const scheme : s_schemes) {
        QDesktopServices::setUrlHandler(scheme, this, "open");
    }
}

OpenedAddresses::~OpenedAddresses()
{
    for (const char* const scheme : s_schemes) {
        QDesktopServices::unsetUrlHandler(scheme);
    }
}

} // namespace host_test
