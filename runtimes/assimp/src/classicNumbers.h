#pragma once

#include <clocale>
#include <locale>
#include <string>

namespace Kiv_v4::assimp {

/// While it lives, the C functions of the thread that made it and C++ streams read and write
/// numbers as in the classic locale. Otherwise some importers misread numbers, or never end.
class ClassicNumbers
{
public:
    ClassicNumbers();
    ClassicNumbers(const ClassicNumbers&) = delete;
    ClassicNumbers& operator=(const ClassicNumbers&) = delete;
    ~ClassicNumbers();

    /// Restores the host's locales, until `resume`.
    void pause();
    void resume();

private:
    const locale_t _classic;
    locale_t _hostsOfThread{};
    std::locale _hosts;
    std::locale _installed;
    std::string _hostsOfProgram;
};

} // namespace Kiv_v4::assimp
