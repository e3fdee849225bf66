#include "BatchProcess.h"
#include "BusyHook.h"
#include "CommandFixture.h"
#include "RasterFiles.h"
#include "batch/Batch.h"
#include "batch/System.h"
#include "documents/TerrainDocument.h"
#include "io/RasterReader.h"
#include "support/LogCapture.h"

#include <tarqa/housekeeping/DocumentManager.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <sstream>

using namespace host_test;
using testing::HasSubstr;

namespace {

void interrupt(BatchProcess& batch)
{
    kill(static_cast<pid_t>(batch.process().processId()), SIGINT);
}

} // namespace

TEST(TerrainBatchInterrupt, EndsTheScriptBeforeTheNextLine)
{
    BatchProcess batch;
    batch.start({"--batch", "-", make_terrain_file("a.tif")});
    batch.type("info\n");
    ASSERT_TRUE(batch.wait_for("checksum: "));
    interrupt(batch);
    batch.type("smooth 1\nsmooth 2\n");
    EXPECT_EQ(batch.finish(), 130);
    EXPECT_EQ(lines_with(batch.out(), "DO>\tSmooth: radius 2").size(), 0u);
    EXPECT_THAT(batch.out(), HasSubstr("error log: "));
}

TEST(TerrainBatchInterrupt, EndsALongScript)
{
    BatchProcess sample;
    sample.start(TARQ_TERRAIN_SAMPLE, {scratch("a.tif"), "--size", "400"});
    ASSERT_EQ(sample.finish(), 0) << sample.error();
    std::string script;
    for (int i = 0; i < 10000; ++i) {
        script += "smooth 3\n";
    }
    write_text(scratch("script.batch"), script);

    BatchProcess batch;
    batch.start({"--batch", scratch("script.batch"), scratch("a.tif")});
    ASSERT_TRUE(batch.wait_for("DO>\tSmooth"));
    interrupt(batch);
    EXPECT_EQ(batch.finish(), 130);
    // Whichever step it came in: at most that one was cut off, and the log was ended in order.
    EXPECT_LE(lines_with(batch.out(), "DO>\tSmooth: radius 3 - Failed.").size(), 1u);
    EXPECT_THAT(batch.log(), HasSubstr("************** END OF ERROR LOG ***************\n"));
}

TEST(TerrainBatchInterrupt, CancelsTheRunningCommandAndRollsItBack)
{
    for (const char* instruction : {"smooth 1", "clean-up"}) {
        const std::string file = make_terrain_file("a.tif");
        write_text(scratch("script.batch"), std::string(instruction) + "\nscale 2\n");
        std::ostringstream out;
        std::ostringstream error;
        support::LogCapture log;
        terrain::watch_signals();
        terrain::Batch batch(out, error, nullptr);
        const BusyHook hook([] { std::raise(SIGINT); });
        EXPECT_EQ(batch.run(scratch("script.batch"), {file}), terrain::Batch::Interrupted);
        EXPECT_EQ(error.str(), scratch("script.batch") + ":1: cancelled\n");
        EXPECT_THAT(out.str(), HasSubstr(" - Failed.\n"));
        const auto& document = dynamic_cast<const terrain::TerrainDocument&>(
            housekeeping::DocumentManager::instance().current_document());
        EXPECT_EQ(bits(document), bits(terrain::read_raster(file).cells));
        log.take_all();
    }
}
