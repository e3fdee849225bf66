#include "Corpus.h"
#include "Targets.h"

#include <gtest/gtest.h>

TEST(FuzzCorpus, BatchScript)
{
    fuzz::run_corpus("batch_script", &fuzz::batch_script);
}

TEST(FuzzCorpus, Raster)
{
    fuzz::run_corpus("raster", &fuzz::raster);
}
