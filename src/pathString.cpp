#include "kiv/pathString.h"

#include <algorithm>
#include <map>
#include <utility>

#include "kiv/hierarchy.h"
#include "kiv/runTimeMgr.h"
#include "kiv/stringUtils.h"

#include "detail/noDestructor.h"
#include "detail/notation.h"
#include "detail/pathBuilder.h"
#include "detail/pathText.h"
#include "detail/splitting.h"

namespace Kiv_v4 {

namespace {

using detail::PathBuilder;

/// A component separator and one run-time that registered it.
using SeparatorEntry = std::pair<char, Rtid>;

/// The path creator at first; a type of its own, so that the parser can tell it from others.
struct DefaultCreatePath
{
    Path operator()(const std::vector<PathSegment>& segments) const { return segments; }
};

struct DefaultString
{
    std::string operator()(const Path& path) const;
};

struct Settings
{
    std::string segmentSeparator = ",";
    std::vector<SeparatorEntry> separators; // in the order of registration
    std::map<Rtid, PathString::CreateSingleSegmentPathFn> createSingleSegmentPathFns;
    PathString::CreatePathFn createPathFn = DefaultCreatePath();
    PathString::StringFn stringFn = DefaultString();
};

// Never destroyed: run-times in other shared objects may unregister after this library's statics
// died.
Settings& settings()
{
    static detail::NoDestructor<Settings> shared;
    return *shared;
}

std::string DefaultString::operator()(const Path& path) const
{
    return path.empty() ? std::string() : detail::joinedText(path, settings().segmentSeparator);
}

void requireRunTime(Rtid rtId)
{
    if (!RunTimeMgr::instance().hasId(rtId)) {
        throw InvalidRunTimeId(rtId);
    }
}

template <class Argument>
void requireUsable(const Argument& argument, const char* complaint)
{
    if (!argument) {
        throw std::invalid_argument(complaint);
    }
}

auto isOf(char separator)
{
    return [separator](const SeparatorEntry& entry) { return entry.first == separator; };
}

bool isRegistered(char separator)
{
    const auto& entries = settings().separators;
    return std::any_of(entries.begin(), entries.end(), isOf(separator));
}

/// Whether a run-time other than that of `first` registered the same separator later. Its own
/// second registration does not count.
bool hasRival(std::vector<SeparatorEntry>::const_iterator first)
{
    return std::any_of(first + 1, settings().separators.cend(), [&](const auto& entry) {
        return entry.first == first->first && entry.second != first->second;
    });
}

/// A path in some run-time's own notation.
Path singleSegmentPath(const std::string& text)
{
    const auto creators = settings().createSingleSegmentPathFns;
    for (const auto& [rtId, create] : creators) {
        auto path = create(text);
        if (!path.empty()) {
            return path;
        }
    }
    throw InvalidPath(text);
}

/// The path creator's path for the segments of `path`; the default one would make the same path.
Path created(Path&& path)
{
    if (settings().createPathFn.target<DefaultCreatePath>()) {
        return std::move(path);
    }
    return PathString::createPathFn()(path.getSegments());
}

/// A builder with room for the segments and components of a text.
PathBuilder roomFor(std::string_view text, std::string_view separator)
{
    std::size_t nbSegments = 0;
    std::size_t size = 0;
    detail::forEachPiece(text, separator, [&](std::string_view segmentText) {
        ++nbSegments;
        size += segmentText.empty() ? 0 : detail::componentCount(segmentText, segmentText.front());
    });
    return {nbSegments, size};
}

/// Makes the components added the segment of the first of the run-times sharing its separator under
/// which the scene has an item.
void endExistingSegment(PathBuilder& made, const std::string& text, char separator)
{
    for (const auto candidate : PathString::pathComponentSeparatorRunTimeIds(separator)) {
        made.endSegment(candidate, separator);
        if (Hierarchy::createItem(created(made.soFar()))) {
            return;
        }
        made.reopenSegment();
    }
    throw InvalidPath(text);
}

/// Adds the segment that `segmentText` writes, which is a piece of `text`.
void addSegment(PathBuilder& made, const std::string& text, std::string_view segmentText)
{
    if (segmentText.empty()) {
        throw EmptyPathSegment(text);
    }
    const auto separator = segmentText.front();
    const auto& entries = settings().separators;
    const auto first = std::find_if(entries.begin(), entries.end(), isOf(separator));
    if (first == entries.end()) {
        throw InvalidPathComponentSeparator(std::string(segmentText));
    }
    if (segmentText.size() == 1) {
        throw EmptyPathSegment(text);
    }
    detail::forEachComponent(segmentText, separator, [&made](PathComponent&& component) {
        made.add(std::move(component));
    });
    if (hasRival(first)) {
        endExistingSegment(made, text, separator);
    } else {
        made.endSegment(first->second, separator);
    }
}

} // namespace

void detail::forgetNotation(Rtid runTimeId) noexcept
{
    std::erase_if(settings().separators,
                  [runTimeId](const auto& entry) { return entry.second == runTimeId; });
    // The function may use the settings in its destructor: it must die after they are consistent
    // again.
    const auto forgotten = settings().createSingleSegmentPathFns.extract(runTimeId);
}

void PathString::registerPathComponentSeparator(const Rtid& rtId, char separator)
{
    requireRunTime(rtId);
    settings().separators.emplace_back(separator, rtId);
}

void PathString::unregisterPathComponentSeparator(const Rtid& rtId, char separator)
{
    auto& entries = settings().separators;
    if (!isRegistered(separator)) {
        throw std::out_of_range(std::to_string(static_cast<signed char>(separator)));
    }
    const auto found = std::find(entries.begin(), entries.end(), SeparatorEntry(separator, rtId));
    if (found != entries.end()) {
        entries.erase(found);
    }
}

std::list<Rtid> PathString::pathComponentSeparatorRunTimeIds(char separator)
{
    std::list<Rtid> runTimes;
    for (const auto& entry : settings().separators) {
        if (entry.first == separator) {
            runTimes.push_back(entry.second);
        }
    }
    return runTimes;
}

std::string PathString::pathSegmentSeparator()
{
    return settings().segmentSeparator;
}

void PathString::setPathSegmentSeparator(const std::string& separator)
{
    requireUsable(!separator.empty(), "Path segment separator cannot be empty.");
    settings().segmentSeparator = separator;
}

PathString::CreatePathFn PathString::createPathFn()
{
    return settings().createPathFn;
}

void PathString::setCreatePathFn(const CreatePathFn& fn)
{
    requireUsable(fn, "Path creator function cannot be empty.");
    settings().createPathFn = fn;
}

PathString::CreateSingleSegmentPathFn PathString::createSingleSegmentPathFn(const Rtid& rtId)
{
    const auto& creators = settings().createSingleSegmentPathFns;
    const auto found = creators.find(rtId);
    return found == creators.end() ? nullptr : found->second;
}

void PathString::setCreateSingleSegmentPathFn(const Rtid& rtId, const CreateSingleSegmentPathFn& fn)
{
    requireRunTime(rtId);
    settings().createSingleSegmentPathFns[rtId] = fn;
}

PathString::StringFn PathString::stringFn()
{
    return settings().stringFn;
}

void PathString::setStringFn(const StringFn& fn)
{
    requireUsable(fn, "String creator function cannot be empty.");
    settings().stringFn = fn;
}

std::string PathString::string(const Path& path)
{
    if (const auto* const own = settings().stringFn.target<DefaultString>()) {
        return (*own)(path);
    }
    return stringFn()(path);
}

Path PathString::path(const std::string& text)
{
    if (text.empty()) {
        return {};
    }
    const auto separator = settings().segmentSeparator; // a copy, since other code may change it
    if (endsWith(text, separator)) {
        throw EmptyPathSegment(text);
    }
    if (!isRegistered(text.front()) && text.find(separator) == text.npos) {
        return singleSegmentPath(text);
    }
    auto made = roomFor(text, separator);
    detail::forEachPiece(text, std::string_view(separator), [&](std::string_view segmentText) {
        addSegment(made, text, segmentText);
    });
    return created(std::move(made).path());
}

EmptyPathSegment::EmptyPathSegment(const std::string& pathText)
    : std::runtime_error(pathText), _pathText(pathText)
{}

EmptyPathSegment::~EmptyPathSegment() = default;

InvalidPath::InvalidPath(const std::string& pathText)
    : std::runtime_error(pathText), _pathText(pathText)
{}

InvalidPath::~InvalidPath() = default;

InvalidPathComponentSeparator::InvalidPathComponentSeparator(const std::string& segmentText)
    : std::logic_error(segmentText), _segmentText(segmentText)
{}

InvalidPathComponentSeparator::~InvalidPathComponentSeparator() = default;

} // namespace Kiv_v4
