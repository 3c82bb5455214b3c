#include "kiv/document/fileReplacement.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>
#include <utility>

namespace Kiv_v4::document {

namespace {

namespace fs = std::filesystem;

/// Throws `std::runtime_error` with the system's reason if `succeeded` is false.
void require(bool succeeded)
{
    if (!succeeded) {
        throw std::runtime_error(std::strerror(errno));
    }
}

constexpr auto kOfNewFile = static_cast<uid_t>(-1); ///< The owner and group of a new file.

/// The access rights of a file.
struct Access
{
    uid_t owner;
    gid_t group;
    mode_t mode;
};

/// The access to `file`, which must be open to writing by this program, or to any new one.
Access accessFor(const fs::path& file)
{
    struct stat status = {};
    if (::stat(file.c_str(), &status) == 0) {
        if (!S_ISREG(status.st_mode)) {
            throw std::runtime_error(S_ISDIR(status.st_mode) ? "is a directory"
                                                             : "is not a regular file");
        }
        require(::faccessat(AT_FDCWD, file.c_str(), W_OK, AT_EACCESS) == 0);
        return {status.st_uid, status.st_gid, status.st_mode & 07777};
    }
    require(errno == ENOENT);
    const auto mask = ::umask(0);
    ::umask(mask);
    return {kOfNewFile, kOfNewFile, 0666 & ~mask};
}

/// A new file beside another, which is removed unless it took the place of that.
class NewFile
{
public:
    explicit NewFile(const fs::path& beside)
    {
        constexpr std::size_t kLongest = 200; // leaves room for the suffix
        auto name = "." + beside.filename().string().substr(0, kLongest) + ".XXXXXX";
        _path = (beside.parent_path() / name).string();
        _descriptor = ::mkostemp(_path.data(), O_CLOEXEC);
        require(_descriptor >= 0);
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile()
    {
        if (_descriptor >= 0) {
            ::close(_descriptor);
        }
        if (!_path.empty()) {
            ::unlink(_path.c_str());
        }
    }

    void write(std::string_view content, const Access& access)
    {
        while (!content.empty()) {
            const auto written = ::write(_descriptor, content.data(), content.size());
            require(written >= 0 || errno == EINTR);
            content.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
        }
        give(access);
        require(::fsync(_descriptor) == 0);
        require(::close(std::exchange(_descriptor, -1)) == 0);
    }

    void replace(const fs::path& file)
    {
        require(std::rename(_path.c_str(), file.c_str()) == 0);
        _path.clear();
    }

private:
    /// Sets owner and group as far as that is allowed, then the mode, which a change of them
    /// resets.
    void give(const Access& access) const
    {
        std::ignore = ::fchown(_descriptor, access.owner, access.group) == 0 ||
                      ::fchown(_descriptor, kOfNewFile, access.group) == 0;
        require(::fchmod(_descriptor, access.mode) == 0);
    }

    std::string _path;
    int _descriptor = -1;
};

/// Makes the new name of a file survive a crash of the machine, if the file system can. The file is
/// in place, so a failure here does not fail the saving.
void settle(const fs::path& folder)
{
    const auto descriptor = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor >= 0) {
        ::fsync(descriptor);
        ::close(descriptor);
    }
}

} // namespace

fs::path linkTarget(const fs::path& file)
{
    auto target = file;
    std::error_code none;
    for (auto left = 40; fs::is_symlink(target, none); --left) {
        if (left == 0) {
            throw std::runtime_error(std::strerror(ELOOP));
        }
        target = target.parent_path() / fs::read_symlink(target);
    }
    return target;
}

void replaceFile(const std::string& file, std::string_view content)
{
    const auto target = linkTarget(file);
    const auto access = accessFor(target);
    NewFile replacement(target);
    replacement.write(content, access);
    replacement.replace(target);
    settle(target.parent_path());
}

} // namespace Kiv_v4::document
