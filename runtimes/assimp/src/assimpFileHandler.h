#pragma once

#include <memory>
#include <utility>

#include "kiv/sceneFileHandler.h"

#include "assimpMounts.h"

namespace Kiv_v4::assimp {

/// Lets hosts mount files of all formats that the importer knows.
class AssimpFileHandler : public SceneFileHandler
{
public:
    explicit AssimpFileHandler(std::shared_ptr<Mounts> mounts) : _mounts(std::move(mounts)) {}

    [[nodiscard]] std::vector<std::string> suffixes() const override;
    [[nodiscard]] Mounting read(const std::string& file, const Progress& progress) override;
    [[nodiscard]] std::string file(const Path& gateway) const override;
    [[nodiscard]] UndoableCommand::Ptr copyMountCmd(const Path& source,
                                                    const Path& gateway) override;

private:
    const std::shared_ptr<Mounts> _mounts;
};

} // namespace Kiv_v4::assimp
