#include "support/LogCapture.h"
#include "support/StartedApplication.h"

#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>

#include <pkBase/pkDestructor.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTranslator>

#include <gtest/gtest.h>

// docs/translations.md

using tarqa::housekeeping::ApplicationManager;
using tarqa::housekeeping::ControllerManager;

namespace {

QString translated_undo(int& argc, char** argv)
{
    //! [load]
    ApplicationManager::instance().init(argc, argv, "my-host", true);
    QTranslator library;
    QTranslator own;
    library.load(":/housekeeping/translations/tq_hk_de.qm");
    own.load(":/my-host/my-host_de.qm");
    QCoreApplication::installTranslator(&library);
    QCoreApplication::installTranslator(&own);
    ControllerManager::instance().init(); // from here on texts are made
    //! [load]
    return tarqa::housekeeping::gui::UndoRedoPresentation::tr("Undo");
}

} // namespace

TEST(TranslationsGuide, LoadsTheLibrarysTexts)
{
    support::LogCapture log;
    char name[] = "program";
    char* arguments[] = {name, nullptr};
    int count = 1;
    EXPECT_EQ(translated_undo(count, arguments), QString::fromUtf8("Rückgängig"));
    support::take_start_up_lines(log);
    pkBase::pkDestructor::run();
}
