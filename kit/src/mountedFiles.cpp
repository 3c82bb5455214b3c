#include <stdexcept>
#include <utility>

#include "kiv/kit/mounts.h"

namespace Kiv_v4::kit {

namespace {

/// What makes the mount of a file.
using Read = std::function<Mount::Ptr(const std::string& file)>;

/// What looks for the mount under a gateway.
using Find = std::function<Mount::Ptr(const Path& gateway)>;

class MountedFiles : public SceneFileHandler
{
public:
    MountedFiles(std::shared_ptr<MountTable> mounts, Find find, std::vector<std::string> suffixes,
                 Read read)
        : _mounts(std::move(mounts)), _find(std::move(find)), _suffixes(std::move(suffixes)),
          _read(std::move(read))
    {}

    [[nodiscard]] std::vector<std::string> suffixes() const override { return _suffixes; }

    [[nodiscard]] Mounting read(const std::string& file, const Progress&) override
    {
        // What was read serves the first gateway; the others get what is read anew.
        return [mounts = _mounts, read = _read, file,
                first = readMount(_read, file)](const Path& gateway) mutable {
            auto mount = std::exchange(first, nullptr);
            return mounts->mountCmd(mount ? mount : readMount(read, file), gateway,
                                    "Mount " + file);
        };
    }

    [[nodiscard]] std::string file(const Path& gateway) const override
    {
        const auto mount = _find(gateway);
        return mount ? mount->fileName : std::string();
    }

private:
    static Mount::Ptr readMount(const Read& read, const std::string& file)
    {
        auto mount = read(file);
        if (!mount) {
            throw std::runtime_error("there is nothing to show");
        }
        mount->fileName = file;
        return mount;
    }

    const std::shared_ptr<MountTable> _mounts;
    const Find _find;
    const std::vector<std::string> _suffixes;
    const Read _read;
};

} // namespace

SceneFileHandler::Ptr MountTable::fileHandler(const std::shared_ptr<MountTable>& mounts,
                                              std::vector<std::string> suffixes, Read read)
{
    const auto find = [mounts](const Path& gateway) { return mounts->find(gateway); };
    return std::make_shared<MountedFiles>(mounts, find, std::move(suffixes), std::move(read));
}

} // namespace Kiv_v4::kit
