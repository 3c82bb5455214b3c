// Linked into the test programs, which so run in a host that writes numbers as Germans do. No text
// of the library may show it.

#include <clocale>
#include <locale>
#include <string>

namespace {

struct Comma : std::numpunct<char>
{
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

[[maybe_unused]] const bool isInstalled = [] {
    std::locale::global(std::locale(std::locale(), new Comma));
    return std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr; // where LOCPATH or the system has it
}();

} // namespace
