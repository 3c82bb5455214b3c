#pragma once

#include "kiv/export.h"

namespace Kiv_v4 {

/// Which library this is, as built. A process with the environment variable
/// `KORVANE_DUMP_VERSION_INFO` set to a number other than 0 gets the record as one line on the
/// standard error stream when the library is loaded.
class KIV_EXPORT VersionInfo
{
public:
    VersionInfo() = delete;

    /// The numbers of the version, major.minor.patch, and of the build.
    [[nodiscard]] static int getMajorVersion() noexcept;
    [[nodiscard]] static int getMinorVersion() noexcept;
    [[nodiscard]] static int getPatchLevel() noexcept;
    [[nodiscard]] static int getBuildNumber() noexcept;

    /// 40 hexadecimal digits; all 0 in a build from sources without their history.
    [[nodiscard]] static const char* getGitCommit() noexcept;

    /// "unknown" in a build from sources without their history, "HEAD" for a detached checkout.
    [[nodiscard]] static const char* getGitBranch() noexcept;

    /// When the library was first built from that commit; a build that follows changes not
    /// committed yet keeps it. Weekday, month/day/year, a comma, and yearmonthdayhourminute: `Sat
    /// 11/21/2026, 202611210946`.
    [[nodiscard]] static const char* getBuildDate() noexcept;
};

} // namespace Kiv_v4
