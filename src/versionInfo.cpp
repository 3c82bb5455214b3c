#include "kiv/versionInfo.h"

#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <sstream>

#include "versionStamp.h"

namespace Kiv_v4 {

int VersionInfo::getMajorVersion() noexcept
{
    return 4;
}
int VersionInfo::getMinorVersion() noexcept
{
    return 2;
}
int VersionInfo::getPatchLevel() noexcept
{
    return 0;
}
int VersionInfo::getBuildNumber() noexcept
{
    return 34;
}
const char* VersionInfo::getGitCommit() noexcept
{
    return KIV_BUILD_COMMIT;
}
const char* VersionInfo::getGitBranch() noexcept
{
    return KIV_BUILD_BRANCH;
}
const char* VersionInfo::getBuildDate() noexcept
{
    return KIV_BUILD_DATE;
}

namespace {

std::string versionLine()
{
    std::ostringstream line;
    line << std::setw(16) << "kiv"
         << ": "
         << "kiv version " << VersionInfo::getMajorVersion() << '.'
         << VersionInfo::getMinorVersion() << '.' << VersionInfo::getPatchLevel() << " ("
         << VersionInfo::getBuildDate() << ", build " << VersionInfo::getBuildNumber()
         << ", commit " << VersionInfo::getGitCommit() << ", branch " << VersionInfo::getGitBranch()
         << ")\n";
    return line.str();
}

[[maybe_unused]] const bool dumpedOnRequest = [] {
    const auto* wanted = std::getenv("KORVANE_DUMP_VERSION_INFO");
    const auto dump = wanted && std::atoi(wanted) != 0;
    if (dump) {
        std::cerr << versionLine() << std::flush;
    }
    return dump;
}();

} // namespace

} // namespace Kiv_v4
