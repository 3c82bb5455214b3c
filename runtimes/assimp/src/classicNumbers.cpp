#include "classicNumbers.h"

namespace Kiv_v4::assimp {

namespace {

bool isClassic(const std::numpunct<char>& numbers)
{
    return numbers.decimal_point() == '.' && numbers.grouping().empty();
}

/// The numbers of the classic locale, everything else of `hosts`. The facet leaves it without a
/// name: with one, the C library's locale would change for the whole program.
std::locale withClassicNumbers(const std::locale& hosts)
{
    const std::locale named(hosts, std::locale::classic(), std::locale::numeric);
    return {named, new std::numpunct<char>};
}

} // namespace

ClassicNumbers::ClassicNumbers() : _classic(newlocale(LC_ALL_MASK, "C", nullptr))
{
    resume();
}

ClassicNumbers::~ClassicNumbers()
{
    pause();
    freelocale(_classic);
}

// C++ streams take the global locale when they are constructed, and it is the whole program's: so
// it is left alone unless its numbers are different, and only these are replaced.
void ClassicNumbers::resume()
{
    _hosts = _installed = std::locale();
    if (!isClassic(std::use_facet<std::numpunct<char>>(_hosts))) {
        _hostsOfProgram = std::setlocale(LC_ALL, nullptr);
        _installed = withClassicNumbers(_hosts);
        std::locale::global(_installed);
    }
    _hostsOfThread = uselocale(_classic);
}

void ClassicNumbers::pause()
{
    uselocale(_hostsOfThread);
    if (_installed != _hosts && std::locale() == _installed) {
        std::locale::global(_hosts); // when it has a name, sets the C library's too
        std::setlocale(LC_ALL, _hostsOfProgram.c_str());
    }
}

} // namespace Kiv_v4::assimp
