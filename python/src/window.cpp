#include <nanobind/nanobind.h>
#include <nanobind/stl/string.h>
#include <nanobind/stl/vector.h>

#include "windowProgram.h"

// The window in the process of the interpreter, where it shows what Python registered.

NB_MODULE(_window, module)
{
    module.def(
        "run",
        [](std::vector<std::string> words) {
            std::vector<char*> arguments;
            for (auto& word : words) {
                arguments.push_back(word.data());
            }
            const auto count = static_cast<int>(arguments.size());
            arguments.push_back(nullptr);
            return window::runProgram(count, arguments.data());
        },
        nanobind::arg("words"),
        "Runs the window as the command line tells, until it is closed. Returns the exit code.");
}
