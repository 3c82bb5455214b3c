#include <nanobind/nanobind.h>
#include <nanobind/stl/function.h>
#include <nanobind/stl/string.h>
#include <nanobind/stl/vector.h>
#include <stdexcept>

#include "cli/commandLine.h"
#include "running.h"

// The program in the process of the interpreter, where it shows what Python registered.

namespace {

namespace nb = nanobind;
using namespace nanobind::literals;

/// Returns what `work` does in Python; what that raises becomes the reason alone.
template <class Work>
auto asked(const Work& work)
{
    try {
        return work();
    } catch (nb::python_error& error) {
        throw std::runtime_error(nb::cast<std::string>(nb::str(nb::borrow(error.value()))));
    }
}

int run(std::vector<std::string> words, std::function<bound::MadeInPython(std::string)> open,
        std::function<bool(std::string)> isSource,
        std::function<int(std::vector<std::string>)> showWindow)
{
    std::vector<char*> arguments;
    for (auto& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    app::Surroundings python;
    python.openInPython = [&](const std::string& source) {
        return asked([&] { return bound::running(open(source)); });
    };
    python.isForPython = isSource;
    python.showWindow = [&](const auto& files) { return asked([&] { return showWindow(files); }); };
    return app::runProgram(static_cast<int>(words.size()), arguments.data(), python);
}

} // namespace

NB_MODULE(_program, module)
{
    module.def("run", &run, "words"_a, "open"_a, "is_source"_a, "show_window"_a,
               "Runs the program as the words of the command line tell, the first of which is its "
               "name. Returns the exit status.");
}
