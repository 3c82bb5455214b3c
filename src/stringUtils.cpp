#include "kiv/stringUtils.h"

#include "detail/splitting.h"

namespace Kiv_v4 {

namespace {

template <class Separator>
std::vector<std::string> pieces(const std::string& s, const Separator& separator)
{
    std::vector<std::string> result;
    detail::forEachPiece(s, separator, [&](std::string_view piece) { result.emplace_back(piece); });
    return result;
}

} // namespace

std::string lstrip(std::string s, char c)
{
    s.erase(0, s.size() - detail::lstripped(s, c).size());
    return s;
}

std::vector<std::string> split(const std::string& s, char c)
{
    return pieces(s, c);
}

std::vector<std::string> split(const std::string& s, const std::string& separator)
{
    return pieces(s, std::string_view(separator));
}

bool endsWith(const std::string& s, const std::string& suffix)
{
    return std::string_view(s).ends_with(suffix);
}

} // namespace Kiv_v4
