#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "kiv/path.h"
#include "kiv/pathComponent.h"

#include "memoryTree.h"

namespace Kiv_v4::memory {

/// The place of an item: among the children of `parent` as `name`, before the sibling `before`, or
/// last if that is the null component.
struct Place
{
    Path parent;
    PathComponent name;
    PathComponent before;

    [[nodiscard]] Path path() const { return parent + name; }
};

/// One change of the scene with undo and redo. Steps remember paths and names, and announce their
/// changes on the installed scene.
///
/// Applying or reverting a step in a scene that it does not fit throws `std::invalid_argument` and
/// changes nothing.
class Step
{
public:
    Step() = default;
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;
    virtual ~Step() = default;

    virtual void apply() = 0;
    virtual void revert() = 0;
};

using StepPtr = std::unique_ptr<Step>;

/// Puts an object into the scene. A `Placed` represents the object and its place: `enter` puts it
/// there and `leave` takes it out.
template <class Placed>
class Insertion : public Step
{
public:
    explicit Insertion(Placed&& placed) : _placed(std::move(placed)) {}

    void apply() override { _placed.enter(); }
    void revert() override { _placed.leave(); }

private:
    Placed _placed;
};

/// Takes an object out of the scene.
template <class Placed>
class Removal : public Step
{
public:
    explicit Removal(Placed&& placed) : _placed(std::move(placed)) {}

    void apply() override { _placed.leave(); }
    void revert() override { _placed.enter(); }

private:
    Placed _placed;
};

/// Puts a subtree that is in no scene into the place; its top takes the place's name.
[[nodiscard]] StepPtr insertion(const std::shared_ptr<Tree>& tree, Detached&& subtree,
                                const Place& place);

/// Takes the item at `path`, with its descendants, out of the scene. An observer of the
/// announcement may rename or move the item, which then leaves from there, or take it out itself:
/// then neither the step nor reverting it does anything.
[[nodiscard]] StepPtr removal(const std::shared_ptr<Tree>& tree, const Path& path);

/// Moves the item at `from` to another place: under another parent, name, or position.
[[nodiscard]] StepPtr relocation(const std::shared_ptr<Tree>& tree, const Path& from,
                                 const Place& to);

/// Gives the children of the item at `parent` the order of `names`, which contains each once.
[[nodiscard]] StepPtr reordering(const std::shared_ptr<Tree>& tree, const Path& parent,
                                 std::vector<PathComponent> names);

/// Executed steps, for undo and redo as one: all of them or, if one throws, none.
class ChangeLog
{
public:
    [[nodiscard]] std::size_t size() const noexcept { return _steps.size(); }

    /// Applies `step` and adds it, unless it throws.
    void carryOut(StepPtr step);

    /// The same for a step that puts the living node into the scene, or elsewhere in it, at
    /// `place`. Returns its place afterwards, which may differ if an observer moved it.
    Path carryOut(const std::shared_ptr<Tree>& tree, StepPtr step, Node& node, const Place& place);

    /// Applies all steps again.
    void apply();
    void revert();

private:
    std::vector<StepPtr> _steps;
};

/// Throws `std::invalid_argument` with the path and the reason.
[[noreturn]] void refuse(const Path& path, const std::string& reason);

/// The node at `path`, or at that of the item; throws `std::invalid_argument` if there is none.
[[nodiscard]] Node& existing(Tree& tree, const Path& path);
[[nodiscard]] Node& existing(Tree& tree, const SceneItem& item);

/// The same for an item other than the root, which cannot be changed.
[[nodiscard]] Node& editable(Tree& tree, const Path& path);

/// The present place of the item at `path`.
[[nodiscard]] Place placeOf(Tree& tree, const Path& path);
[[nodiscard]] Place placeOf(const Node& node, const Path& path);

/// The names of the children, in order.
[[nodiscard]] std::vector<PathComponent> childNames(const Node& parent);

/// Whether `names` contains the name of each child once.
[[nodiscard]] bool isOrderOf(const Node& parent, const std::vector<PathComponent>& names);

/// Returns `name`. Throws `std::invalid_argument` unless it is valid and free.
[[nodiscard]] PathComponent requireFreeName(Tree& tree, const Node& parent,
                                            const std::string& name);

} // namespace Kiv_v4::memory
