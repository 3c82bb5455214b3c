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
/// Run-times register the characters that their components begin with; parsing finds the run-time
/// of each segment by its first character. If several run-times share a character, parsing asks
/// each, in the order of registration, whether it has an item at that path.
///
/// The segment separator and the functions that make paths and text can be replaced at start-up.
///
/// **Reentrancy.** Not locked: configure and use it on the host's main thread.
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

    /// Makes segments that begin with `separator` belong to `rtId`. A pair that is registered twice
    /// must be unregistered twice. Throws `InvalidRunTimeId` if the run-time is not registered.
    static void registerPathComponentSeparator(const Rtid& rtId, char separator);

    /// Removes one registration of the pair, if there is one. Throws `std::out_of_range` with the
    /// character's code as its message if no run-time has registered `separator`.
    static void unregisterPathComponentSeparator(const Rtid& rtId, char separator);

    /// The run-times that registered `separator`, in the order of registration.
    [[nodiscard]] static std::list<Rtid> pathComponentSeparatorRunTimeIds(char separator);

    /// The text between two segments; "," at first.
    [[nodiscard]] static std::string pathSegmentSeparator();

    /// Sets the text between two segments. Throws `std::invalid_argument` if it is empty.
    static void setPathSegmentSeparator(const std::string& separator);

    /// The function that makes a path of the parsed segments; `Path(segments)` at first. Setting an
    /// empty function throws `std::invalid_argument`.
    [[nodiscard]] static CreatePathFn createPathFn();
    static void setCreatePathFn(const CreatePathFn& fn);

    /// The function that makes a path of a text in a run-time's own notation, which begins with no
    /// registered separator, or returns an empty path if it cannot; an empty function at first.
    [[nodiscard]] static CreateSingleSegmentPathFn createSingleSegmentPathFn(const Rtid& rtId);

    /// Stores `fn` as it is. Throws `InvalidRunTimeId` if the run-time is not registered.
    static void setCreateSingleSegmentPathFn(const Rtid& rtId, const CreateSingleSegmentPathFn& fn);

    /// The function that makes the text of a path. Setting an empty function throws
    /// `std::invalid_argument`.
    [[nodiscard]] static StringFn stringFn();
    static void setStringFn(const StringFn& fn);

    /// The text of `path`: by default the segments' texts joined with the segment separator, and
    /// empty for a path without components.
    [[nodiscard]] static std::string string(const Path& path);

    /// The path that `text` writes; the empty path for an empty text. Text that begins with no
    /// registered separator and is one segment only goes to the single-segment functions, in the
    /// order of run-time ids, until one returns a path that is not empty.
    ///
    /// Throws `EmptyPathSegment`, `InvalidPathComponentSeparator` or `InvalidPath`; exceptions of
    /// the replaceable functions and of `Hierarchy::createItem` pass through.
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

/// In a text of several segments, one begins with a character that no run-time has registered. The
/// message is the segment's text.
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
