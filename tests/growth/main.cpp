// Runs one operation on a whole scene, so that a tool that counts instructions can count those of
// the operation alone:
//
//     scene_growth                      the names of the operations that must stay linear
//     scene_growth OPERATION COUNT      runs one; it counts what happens between the two requests
//
// scripts/check-growth compares small scenes with large ones.

#include <cstdlib>
#include <exception>
#include <iostream>
#include <string_view>
#include <thread>
#include <valgrind/callgrind.h>

#include "sceneOperations.h"

namespace {

using namespace kivBench;

int list()
{
    for (const auto& operation : sceneOperations()) {
        if (operation.isLinear) {
            std::cout << operation.name << '\n';
        }
    }
    return EXIT_SUCCESS;
}

int run(std::string_view name, std::size_t count)
{
    for (const auto& operation : sceneOperations()) {
        if (operation.name == name) {
            const auto work = operation.prepare(count);
            CALLGRIND_START_INSTRUMENTATION;
            work->run();
            CALLGRIND_STOP_INSTRUMENTATION;
            return EXIT_SUCCESS;
        }
    }
    std::cerr << "no such operation '" << name << "'\n";
    return EXIT_FAILURE;
}

} // namespace

int main(int argc, char** argv)
{
    std::thread([] {}).join(); // as in a host: references are counted with atomic operations
    try {
        return argc == 3 ? run(argv[1], std::stoul(argv[2])) : list();
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
