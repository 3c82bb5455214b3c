#include "fileAttribute.h"

#include <assimp/scene.h>
#include <cstdint>
#include <cstring>
#include <limits>
#include <unordered_map>
#include <utility>

#include "fileText.h"

namespace Kiv_v4::assimp {

namespace {

template <class T>
T read(const aiMetadataEntry& entry)
{
    T value;
    std::memcpy(&value, entry.mData, sizeof(T));
    return value;
}

FileAttribute::Value valueOf(const aiMetadataEntry& entry)
{
    switch (entry.mType) {
    case AI_BOOL:
        return read<bool>(entry);
    case AI_INT32:
        return read<std::int32_t>(entry);
    case AI_UINT64:
        return numberValue(read<std::uint64_t>(entry));
    case AI_FLOAT:
        return read<float>(entry);
    case AI_DOUBLE:
        return read<double>(entry);
    case AI_AISTRING:
        return std::string(text(*static_cast<const aiString*>(entry.mData)));
    case AI_AIVECTOR3D: {
        const auto& vector = *static_cast<const aiVector3D*>(entry.mData);
        return TypedVectorN<float, 3>({static_cast<float>(vector.x), static_cast<float>(vector.y),
                                       static_cast<float>(vector.z)});
    }
    default:
        return NativeValue{"metadata type " + std::to_string(entry.mType), ""};
    }
}

/// Makes many names unique in one pass.
class UniqueNames
{
public:
    explicit UniqueNames(const FileAttributes& attributes)
    {
        for (const auto& known : attributes) {
            _taken.emplace(known.name, 2);
        }
    }

    /// `name`, or the next free name that begins with it.
    std::string take(const std::string& name)
    {
        auto free = name.empty() ? "unnamed" : name;
        const auto [first, isNew] = _taken.emplace(free, 2);
        if (!isNew) {
            auto& next = first->second; // a stable reference
            const auto stem = free;
            do {
                free = stem + std::to_string(next++);
            } while (!_taken.emplace(free, 2).second);
        }
        return free;
    }

private:
    std::unordered_map<std::string, int> _taken; ///< Names with the next number to try.
};

} // namespace

FileAttribute::Value numberValue(std::uint64_t number)
{
    if (number <= std::numeric_limits<int>::max()) {
        return static_cast<int>(number);
    }
    if (number <= std::uint64_t{1} << std::numeric_limits<double>::digits) {
        return static_cast<double>(number);
    }
    return NativeValue{"uint64", std::to_string(number)};
}

void addAttribute(FileAttributes& attributes, const std::string& name, FileAttribute::Value value)
{
    auto free = UniqueNames(attributes).take(name);
    attributes.push_back({std::move(free), std::move(value)});
}

void addAttributes(FileAttributes& attributes, FileAttributes more)
{
    UniqueNames names(attributes);
    for (auto& attribute : more) {
        attributes.push_back({names.take(attribute.name), std::move(attribute.value)});
    }
}

void addMetadata(FileAttributes& attributes, const aiMetadata& metadata)
{
    struct Level
    {
        const aiMetadata* metadata;
        std::string prefix;
        unsigned next = 0;
    };
    UniqueNames names(attributes);
    std::vector<Level> levels{{&metadata, ""}};
    while (!levels.empty()) {
        auto& level = levels.back();
        if (level.next == level.metadata->mNumProperties) {
            levels.pop_back();
            continue;
        }
        const auto name = level.prefix + std::string(text(level.metadata->mKeys[level.next]));
        const auto& entry = level.metadata->mValues[level.next++];
        if (entry.mData && entry.mType == AI_AIMETADATA) {
            levels.push_back({static_cast<const aiMetadata*>(entry.mData), name + "."});
        } else if (entry.mData) {
            attributes.push_back({names.take(name), valueOf(entry)});
        }
    }
}

} // namespace Kiv_v4::assimp
