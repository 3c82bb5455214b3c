#include <benchmark/benchmark.h>
#include <thread>

/// Runs what the program's other files registered.
int main(int argc, char** argv)
{
    // The C++ library counts references without atomic operations until the first thread starts.
    // Every host has threads, so every figure is measured with one.
    std::thread([] {}).join();

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
