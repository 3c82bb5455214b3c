#pragma once

#include <list>
#include <string>

/// A production's shots in sequences: the application's own data, which know nothing of kiv.
struct Entry
{
    std::string name;
    std::string type;          ///< "show", "sequence" or "shot".
    int firstFrame = 1001;     ///< Of a shot.
    int lastFrame = 1100;      ///< Of a shot.
    std::list<Entry> children; ///< The sequences of a show, the shots of a sequence.
};

/// The type of the children of such an entry; empty for a shot, which has none.
inline std::string childType(const std::string& type)
{
    return type == "show" ? "sequence" : type == "sequence" ? "shot" : "";
}
