#include "kiv/conformance/failingAllocations.h"

#include "cli/commandLine.h"

int main(int argc, char** argv)
{
    return app::runProgram(argc, argv,
                           {.allocationFaults = Kiv_v4::conformance::failingAllocations()});
}
