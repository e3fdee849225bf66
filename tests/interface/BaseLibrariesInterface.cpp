#include "interface/Interface.h"

#include <pkBase/AbstractProgress.h>
#include <pkBase/pkAbstractFactory.h>
#include <pkBase/pkDestructionPhase.h>
#include <pkBase/pkDestructor.h>
#include <pkBase/pkSingleton.h>
#include <pkBaseQt/Environment.h>
#include <pkBaseQt/GDALErrorHandler.h>
#include <pkBaseQt/QFinalPolish.h>
#include <pkBaseQt/QLogFileViewer.h>
#include <pkBaseQt/QPKAboutBox.h>
#include <pkBaseQt/QPKHelpButton.h>
#include <pkBaseQt/QPKProxyStyle.h>
#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/utilities/ExceptionTemplate.h>
#include <tarqa/utilities/Hardware.h>
#include <tarqa/utilities/IdCreator.h>
#include <tarqa/utilities/Pointers.h>
#include <tarqa/utilities/SystemPaths.h>
#include <tarqa/utilities/TemporaryDirectory.h>
#include <tarqa/utilities/Url.h>
#include <tarqa/utilities/UrlList.h>
#include <tarqa/utilities/UserName.h>

#include <QtCore/QMetaMethod>
#include <QtCore/QUrl>
#include <QtWidgets/QWidget>

#include <gtest/gtest.h>

#include <ostream>

// What the three base libraries offer: the utilities, and the bases without and with Qt.

using namespace pkBase;
using namespace tarqa::utilities;

namespace {

typedef std::string Text;

// Numbers and pointers

static_assert(std::has_virtual_destructor_v<IdCreator>);
static_assert(std::is_default_constructible_v<IdCreator>);
static_assert(std::is_constructible_v<IdCreator, IdCreator::Order>);
static_assert(!std::is_copy_constructible_v<IdCreator> && !std::is_copy_assignable_v<IdCreator>);
INTERFACE_HAS(IdCreator::createNextId, unsigned long long (IdCreator::*)());
INTERFACE_HAS(null_pointer<int*>, bool (*)(int* const&));
INTERFACE_HAS(valid_pointer<int*>, bool (*)(int* const&));

// The system

static_assert(!std::is_default_constructible_v<Hardware>);
INTERFACE_HAS(Hardware::operating_system, Text (*)());
INTERFACE_HAS(Hardware::kernel, Text (*)());
INTERFACE_HAS(Hardware::processor, Text (*)());
INTERFACE_HAS(Hardware::processor_count, unsigned int (*)());
INTERFACE_HAS(Hardware::physical_memory, unsigned long long (*)());
INTERFACE_HAS(Hardware::write_to_log, void (*)(std::ostream&));
static_assert(!std::is_default_constructible_v<SystemPaths>);
INTERFACE_HAS(SystemPaths::installation_root_path, Text (*)());
INTERFACE_HAS(SystemPaths::user_preferences_path, Text (*)());
INTERFACE_HAS(SystemPaths::temporary_path, Text (*)());
INTERFACE_HAS(SystemPaths::write_to_log, void (*)(std::ostream&));
INTERFACE_HAS(user_name, Text (*)());

// Files

INTERFACE_HAS(filesystem_to_url, Text (*)(const Text&));
INTERFACE_HAS(url_to_filesystem, Text (*)(const Text&));
INTERFACE_HAS(file_from_url, Text (*)(const Text&));
static_assert(std::is_same_v<UrlList, std::vector<Text>>);
static_assert(std::is_constructible_v<TemporaryDirectory, const Text&>);
static_assert(!std::is_convertible_v<const Text&, TemporaryDirectory>);
static_assert(
    !std::is_copy_constructible_v<TemporaryDirectory> && !std::is_copy_assignable_v<TemporaryDirectory>);
INTERFACE_HAS(TemporaryDirectory::path, const Text& (TemporaryDirectory::*)() const);
INTERFACE_HAS(temporary_directories_exist, bool (*)(const Text&));
INTERFACE_HAS(clear_existing_temp_directories, void (*)(const Text&));
static_assert(std::is_same_v<TemporaryDirectoryException,
    tarqa::ExceptionTemplate<tarqa::Exception, TemporaryDirectoryTag>>);

// Factories and progress

static_assert(std::has_virtual_destructor_v<pkAbstractFactory>);
static_assert(!std::is_default_constructible_v<pkAbstractFactory>);
static_assert(
    std::is_copy_constructible_v<pkAbstractFactory> && std::is_copy_assignable_v<pkAbstractFactory>);
static_assert(std::has_virtual_destructor_v<AbstractProgress>);
INTERFACE_HAS(AbstractProgress::open_run, void (AbstractProgress::*)(unsigned int));
INTERFACE_HAS(AbstractProgress::set_percentage, void (AbstractProgress::*)(unsigned int));
INTERFACE_HAS(AbstractProgress::set_text, void (AbstractProgress::*)(const QString&));
INTERFACE_HAS(AbstractProgress::close_run, void (AbstractProgress::*)());

// clang-format off
template <class B> struct ProgressOpen : B { void open_run(unsigned int) override { } };
template <class B> struct ProgressPercentage : B { void set_percentage(unsigned int) override { } };
template <class B> struct ProgressText : B { void set_text(const QString&) override { } };
template <class B> struct ProgressClose : B { void close_run() override { } };
// clang-format on
static_assert(interface::are_the_pure_ones<AbstractProgress, ProgressOpen, ProgressPercentage, ProgressText,
    ProgressClose>);

// The ordered destruction

static_assert(
    std::is_constructible_v<pkDestructionPhase, int> && !std::is_convertible_v<int, pkDestructionPhase>);
INTERFACE_HAS(pkDestructionPhase::number, int (pkDestructionPhase::*)() const);
static_assert(pkDestructionPhase(5).number() == 5);
static_assert(std::is_constructible_v<pkDestructor, pkDestructionPhase, void (*)()>);
static_assert(!std::is_constructible_v<pkDestructor, int, void (*)()>);
INTERFACE_HAS(pkDestructor::run, void (*)());
INTERFACE_HAS(pkDestructor::run_at_exit, void (*)());

typedef pkSingleton<int> Singleton;
static_assert(std::is_constructible_v<Singleton, pkDestructionPhase, void (*)()>);
static_assert(!std::is_copy_constructible_v<Singleton> && !std::is_copy_assignable_v<Singleton>);
INTERFACE_HAS(Singleton::get, int& (Singleton::*)());
INTERFACE_HAS(Singleton::peek, int* (Singleton::*)() const);
INTERFACE_HAS(Singleton::destroy, void (Singleton::*)());
INTERFACE_HAS(Singleton::reserve_destruction, void (Singleton::*)());

// The product

static_assert(std::is_base_of_v<QObject, pkProductInfo>);
static_assert(!std::is_default_constructible_v<pkProductInfo> && !std::is_destructible_v<pkProductInfo>);
INTERFACE_HAS(pkProductInfo::instance, pkProductInfo& (*)());
INTERFACE_HAS(pkProductInfo::const_instance, const pkProductInfo& (*)());
INTERFACE_HAS(pkProductInfo::product_name, const Text& (pkProductInfo::*)() const);
INTERFACE_HAS(pkProductInfo::product_name, void (pkProductInfo::*)(const Text&));
INTERFACE_HAS(pkProductInfo::marketing_name, const Text& (pkProductInfo::*)() const);
INTERFACE_HAS(pkProductInfo::marketing_name, void (pkProductInfo::*)(const Text&));
INTERFACE_HAS(pkProductInfo::organization_name, const Text& (pkProductInfo::*)() const);
INTERFACE_HAS(pkProductInfo::organization_name, void (pkProductInfo::*)(const Text&));
INTERFACE_HAS(pkProductInfo::version, const Text& (pkProductInfo::*)() const);
INTERFACE_HAS(pkProductInfo::version, void (pkProductInfo::*)(const Text&));
INTERFACE_HAS(pkProductInfo::build_number, unsigned int (pkProductInfo::*)() const);
INTERFACE_HAS(pkProductInfo::build_number, void (pkProductInfo::*)(unsigned int));
INTERFACE_HAS(pkProductInfo::branch, const Text& (pkProductInfo::*)() const);
INTERFACE_HAS(pkProductInfo::branch, void (pkProductInfo::*)(const Text&));
INTERFACE_HAS(pkProductInfo::build_date, const Text& (pkProductInfo::*)() const);
INTERFACE_HAS(pkProductInfo::build_date, void (pkProductInfo::*)(const Text&));
INTERFACE_HAS(pkProductInfo::write_to_log, void (pkProductInfo::*)(std::ostream&) const);
INTERFACE_HAS(pkProductInfo::show_help, void (pkProductInfo::*)(const QString&));
INTERFACE_HAS(pkProductInfo::show_help_external, void (pkProductInfo::*)(const QString&));
INTERFACE_HAS(pkProductInfo::openHelp, void (pkProductInfo::*)(const QString&));
INTERFACE_HAS(pkProductInfo::openHelpExternal, void (pkProductInfo::*)(const QString&));

// The process

static_assert(!std::is_default_constructible_v<Environment>);
INTERFACE_HAS(Environment::putQEnv, bool (*)(const QByteArray&));
static_assert(!std::is_default_constructible_v<GDALErrorHandler>);
static_assert(std::is_same_v<GDALErrorHandler::Sink, void (*)(const Text&)>);
INTERFACE_HAS(GDALErrorHandler::instance, GDALErrorHandler& (*)());
INTERFACE_HAS(GDALErrorHandler::sink, void (GDALErrorHandler::*)(GDALErrorHandler::Sink));
INTERFACE_HAS(GDALErrorHandler::install, void (GDALErrorHandler::*)());
INTERFACE_HAS(GDALErrorHandler::restore, void (GDALErrorHandler::*)());
INTERFACE_HAS(GDALErrorHandler::restore_if_installed, void (*)());
INTERFACE_HAS(GDALErrorHandler::text, Text (*)(int, const char*));
INTERFACE_HAS(GDALErrorHandler::hand_over, void (*)(int, const char*));

// Widgets

static_assert(!std::is_default_constructible_v<QFinalPolish>);
INTERFACE_HAS(QFinalPolish::apply, void (*)(QWidget*));
static_assert(std::is_base_of_v<QProxyStyle, QPKProxyStyle>);
static_assert(std::is_default_constructible_v<QPKProxyStyle>);
static_assert(std::is_base_of_v<QPushButton, QPKHelpButton>);
static_assert(
    std::is_constructible_v<QPKHelpButton, QWidget*> && std::is_default_constructible_v<QPKHelpButton>);
static_assert(std::is_constructible_v<QPKHelpButton, const QString&, QWidget*>);
INTERFACE_HAS(QPKHelpButton::helpKey, const QString& (QPKHelpButton::*)() const);
INTERFACE_HAS(QPKHelpButton::setHelpKey, void (QPKHelpButton::*)(const QString&));
static_assert(std::is_base_of_v<QDialog, QPKAboutBox>);
static_assert(std::is_constructible_v<QPKAboutBox, const QString&>);
static_assert(std::is_constructible_v<QPKAboutBox, const QString&, QWidget*, const QString&>);
INTERFACE_HAS(QPKAboutBox::log_file, const QString& (QPKAboutBox::*)() const);
INTERFACE_HAS(QPKAboutBox::facts, QString (QPKAboutBox::*)() const);
INTERFACE_HAS(QPKAboutBox::copy_facts, void (QPKAboutBox::*)());
INTERFACE_HAS(QPKAboutBox::show_log_file, void (QPKAboutBox::*)());
static_assert(std::is_base_of_v<QWidget, QLogFileViewer>);
static_assert(!std::is_default_constructible_v<QLogFileViewer> && !std::is_destructible_v<QLogFileViewer>);
INTERFACE_HAS(QLogFileViewer::instance, QLogFileViewer& (*)());
INTERFACE_HAS(QLogFileViewer::path, const QString& (QLogFileViewer::*)() const);
INTERFACE_HAS(QLogFileViewer::setPath, void (QLogFileViewer::*)(const QString&));
INTERFACE_HAS(QLogFileViewer::text, QString (QLogFileViewer::*)() const);
INTERFACE_HAS(QLogFileViewer::present, void (QLogFileViewer::*)());
INTERFACE_HAS(QLogFileViewer::refresh, void (QLogFileViewer::*)());
INTERFACE_HAS(QLogFileViewer::find_next, void (QLogFileViewer::*)());
INTERFACE_HAS(QLogFileViewer::find_previous, void (QLogFileViewer::*)());
INTERFACE_HAS(QLogFileViewer::copy, void (QLogFileViewer::*)());
static_assert(QLogFileViewer::longest_text == 4 * 1024 * 1024);

template <class X>
QMetaMethod::MethodType type_of(const char* signature)
{
    const QMetaObject& meta_object = X::staticMetaObject;
    return meta_object.method(meta_object.indexOfMethod(signature)).methodType();
}

} // namespace

TEST(pkProductInfoInterface, HelpIsAskedForBySignals)
{
    EXPECT_EQ(QMetaMethod::Signal, type_of<pkProductInfo>("openHelp(QString)"));
    EXPECT_EQ(QMetaMethod::Signal, type_of<pkProductInfo>("openHelpExternal(QString)"));
}

TEST(QPKHelpButtonInterface, TopicIsAProperty)
{
    const QMetaObject& meta_object = QPKHelpButton::staticMetaObject;
    const QMetaProperty property = meta_object.property(meta_object.indexOfProperty("helpKey"));
    EXPECT_STREQ("QString", property.typeName());
    EXPECT_TRUE(property.isWritable());
}

TEST(QLogFileViewerInterface, SlotsAreKnownByTheirSignatures)
{
    for (const char* signature : {"refresh()", "find_next()", "find_previous()", "copy()"}) {
        EXPECT_EQ(QMetaMethod::Slot, type_of<QLogFileViewer>(signature)) << signature;
    }
}

TEST(QPKAboutBoxInterface, SlotsAreKnownByTheirSignatures)
{
    for (const char* signature : {"copy_facts()", "show_log_file()"}) {
        EXPECT_EQ(QMetaMethod::Slot, type_of<QPKAboutBox>(signature)) << signature;
    }
}
