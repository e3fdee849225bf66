#include <tarqa/housekeeping/AbstractModelFactory.h>

#include <cstdio>

#include <sys/resource.h>

// A host that registers two of its factories under one name: it ends while it is loaded.

namespace {

using namespace tarqa::housekeeping;

class ModelFactory : public AbstractModelFactory
{
public:
    explicit ModelFactory(const char* name)
        : AbstractModelFactory(name, false)
    { }
    boost::shared_ptr<AbstractModel> create_product() override { return {}; }
    AbstractModel* create_unmanaged_product() override { return nullptr; }
};

/// The end is expected, so it leaves no image of the memory on the disk.
bool without_core_file()
{
    const rlimit nothing = {0, 0};
    return setrlimit(RLIMIT_CORE, &nothing) == 0;
}

const bool s_without_core_file = without_core_file();
const ModelFactory s_first("terrain");
const ModelFactory s_second(SECOND_NAME);

} // namespace

int main()
{
    std::printf("loaded %d\n", s_without_core_file ? 1 : 0);
    return 0;
}
