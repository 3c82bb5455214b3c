#pragma once

#include <memory>
#include <optional>
#include <set>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "kiv/assimp/sceneFile.h"
#include "kiv/kit/mounts.h"

#include "contents.h"
#include "records.h"

namespace Kiv_v4::assimp {

/// The edits of a file in one mount: the records of the edited nodes. The file itself is never
/// changed, since other mounts share it.
class Edits
{
public:
    /// Null for a node that was not edited.
    template <class Record>
    [[nodiscard]] const Record* find(NodeIndex index) const
    {
        const auto& records = std::get<Of<Record>>(_records);
        const auto found = records.find(index);
        return found == records.end() ? nullptr : &found->second;
    }

    /// `std::nullopt` makes the node unedited again.
    template <class Record>
    void put(NodeIndex index, const std::optional<Record>& record)
    {
        auto& records = std::get<Of<Record>>(_records);
        if (record) {
            records.insert_or_assign(index, *record);
        } else {
            records.erase(index);
        }
    }

    /// The edited nodes, in their order.
    [[nodiscard]] std::set<NodeIndex> nodes() const
    {
        std::set<NodeIndex> indices;
        const auto add = [&indices](const auto& records) {
            for (const auto& record : records) {
                indices.insert(record.first);
            }
        };
        std::apply([&add](const auto&... records) { (add(records), ...); }, _records);
        return indices;
    }

private:
    template <class Record>
    using Of = std::unordered_map<NodeIndex, Record>;

    std::tuple<Of<TransformRecord>, Of<CameraRecord>, Of<LightRecord>, Of<VisibilityRecord>>
        _records;
};

/// A file as it is shown under one gateway.
struct FileMount : kit::Mount
{
    explicit FileMount(std::shared_ptr<const SceneFile> shown) : file(std::move(shown)) {}

    const std::shared_ptr<const SceneFile> file;
    Edits edits;
};

} // namespace Kiv_v4::assimp
