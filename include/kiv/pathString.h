#pragma once

#include <functional>
#include <list>
#include <stdexcept>
#include <string>
#include <vector>

#include "kiv/export.h"
#include "kiv/path.h"
#include "kiv/rtid.h"

namespace Kiv_v4 {

/// The text form of whole paths: `/world/a,:b:c` is a segment `world`, `a` of a run-time that
/// writes its components with `/`, then a segment `b`, `c` of one that writes them with `:`.
///
/// Run-times register the characters that their components begin with; text goes back into a path
/// by the first character of each segment. Run-times that share a character are told apart by
/// asking each, in the order of registration, whether it has an item at that path.
///
/// The segment separator and the functions that make paths and text can be replaced at start-up.
///
/// **Reentrancy.** Not locked: configured and used on the host's main thread.
class KIV_EXPORT PathString
{
public:
    /// Makes a path of segments.
    using CreatePathFn = std::function<Path(const std::vector<PathSegment>&)>;
    /// Makes a path of text in a run-time's own notation.
    using CreateSingleSegmentPathFn = std::function<Path(const std::string&)>;
    /// Makes the text of a path.
    using StringFn = std::function<std::string(const Path&)>;

    PathString() = delete;

    /// Lets segments that begin with `separator` belong to `rtId`. Registering a pair twice holds
    /// it twice. Throws `InvalidRunTimeId` when the run-time is not registered.
    static void registerPathComponentSeparator(const Rtid& rtId, char separator);

    /// Takes one registration of the pair back, if there is one. Throws `std::out_of_range` with
    /// the character's code as its message when no run-time has registered `separator`.
    static void unregisterPathComponentSeparator(const Rtid& rtId, char separator);

    /// The run-times that registered `separator`, in the order of registration.
    [[nodiscard]] static std::list<Rtid> pathComponentSeparatorRunTimeIds(char separator);

    /// What stands between two segments; "," at first.
    [[nodiscard]] static std::string pathSegmentSeparator();

    /// Throws `std::invalid_argument` for an empty separator.
    static void setPathSegmentSeparator(const std::string& separator);

    /// Makes a path of the segments that were parsed; `Path(segments)` at first. Setting an empty
    /// function throws `std::invalid_argument`.
    [[nodiscard]] static CreatePathFn createPathFn();
    static void setCreatePathFn(const CreatePathFn& fn);

    /// Makes a path of a text in a run-time's own notation, which begins with no registered
    /// separator, or an empty path when it cannot; an empty function at first.
    [[nodiscard]] static CreateSingleSegmentPathFn createSingleSegmentPathFn(const Rtid& rtId);

    /// Stores `fn` as it is. Throws `InvalidRunTimeId` when the run-time is not registered.
    static void setCreateSingleSegmentPathFn(const Rtid& rtId, const CreateSingleSegmentPathFn& fn);

    /// Makes the text of a path. Setting an empty function throws `std::invalid_argument`.
    [[nodiscard]] static StringFn stringFn();
    static void setStringFn(const StringFn& fn);

    /// The text of `path`: by default the segments' texts joined with the segment separator, and
    /// empty for a path without components.
    [[nodiscard]] static std::string string(const Path& path);

    /// The path that `text` writes; the empty path for an empty text. Text that begins with no
    /// registered separator and is one segment only goes to the single-segment functions, in the
    /// order of run-time ids, until one gives a path that is not empty.
    ///
    /// Throws `EmptyPathSegment`, `InvalidPathComponentSeparator` or `InvalidPath`; what the
    /// replaceable functions and `Hierarchy::createItem` throw passes through.
    [[nodiscard]] static Path path(const std::string& text);
};

/// Text with a segment that names nothing: two segment separators in a row, one at either end, or a
/// component separator alone. The message is the whole text.
class KIV_EXPORT EmptyPathSegment : public std::runtime_error
{
public:
    explicit EmptyPathSegment(const std::string& pathText);
    EmptyPathSegment(const EmptyPathSegment&) = default;
    ~EmptyPathSegment() override;

    /// The whole text that was parsed.
    [[nodiscard]] const std::string& pathText() const noexcept { return _pathText; }

private:
    std::string _pathText;
};

/// Text that no run-time accepts as a path. The message is the whole text.
class KIV_EXPORT InvalidPath : public std::runtime_error
{
public:
    explicit InvalidPath(const std::string& pathText);
    InvalidPath(const InvalidPath&) = default;
    ~InvalidPath() override;

    /// The whole text that was parsed.
    [[nodiscard]] const std::string& pathText() const noexcept { return _pathText; }

private:
    std::string _pathText;
};

/// A segment of several that begins with a character which no run-time has registered. The message
/// is the segment's text.
class KIV_EXPORT InvalidPathComponentSeparator : public std::logic_error
{
public:
    explicit InvalidPathComponentSeparator(const std::string& segmentText);
    InvalidPathComponentSeparator(const InvalidPathComponentSeparator&) = default;
    ~InvalidPathComponentSeparator() override;

    /// The segment's text, with the unknown separator in front.
    [[nodiscard]] const std::string& segmentText() const noexcept { return _segmentText; }

private:
    std::string _segmentText;
};

} // namespace Kiv_v4
