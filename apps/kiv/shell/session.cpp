#include "session.h"

#include <stdexcept>

#include "kiv/globalSelection.h"
#include "kiv/hierarchy.h"
#include "kiv/namedSelection.h"
#include "kiv/pathString.h"

#include "followers.h"
#include "hostScene.h"
#include "itemLookup.h"
#include "terminal.h"

namespace app::shell {

using namespace Kiv_v4;

namespace {

constexpr char kSelectionMark = '@';

bool namesSelection(const std::string& word)
{
    return word.starts_with(kSelectionMark);
}

} // namespace

Session::Session(Output& output)
    : _output(output), _selection(std::make_shared<ObservableSelection>()),
      _history(std::make_shared<host::UndoHistory>())
{
    Scene::initializeInstance(
        std::make_shared<HostScene>([this](const auto& change) { follow(change); }));
    GlobalSelection::initializeInstance(_selection);
    UndoableCommandMgr::initializeInstance(_history);
    _scene = std::make_unique<Mounting>();
    _current = _scene->root()->path();
}

Session::~Session()
{
    while (isInStep()) {
        endStep();
    }
    _watch.reset();
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
    Selection found;
    for (const auto& word : words) {
        if (namesSelection(word)) {
            for (const auto& item : selectionOf(word)) {
                found.append(item);
            }
        } else if (const auto item = lookUp(_scene->root(), current(), word)) {
            found.append(item);
        } else {
            throw std::runtime_error("'" + word + "' is no item");
        }
    }
    return {found.begin(), found.end()};
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
    _selectionNames.insert(name);
    return *NamedSelection::get(name);
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
        _watch = std::make_unique<Watch>(
            [this](const std::string& line) { _output.line("~ " + printable(line)); },
            _scene->root());
    }
}

void Session::follow(const SceneCompositeNotification::Op& change)
{
    _current = followed(_current, change);
    app::shell::follow(*_selection, change);
    for (const auto& name : _selectionNames) {
        app::shell::follow(*NamedSelection::get(name), change);
    }
    if (_watch && change.opType != SceneChanged::Deleted) {
        _watch->include(change.item ? change.item->path() : change.path);
    }
}

} // namespace app::shell
