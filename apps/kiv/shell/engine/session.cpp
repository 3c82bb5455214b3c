#include "shell/engine/session.h"

#include <fstream>
#include <functional>
#include <stdexcept>
#include <utility>

#include "kiv/document/sceneDocument.h"
#include "kiv/globalSelection.h"
#include "kiv/hierarchy.h"
#include "kiv/host/itemLookup.h"
#include "kiv/host/itemPattern.h"
#include "kiv/namedSelection.h"
#include "kiv/pathString.h"

#include "terminal/progressLine.h"
#include "terminal/terminal.h"

namespace app::shell {

using namespace Kiv_v4;

namespace {

constexpr char kSelectionMark = '@';

using Change = SceneCompositeNotification::Op;

/// The installed scene. What is done for each change comes once the selections have followed it.
class SessionScene : public host::HostScene
{
public:
    using Work = std::function<void(const Change&)>;

    explicit SessionScene(Work work) : _work(std::move(work)) {}

protected:
    void postDelivery(const SceneChanged& change) override { forEachOp(change, _work); }

private:
    const Work _work;
};

bool hasMoved(const Change& change)
{
    return change.opType == SceneChanged::PathChanged && change.item &&
           (change.subOpType == ObjectPathChange::Renamed ||
            change.subOpType == ObjectPathChange::Reparented);
}

/// `path` after the change: where its item is now or, when that is gone, its nearest ancestor that
/// is there.
Path followed(const Path& path, const Change& change)
{
    if (change.opType == SceneChanged::Added || !path.isAtOrBelow(change.path)) {
        return path;
    }
    auto now = hasMoved(change) ? path.reparent(change.path, change.item->path()) : path;
    while (now.size() > 1 && !Hierarchy::createItem(now)) {
        now = now.pop();
    }
    return now;
}

} // namespace

bool namesSelection(const std::string& word)
{
    return word.starts_with(kSelectionMark);
}

Session::Session(Output& output)
    : _output(output), _selection(std::make_shared<ObservableSelection>()),
      _history(std::make_shared<host::UndoHistory>()),
      _hostScene(std::make_shared<SessionScene>([this](const auto& change) { follow(change); }))
{
    Scene::initializeInstance(_hostScene);
    _hostScene->follow(_selection, host::HostScene::Gone::Dropped);
    GlobalSelection::initializeInstance(_selection);
    UndoableCommandMgr::initializeInstance(nullptr); // the plain one of the program
    UndoableCommandMgr::initializeInstance(_history);
    _scene = std::make_unique<document::Workspace>();
    showReading(*_scene);
    _current = _scene->root()->path();
}

Session::~Session()
{
    while (isInStep()) {
        endStep();
    }
    _watch.reset();
    _recorder.reset();
    _history->clear();
    for (const auto& name : _selectionNames) {
        NamedSelection::remove(name);
    }
    _selection->clear();
    _scene.reset();
    UndoableCommandMgr::initializeInstance(nullptr);
    GlobalSelection::initializeInstance(nullptr);
    Scene::initializeInstance(nullptr);
}

SceneItem::Ptr Session::current() const
{
    return Hierarchy::createItem(_current);
}

SceneItem::Ptr Session::item(const std::string& word) const
{
    const auto found = items({&word, 1});
    if (found.size() != 1) {
        throw std::runtime_error("'" + word + "' is " + std::to_string(found.size()) +
                                 " items, not one");
    }
    return found.front();
}

std::vector<SceneItem::Ptr> Session::items(std::span<const std::string> words) const
{
    for (const auto& word : words) {
        if (namesSelection(word) && itemsIfAny({&word, 1}).empty()) {
            throw std::runtime_error(
                "no such item '" + word +
                "': " + (word.size() == 1 ? "nothing is selected" : "the selection is empty"));
        }
    }
    return itemsIfAny(words);
}

std::vector<SceneItem::Ptr> Session::itemsIfAny(std::span<const std::string> words) const
{
    Selection found;
    for (const auto& word : words) {
        if (namesSelection(word)) {
            for (const auto& item : selectionOf(word)) {
                if (const auto now = Hierarchy::createItem(item->path())) {
                    found.append(now);
                }
            }
        } else {
            for (const auto& item : named(word)) {
                found.append(item);
            }
        }
    }
    return {found.begin(), found.end()};
}

std::vector<SceneItem::Ptr> Session::named(const std::string& word) const
{
    if (const auto item = host::lookUp(_scene->root(), current(), word)) {
        return {item};
    }
    if (host::isPattern(word)) {
        ProgressLine progress("searching items");
        auto items = host::itemsLike(_scene->root(), current(), word, progress.counter());
        if (!items.empty()) {
            return items;
        }
    }
    return {host::requireItem(_scene->root(), current(), word)};
}

const Selection& Session::selectionOf(const std::string& word) const
{
    const auto name = word.substr(1);
    if (name.empty()) {
        return *_selection;
    }
    if (_selectionNames.count(name) == 0) {
        throw std::runtime_error("no selection is named '" + name + "'");
    }
    return *NamedSelection::get(name);
}

Selection& Session::namedSelection(const std::string& name)
{
    const auto selection = NamedSelection::get(name);
    if (_selectionNames.insert(name).second) {
        _hostScene->follow(selection, host::HostScene::Gone::Kept);
    }
    return *selection;
}

void Session::dropSelection(const std::string& name)
{
    if (_selectionNames.erase(name) == 0) {
        throw std::runtime_error("no selection is named '" + name + "'");
    }
    NamedSelection::remove(name);
}

void Session::beginStep(const std::string& name)
{
    _steps.push_back(std::make_unique<UndoableCommandGuard>(name));
}

void Session::endStep()
{
    if (!isInStep()) {
        throw std::runtime_error("there is no step to end");
    }
    UndoableCommandGuard::setSuccess();
    _steps.pop_back();
}

void Session::watch(bool on)
{
    _watch.reset();
    if (on) {
        _watch = std::make_unique<host::SceneWatch>(
            [this](const Notification& notification) {
                _output.line("~ " + printable(host::textOf(notification)));
            },
            _scene->root());
    }
}

void Session::record(const std::string& file)
{
    const auto lines = std::make_shared<std::ofstream>(file);
    if (!*lines) {
        throw std::runtime_error(file + ": cannot be written");
    }
    _recorder.reset();
    _recorder = std::make_shared<host::Recorder>(
        [lines](const host::Record& record) { *lines << host::jsonLine(record) << std::endl; },
        _scene->root(), _history);
}

void Session::stay()
{
    noteSaved();
    _isOver = false;
}

void Session::guardChanges()
{
    _savedState = document::documentHash(*_scene);
}

void Session::noteSaved()
{
    if (_savedState) {
        guardChanges();
    }
}

bool Session::isChanged() const
{
    return _savedState && *_savedState != document::documentHash(*_scene);
}

void Session::follow(const SceneCompositeNotification::Op& change)
{
    _current = followed(_current, change);
}

} // namespace app::shell
