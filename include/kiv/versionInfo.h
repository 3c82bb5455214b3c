#pragma once

#include "kiv/export.h"

namespace Kiv_v4 {

/// The version of the library, as built. In a process with the environment variable
/// `KORVANE_DUMP_VERSION_INFO` set to a number other than 0, loading the library writes the record
/// as one line to the standard error stream.
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

    /// The time when the library was first built from that commit; a build with uncommitted changes
    /// keeps it. Weekday, month/day/year, a comma, and yearmonthdayhourminute: `Sat 11/21/2026,
    /// 202611210946`.
    [[nodiscard]] static const char* getBuildDate() noexcept;
};

} // namespace Kiv_v4
