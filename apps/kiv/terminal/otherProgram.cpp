#include "terminal/otherProgram.h"

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <unistd.h>

namespace app {

void become(std::vector<std::string> words, const std::string& advice)
{
    std::vector<char*> arguments;
    for (auto& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    ::execvp(arguments.front(), arguments.data());
    throw std::runtime_error(words.front() + ": " + std::strerror(errno) + " (" + advice + ")");
}

} // namespace app
