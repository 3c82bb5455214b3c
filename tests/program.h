#pragma once

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace test {

struct Result
{
    int status;
    std::string out;
    std::string err;
};

inline std::string contentOf(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

inline std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// Runs the host program as a user does: by command line, through a shell.
class Program : public testing::Test
{
protected:
    Program() { std::filesystem::create_directories(folder); }
    ~Program() override { std::filesystem::remove_all(folder); }

    /// Runs a shell command in which `kiv` is the program.
    Result shell(const std::string& command) const
    {
        const auto errors = folder / "errors";
        const auto whole =
            "kiv() { '" KIV_PROGRAM "' \"$@\"; }\n{ " + command + "\n} 2>'" + errors.string() + "'";
        std::string out;
        auto* pipe = ::popen(whole.c_str(), "r");
        std::array<char, 4096> piece;
        while (const auto size = std::fread(piece.data(), 1, piece.size(), pipe)) {
            out.append(piece.data(), size);
        }
        const auto status = ::pclose(pipe);
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, out, contentOf(errors)};
    }

    Result kiv(const std::string& arguments) const { return shell("kiv " + arguments); }

    /// The command run in a terminal of its own.
    Result onTerminal(const std::string& environment, const std::string& arguments) const
    {
        return shell("env " + environment + " TERM=xterm script -qec \"'" KIV_PROGRAM "' " +
                     arguments + "\" /dev/null");
    }

    const std::filesystem::path folder = std::filesystem::path(testing::TempDir()) /
                                         ("kiv_program_test_" + std::to_string(::getpid()));
    const std::string workshop = "'" KIV_EXAMPLES "/workshop.gltf'";
};

} // namespace test
