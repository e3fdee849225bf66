#include "Corpus.h"
#include "Targets.h"

#include <gtest/gtest.h>

TEST(FuzzCorpus, DataSource)
{
    fuzz::run_corpus("data_source", &fuzz::data_source);
}

TEST(FuzzCorpus, RecentDocuments)
{
    fuzz::run_corpus("recent_documents", &fuzz::recent_documents);
}

TEST(FuzzCorpus, Settings)
{
    fuzz::run_corpus("settings", &fuzz::settings);
}

TEST(FuzzCorpus, Panels)
{
    fuzz::run_corpus("panels", &fuzz::panels);
}
