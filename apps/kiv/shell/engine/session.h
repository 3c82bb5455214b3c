#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "kiv/document/workspace.h"
#include "kiv/host/hostScene.h"
#include "kiv/host/recorder.h"
#include "kiv/host/sceneWatch.h"
#include "kiv/host/undoHistory.h"
#include "kiv/observableSelection.h"
#include "kiv/path.h"
#include "kiv/sceneItem.h"
#include "kiv/sceneNotification.h"
#include "kiv/undoableCommandGuard.h"

#include "shell/engine/words.h"
#include "terminal/output.h"

namespace app::shell {

/// Whether the word is `@`, for the selection, or `@NAME`, for a named one.
[[nodiscard]] bool namesSelection(const std::string& word);

/// What a host keeps for its user: the scene with its run-times, the current item, the selections,
/// the undo history. The constructor installs the process-wide scene, selection and command
/// manager, the destructor takes them back; so there is one at a time.
///
/// Functions that name an item throw `std::runtime_error` when there is none.
class Session
{
public:
    explicit Session(Output& output);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session();

    [[nodiscard]] Output& output() const { return _output; }
    [[nodiscard]] Kiv_v4::document::Workspace& scene() const { return *_scene; }
    [[nodiscard]] Kiv_v4::host::UndoHistory& history() const { return *_history; }
    [[nodiscard]] const std::shared_ptr<Kiv_v4::host::UndoHistory>& sharedHistory() const
    {
        return _history;
    }
    [[nodiscard]] const Kiv_v4::ObservableSelection::Ptr& selection() const { return _selection; }

    /// Where paths go on from; the root at first. It follows the item when that is renamed or
    /// moved, and is its nearest ancestor when it is gone.
    [[nodiscard]] Kiv_v4::SceneItem::Ptr current() const;
    void setCurrent(const Kiv_v4::SceneItem::Ptr& item) { _current = item->path(); }

    /// The one item that the word names; see `lookUp`. `@` is the selected item, `@NAME` that of a
    /// named selection.
    [[nodiscard]] Kiv_v4::SceneItem::Ptr item(const std::string& word) const;

    /// All items that the words name, each once; a word may be a pattern, as `host::itemsLike` has
    /// it; `@` stands for all that are selected, at least
    /// one.
    [[nodiscard]] std::vector<Kiv_v4::SceneItem::Ptr>
    items(std::span<const std::string> words) const;

    /// The same, where a selection may be empty.
    [[nodiscard]] std::vector<Kiv_v4::SceneItem::Ptr>
    itemsIfAny(std::span<const std::string> words) const;

    /// The named selection, made empty when there is none. It keeps items that are gone, so that
    /// they are back when undoing brings them back; `items` leaves them out.
    Kiv_v4::Selection& namedSelection(const std::string& name);
    [[nodiscard]] const std::set<std::string>& selectionNames() const { return _selectionNames; }
    void dropSelection(const std::string& name);

    /// Makes one undo step of all commands until the matching `endStep`. Steps nest.
    void beginStep(const std::string& name);
    void endStep();
    [[nodiscard]] bool isInStep() const { return !_steps.empty(); }

    /// Begins or ends to print each notification.
    void watch(bool on);

    /// Writes what happens from now on to the file, in place of what it was written to before.
    /// Throws `std::runtime_error` when it cannot be written.
    void record(const std::string& file);
    void endRecording() { _recorder.reset(); }

    /// Null while nothing is recorded. Whoever holds it may end the recording meanwhile.
    [[nodiscard]] const std::shared_ptr<Kiv_v4::host::Recorder>& recorder() const
    {
        return _recorder;
    }

    void quit() { _isOver = true; }
    [[nodiscard]] bool isOver() const { return _isOver; }

    /// Goes on after `quit`, and takes the scene for saved as it is, so that the next one is final.
    void stay();

    /// From now on, `isChanged` tells whether the scene is another than now, or than when it was
    /// last saved or opened. Costs as much as saving does, there and each of these times.
    void guardChanges();
    void noteSaved();
    [[nodiscard]] bool isChanged() const;

    /// The files of the scripts that are running, one inside the other.
    std::vector<std::filesystem::path> scripts;

private:
    void follow(const Kiv_v4::SceneCompositeNotification::Op& change);

    /// What a word names that names no selection; at least one.
    [[nodiscard]] std::vector<Kiv_v4::SceneItem::Ptr> named(const std::string& word) const;

    [[nodiscard]] const Kiv_v4::Selection& selectionOf(const std::string& word) const;

    Output& _output;
    Kiv_v4::Path _current;
    const Kiv_v4::ObservableSelection::Ptr _selection;
    std::set<std::string> _selectionNames;
    std::unique_ptr<Kiv_v4::host::SceneWatch> _watch;
    std::shared_ptr<Kiv_v4::host::Recorder> _recorder;
    std::unique_ptr<Kiv_v4::document::Workspace> _scene;
    const std::shared_ptr<Kiv_v4::host::UndoHistory> _history;
    const std::shared_ptr<Kiv_v4::host::HostScene> _hostScene;
    std::vector<std::unique_ptr<Kiv_v4::UndoableCommandGuard>> _steps;
    std::optional<std::size_t> _savedState; ///< Nothing while changes are not guarded.
    bool _isOver = false;
};

} // namespace app::shell
