#include <tarqa/utilities/SystemPaths.h>

#include <cstdio>
#include <iostream>

/// Prints the installation root; with an argument it deletes itself before.
int main(int argc, char** argv)
{
    if (argc > 1 && std::remove(argv[0]) != 0) {
        return 1;
    }
    std::cout << tarqa::utilities::SystemPaths::installation_root_path();
    return 0;
}
