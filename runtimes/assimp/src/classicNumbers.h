#pragma once

#include <clocale>
#include <locale>
#include <string>

namespace Kiv_v4::assimp {

/// Has numbers read and written as the classic locale does, for as long as it lives, by the C
/// functions of the thread that made it and by C++ streams. Some importers misread numbers
/// otherwise, or never end.
class ClassicNumbers
{
public:
    ClassicNumbers();
    ClassicNumbers(const ClassicNumbers&) = delete;
    ClassicNumbers& operator=(const ClassicNumbers&) = delete;
    ~ClassicNumbers();

    /// Brings the host's locales back, until `resume`.
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
