#include "classicNumbers.h"

namespace Kiv_v4::assimp {

namespace {

bool isClassic(const std::numpunct<char>& numbers)
{
    return numbers.decimal_point() == '.' && numbers.grouping().empty();
}

/// The locale `hosts` with the numbers of the classic locale. The facet leaves it without a name: a
/// named one would change the C library's locale for the whole program.
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

// C++ streams take the global locale when they are constructed, and it belongs to the whole
// program: so it only changes if its numbers are different, and only in these.
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
        std::locale::global(_hosts); // also sets the C library's if it has a name
        std::setlocale(LC_ALL, _hostsOfProgram.c_str());
    }
}

} // namespace Kiv_v4::assimp
