// Text into paths and back.
#include "kiv/pathString.h"

#include <algorithm>
#include <memory>
#include <string>

#include "kiv/memory/runTime.h"

#include "choices.h"
#include "require.h"

using namespace Kiv_v4;

namespace {

/// Two run-times that share a separator and have one more each; text that begins with `<` is in the
/// second one's own notation.
struct RunTimes
{
    RunTimes()
    {
        first.model().make(first.model().root(), "mesh", "a");
        PathString::registerPathComponentSeparator(first.id(), ':');
        PathString::registerPathComponentSeparator(second.id(), '.');
        PathString::setCreateSingleSegmentPathFn(second.id(), [id = second.id()](const auto& text) {
            return text.front() == '<' ? Path(PathSegment(text, id, '.')) : Path();
        });
    }

    const memory::RunTime first{"first", "world"};
    const memory::RunTime second{"second", "stage"};
};

/// Null for the documented errors.
std::unique_ptr<Path> parsed(const std::string& text)
{
    try {
        return std::make_unique<Path>(PathString::path(text));
    } catch (const EmptyPathSegment&) {
    } catch (const InvalidPath&) {
    } catch (const InvalidPathComponentSeparator&) {
    }
    return nullptr;
}

/// Whether the path's text is complete: an empty segment has no text, and a separator at the end of
/// a segment's text writes no empty name.
bool isWritable(const Path& path)
{
    return std::none_of(path.getSegments().begin(), path.getSegments().end(), [](const auto& s) {
        return s.empty() || s.components().back().string().empty();
    });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const RunTimes runTimes;
    Choices choices(data, size);
    // One that overlaps itself, such as ",,", would not round-trip behind a name that ends with it.
    PathString::setPathSegmentSeparator(choices.ConsumeBool() ? "," : "->");
    const auto path = parsed(choices.ConsumeRandomLengthString(200));
    if (path && isWritable(*path)) {
        const auto again = parsed(PathString::string(*path));
        test::require(again && *again == *path, "a path survives the way to text and back");
    }
    return 0;
}
