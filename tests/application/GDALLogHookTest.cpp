#include "Probe.h"
#include "support/LogCapture.h"
#include "support/PrivateHome.h"
#include "support/StartedApplication.h"

#include <cpl_conv.h>
#include <cpl_error.h>
#include <gdal_priv.h>
#include <ogr_spatialref.h>
#include <ogrsf_frmts.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <memory>
#include <string>
#include <thread>

using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// A started application whose log is looked at.
class GDALLogHook : public testing::Test
{
protected:
    GDALLogHook() { GDALAllRegister(); }
    ~GDALLogHook() override { log.take_all(); }

    const support::StartedApplication started;
    support::LogCapture log;
};

std::string option(const char* name)
{
    return CPLGetConfigOption(name, "(unset)");
}

} // namespace

TEST_F(GDALLogHook, MissingFileIsAFailure)
{
    EXPECT_EQ(GDALOpen("/no/such/file.tif", GA_ReadOnly), nullptr);
    EXPECT_THAT(log.text(), StartsWith("CE_Failure: "));
    EXPECT_THAT(log.text(), HasSubstr("/no/such/file.tif"));
    EXPECT_EQ(log.lines().size(), 1u);
}

TEST_F(GDALLogHook, ClassStandsBeforeTheMessage)
{
    CPLError(CE_None, CPLE_AppDefined, "%s", "none");
    CPLError(CE_Debug, CPLE_AppDefined, "%s", "debug");
    CPLError(CE_Warning, CPLE_AppDefined, "%s", "warning");
    CPLError(CE_Failure, CPLE_AppDefined, "%s", "failure");
    EXPECT_EQ(log.text(), "CE_None: none\nCE_Debug: debug\nCE_Warning: warning\nCE_Failure: failure\n");
}

TEST_F(GDALLogHook, DebugMessagesAreTakenToo)
{
    CPLSetConfigOption("CPL_DEBUG", "TEST");
    CPLDebug("TEST", "message");
    EXPECT_THAT(log.text(), StartsWith("CE_Debug: "));
    EXPECT_THAT(log.text(), HasSubstr("message\n"));
}

TEST_F(GDALLogHook, PercentSignsStandAsTheyAre)
{
    CPLError(CE_Warning, CPLE_AppDefined, "%s", "100%1 %2 %n %%");
    EXPECT_EQ(log.text(), "CE_Warning: 100%1 %2 %n %%\n");
}

TEST_F(GDALLogHook, TakesMessagesOfWorkerThreads)
{
    std::thread([] { CPLError(CE_Failure, CPLE_AppDefined, "%s", "from a worker"); }).join();
    EXPECT_EQ(log.text(), "CE_Failure: from a worker\n");
}

TEST_F(GDALLogHook, PrintsNothing)
{
    testing::internal::CaptureStderr();
    CPLError(CE_Failure, CPLE_AppDefined, "%s", "failure");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(GDALLogHook, EsriReferenceSystemsAreRepairedInAllThreads)
{
    EXPECT_EQ(option("GDAL_FIX_ESRI_WKT"), "TOWGS84");
    std::string in_worker;
    std::thread([&in_worker] { in_worker = option("GDAL_FIX_ESRI_WKT"); }).join();
    EXPECT_EQ(in_worker, "TOWGS84");
}

TEST_F(GDALLogHook, ReferenceSystemsCanBeLookedUp)
{
    OGRSpatialReference geographic;
    OGRSpatialReference luxembourg;
    geographic.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    luxembourg.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    ASSERT_EQ(geographic.importFromEPSG(4326), OGRERR_NONE);
    ASSERT_EQ(luxembourg.importFromEPSG(2169), OGRERR_NONE);
    const std::unique_ptr<OGRCoordinateTransformation> transformation(
        OGRCreateCoordinateTransformation(&geographic, &luxembourg));
    ASSERT_NE(transformation, nullptr);
    double x = 6.1319;
    double y = 49.6116;
    ASSERT_TRUE(transformation->Transform(1, &x, &y));
    EXPECT_NEAR(x, 77400, 300);
    EXPECT_NEAR(y, 75300, 300);
    EXPECT_EQ(log.text(), "");
}

TEST_F(GDALLogHook, DrawingsCanBeWritten)
{
    const std::string file = support::PrivateHome::scratch_directory() + "/drawing.dxf";
    GDALDriver* const p_driver = GetGDALDriverManager()->GetDriverByName("DXF");
    ASSERT_NE(p_driver, nullptr);
    {
        GDALDatasetUniquePtr drawing(p_driver->Create(file.c_str(), 0, 0, 0, GDT_Unknown, nullptr));
        ASSERT_NE(drawing, nullptr);
        OGRLayer* const p_layer = drawing->CreateLayer("entities");
        ASSERT_NE(p_layer, nullptr);
        OGRFeatureUniquePtr feature(OGRFeature::CreateFeature(p_layer->GetLayerDefn()));
        OGRPoint point(1, 2, 3);
        feature->SetGeometry(&point);
        EXPECT_EQ(p_layer->CreateFeature(feature.get()), OGRERR_NONE);
    }
    const GDALDatasetUniquePtr read(GDALDataset::Open(file.c_str(), GDAL_OF_VECTOR));
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->GetLayer(0)->GetFeatureCount(), 1);
    EXPECT_EQ(log.text(), "");
}

TEST(GDALFatalMessage, IsLoggedBeforeTheLibraryEndsTheProgram)
{
    Probe probe;
    ASSERT_TRUE(probe.start({"--gdal-fatal"})) << probe.error();
    EXPECT_EQ(probe.wait_for_signal(), SIGABRT);
    EXPECT_THAT(probe.entries(), HasSubstr("\nCE_Fatal: the end\n"));
}

TEST(GDALFatalMessage, HandlerDoesNotEndTheProcess)
{
    const support::StartedApplication started;
    support::LogCapture log;
    const CPLErrorHandler handler = CPLSetErrorHandler(nullptr);
    CPLSetErrorHandler(handler);
    handler(CE_Fatal, CPLE_AppDefined, "the end");
    EXPECT_EQ(log.text(), "CE_Fatal: the end\n");
    log.take_all();
}
