#include "fileReplacement.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace app {

namespace {

namespace fs = std::filesystem;

/// Throws the reason of the system call that just failed, unless it did not.
void require(bool succeeded)
{
    if (!succeeded) {
        throw std::runtime_error(std::strerror(errno));
    }
}

/// The mode for the content of `file`: the one that it has, or that of any new file.
mode_t modeFor(const fs::path& file)
{
    struct stat status = {};
    if (::stat(file.c_str(), &status) == 0) {
        if (!S_ISREG(status.st_mode)) {
            throw std::runtime_error(S_ISDIR(status.st_mode) ? "is a directory"
                                                             : "is not a regular file");
        }
        return status.st_mode & 07777;
    }
    require(errno == ENOENT);
    const auto mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

/// A new file beside another, which is removed unless it took the place of that.
class NewFile
{
public:
    explicit NewFile(const fs::path& beside)
    {
        constexpr std::size_t kLongest = 200; // leaves room for what is added
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

    void write(std::string_view content, mode_t mode)
    {
        while (!content.empty()) {
            const auto written = ::write(_descriptor, content.data(), content.size());
            require(written >= 0 || errno == EINTR);
            content.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
        }
        require(::fchmod(_descriptor, mode) == 0);
        require(::fsync(_descriptor) == 0);
        require(::close(std::exchange(_descriptor, -1)) == 0);
    }

    void replace(const fs::path& file)
    {
        require(std::rename(_path.c_str(), file.c_str()) == 0);
        _path.clear();
    }

private:
    std::string _path;
    int _descriptor = -1;
};

/// Lets the new name of a file survive a crash of the machine, where the file system can. The file
/// is in place, so that a failure is none of the saving.
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
    const auto mode = modeFor(target);
    NewFile replacement(target);
    replacement.write(content, mode);
    replacement.replace(target);
    settle(target.parent_path());
}

} // namespace app
