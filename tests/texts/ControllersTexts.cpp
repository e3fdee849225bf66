#include "texts/Texts.h"

#include "support/EmptyRegistry.h"
#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/ProgressBarsController.h>
#include <tarqa/housekeeping/QmlButtonController.h>
#include <tarqa/housekeeping/TimerObject.h>

#include <QtCore/QMetaMethod>
#include <QtCore/QMetaProperty>

#include <regex>

// The texts of controllers, their manager, the timing report and the ready-made controllers.

using namespace tarqa::housekeeping;

namespace {

// Assertions

class Named : public AbstractController
{
public:
    Named() { controller_name("alpha"); }
};

void ask_for_a_missing_name()
{
    const AbstractController controller;
    controller.controller_name();
}

void name_twice()
{
    Named controller;
    controller.controller_name("beta");
}

void give_the_reserved_name()
{
    AbstractController controller;
    controller.controller_name("AbstractController");
}

void look_up_before_init()
{
    ControllerManager::instance().controller("alpha");
}

void look_up_what_there_is_not()
{
    const support::EmptyRegistry<AbstractControllerFactory> empty;
    support::register_controller("beta");
    ControllerManager::instance().init();
    ControllerManager::instance().controller("alpha");
}

void init_twice()
{
    const support::EmptyRegistry<AbstractControllerFactory> empty;
    support::register_controller("alpha");
    ControllerManager::instance().init();
    ControllerManager::instance().init();
}

/// Each line of the error log that @p action writes, as @p replacement says.
std::string logged(void (*action)(), const char* replacement)
{
    support::LogCapture log;
    action();
    const std::regex format("(.*):([0-9]+) ASSERT FAILED in (.*?): (.*)\n");
    const std::string text = std::regex_replace(log.text(), format, replacement);
    log.take_all();
    return text;
}

std::function<std::string()> condition(void (*action)())
{
    return [action] { return logged(action, "$4;"); };
}

std::function<std::string()> source(void (*action)())
{
    return [action] { return logged(action, "$1;"); };
}

// Names

std::string name_before_it_is_given()
{
    support::LogCapture log;
    std::string name = AbstractController().controller_name();
    log.take_all();
    return name;
}

std::string product_of_progress_bars()
{
    for (const std::string& name : AbstractControllerFactory::products()) {
        if (boost::dynamic_pointer_cast<ProgressBarsController>(AbstractControllerFactory::create(name))) {
            return name;
        }
    }
    return "none";
}

std::string name_of_progress_bars()
{
    ControllerManager::instance().init();
    return ControllerManager::instance().controller("ProgressBarsController")->controller_name();
}

// The report

/// What a task that began an hour ago, or in an hour of yesterday, reports; its numbers are left out.
std::string report(const QString& task, const std::vector<const char*>& steps)
{
    support::LogCapture log;
    {
        TimerObject timer(task);
        TestAccess::start(timer, QTime::currentTime().addSecs(-3600));
        for (const char* const step : steps) {
            timer.addStep(step);
        }
    }
    const std::regex number("(in |mean |\\()[0-9][0-9.e+-]*");
    const std::string text = std::regex_replace(log.text(), number, "$1#");
    log.take_all();
    return text;
}

std::string timing(int milliseconds, qint64 nanoseconds, int count)
{
    return TestAccess::timing_report("Import", milliseconds, {{"read", nanoseconds, count}}).toStdString();
}

// The button as a scene sees it

std::string properties()
{
    const QMetaObject& meta = QmlButtonController::staticMetaObject;
    std::string text;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        text += std::string(property.typeName()) + ' ' + property.name() + ' '
            + property.notifySignal().methodSignature().toStdString() + ';';
    }
    return text;
}

std::string signatures()
{
    const QMetaObject& meta = QmlButtonController::staticMetaObject;
    std::string text;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        if (meta.method(i).methodType() == QMetaMethod::Signal) {
            text += meta.method(i).methodSignature().toStdString() + ';';
        }
    }
    return text;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Controllers, Texts,
    testing::ValuesIn(std::vector<texts::Row>{
        {"MissingName", "m_controller_name != \"AbstractController\";", condition(ask_for_a_missing_name)},
        {"SecondName", "m_controller_name == \"AbstractController\";", condition(name_twice)},
        {"ReservedName", "m_controller_name != \"AbstractController\";", condition(give_the_reserved_name)},
        {"LookUpBeforeInit", "m_controller_map.size() > 0;iter != m_controller_map.end();",
            condition(look_up_before_init)},
        {"UnknownController", "iter != m_controller_map.end();", condition(look_up_what_there_is_not)},
        {"ControllerMadeTwice", "inserted;", condition(init_twice)},
        {"SourceOfMissingName", "housekeeping/src/AbstractController;", source(ask_for_a_missing_name)},
        {"SourceOfSecondName", "housekeeping/src/AbstractController;", source(name_twice)},
        {"SourceOfUnknownController", "housekeeping/src/ControllerManager;",
            source(look_up_what_there_is_not)},
        {"SourceOfControllerMadeTwice", "housekeeping/src/ControllerManager;", source(init_twice)},
        {"NameBeforeItIsGiven", "AbstractController", name_before_it_is_given},
        {"ProductOfProgressBars", "ProgressBarsController", product_of_progress_bars},
        {"NameOfProgressBars", "ProgressBarsController", name_of_progress_bars},
        {"ReportWithoutSteps", "Task Import (# ms total)\n", [] { return report("Import", {}); }},
        {"ReportOfAStep", "Task Import (# ms total)\n  1. read in # ms (#%)\n",
            [] { return report("Import", {"read"}); }},
        {"ReportOfRepeatedSteps",
            "Task Import (# ms total)\n  1. read in # ms (#%, mean # µs)\n  2. index in # ms (#%)\n",
            [] {
                return report("Import", {"read", "index", "read"});
            }},
        {"TimesOfAStep", "Task Import (200 ms total)\n  1. read in 50 ms (25.00%)",
            [] { return timing(200, 50000000, 1); }},
        {"TimesOfARepeatedStep",
            "Task Import (3000 ms total)\n  1. read in 1234.57 ms (41.15%, mean 617284 µs)",
            [] { return timing(3000, 1234567890, 2); }},
        {"ButtonProperties", "bool visible visibleChanged(bool);QRectF geometry geometryChanged(QRectF);",
            properties},
        {"ButtonSignals", "visibleChanged(bool);geometryChanged(QRectF);clicked();", signatures},
    }),
    texts::name_of);
