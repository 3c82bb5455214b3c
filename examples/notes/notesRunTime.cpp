// Documents of a run-time, shown under items of another: the program of "Being mounted under other
// scenes".
#include "notesRunTime.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>
#include <utility>

#include "kiv/kiv.h"

namespace {

constexpr char kSeparator = ':';

std::shared_ptr<Notes> readNotes(const std::string& file)
{
    std::ifstream text(file);
    if (!text) {
        throw std::runtime_error("cannot be opened");
    }
    auto notes = std::make_shared<Notes>();
    for (std::string line; std::getline(text, line);) {
        if (!line.empty()) {
            notes->names.push_back(line);
        }
    }
    return notes;
}

} // namespace

/// The lists of all gateways as items: `notes` and, under it, one item for each name.
class NotesTree : public Kiv::kit::Tree
{
public:
    explicit NotesTree(std::shared_ptr<Kiv::kit::Mounts<Notes>> notes)
        : Tree(Kiv::PathSegment("notes", notes->runTimeId(), kSeparator)), _mounts(std::move(notes))
    {}

    [[nodiscard]] std::vector<Kiv::Path> roots(const Kiv::Path& gateway) const override
    {
        return _mounts->find(gateway) ? std::vector{gateway + root().getSegments().front()}
                                      : std::vector<Kiv::Path>();
    }
    [[nodiscard]] std::string nodeType(const Kiv::Path& path) const override
    {
        const auto notes = _mounts->at(path);
        if (!notes || path == roots(notes->gateway()).front()) {
            return notes ? "notes" : "";
        }
        const auto isKnown = path.pop() == roots(notes->gateway()).front() &&
                             std::count(notes->names.begin(), notes->names.end(), path.back());
        return isKnown ? "note" : "";
    }
    [[nodiscard]] std::vector<Child> children(const Kiv::Path& path) const override
    {
        std::vector<Child> children;
        for (const auto& name :
             nodeType(path) == "notes" ? _mounts->at(path)->names : std::vector<std::string>()) {
            children.push_back({name, "note"});
        }
        return children;
    }

private:
    const std::shared_ptr<Kiv::kit::Mounts<Notes>> _mounts;
};

NotesRunTime::NotesRunTime(const std::string& name)
    : _registration(name, kSeparator),
      _mounts(std::make_shared<Kiv::kit::Mounts<Notes>>(_registration.id(), kSeparator))
{
    Kiv::kit::registerTree(id(), std::make_shared<NotesTree>(_mounts));
    Kiv::RunTimeMgr::instance().setSceneFileHandler(
        id(), Kiv::kit::Mounts<Notes>::sceneFileHandler(_mounts, {".notes"}, readNotes));
}

/// Items and commands may keep the mounts.
NotesRunTime::~NotesRunTime()
{
    _mounts->close();
}
