#pragma once

#include <CLI/CLI.hpp>
#include <cstddef>
#include <exception>
#include <optional>
#include <string>
#include <vector>

#include "kiv/document/workspace.h"

#include "cli/plugins.h"
#include "terminal/diagnostics.h"

namespace app {

/// What a scene is made of, as users ask for it.
struct SceneWishes
{
    std::vector<std::string> files;
    std::vector<std::string> itemsToMake; ///< As `TYPE:PATH`.
    std::optional<Kiv_v4::document::Isolation> isolation;

    [[nodiscard]] std::size_t size() const { return files.size() + itemsToMake.size(); }
};

/// Gives the command `--isolated`.
void defineIsolation(CLI::App& command, std::optional<Kiv_v4::document::Isolation>& isolation);

/// Gives the command `FILE...`, `--make` and `--isolated`.
void defineScene(CLI::App& command, SceneWishes& wishes);

/// Gives the command `--make` and `--isolated` alone.
void defineMake(CLI::App& command, SceneWishes& wishes);

/// Opens a document (`.json`), what Python shows in place of a file, or mounts a scene file.
/// Returns the gateway, or the path of the root when there is none.
Kiv_v4::Path bring(Kiv_v4::document::Workspace& scene, const std::string& file, Plugins& plugins);

/// Makes the items, each with a parent that is there, and brings the files. Complains of those that
/// cannot be made or read, and returns their number.
std::size_t fill(Kiv_v4::document::Workspace& scene, const SceneWishes& wishes, Plugins& plugins);

/// Does `work` with each of the subjects, complains of those with which it fails, and returns their
/// number. An interrupt ends it.
template <class Work>
std::size_t failures(const std::vector<std::string>& subjects, Work work)
{
    std::size_t failed = 0;
    for (const auto& subject : subjects) {
        try {
            work(subject);
        } catch (const Kiv_v4::document::Cancelled&) {
            throw;
        } catch (const std::exception& error) {
            complain(subject, error.what());
            ++failed;
        }
    }
    return failed;
}

/// The root of the scene, and after it the top items of the plug-ins.
[[nodiscard]] Kiv_v4::SceneItemList rootsOf(const Kiv_v4::document::Workspace& scene,
                                            const Plugins& plugins);

} // namespace app
