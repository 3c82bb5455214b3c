// Paths as text: writing, reading, and errors.
#include <algorithm>
#include <exception>
#include <iostream>
#include <map>

#include "kiv/kiv.h"
#include "kiv/memory/runTime.h"

namespace {

void read(const std::string& text)
{
    std::cout << '\'' << text << "': ";
    try {
        const auto path = Kiv::PathString::path(text);
        std::cout << path.nbSegments() << " segments, " << path.size() << " components\n";
    } catch (const Kiv::EmptyPathSegment& error) {
        std::cout << "a segment is empty\n";
    } catch (const Kiv::InvalidPathComponentSeparator& error) {
        std::cout << "no run-time writes '" << error.segmentText().front() << "'\n";
    } catch (const Kiv::InvalidPath& error) {
        std::cout << "nobody knows it\n";
    }
}

/// `name` as one component of a path that is written as text and read again.
std::string fit(std::string name, char separator)
{
    const auto unfit = Kiv::PathString::pathSegmentSeparator() + separator;
    std::replace_if(
        name.begin(), name.end(), [&](char c) { return unfit.find(c) != std::string::npos; }, '_');
    return name.empty() ? "_" : name;
}

/// The stand-ins that a host shows for the items of a run-time.
class StandIns : public Kiv::PathMappingHandler
{
public:
    void add(const Kiv::Path& runTimePath, const Kiv::Path& hostPath)
    {
        _paths[Kiv::PathString::string(runTimePath)] = hostPath;
    }

    [[nodiscard]] Kiv::Path hostPath(const Kiv::Path& path) const override
    {
        const auto found = _paths.find(Kiv::PathString::string(path));
        return found == _paths.end() ? Kiv::Path() : found->second;
    }

    [[nodiscard]] Kiv::Path runTimePath(const Kiv::Path& hostPath) const override
    {
        for (const auto& [text, path] : _paths) {
            if (path == hostPath) {
                return Kiv::PathString::path(text);
            }
        }
        return {};
    }

private:
    std::map<std::string, Kiv::Path> _paths;
};

} // namespace

int main()
{
    Kiv::memory::RunTime runTime;
    auto& model = runTime.model();
    const auto group = model.make(model.root(), "group", "props");

    // A second run-time that writes its components with ':'.
    const Kiv::RunTimeRegistration layers("layers", ':');
    const Kiv::PathSegment layer(":beauty:rim", layers.id(), ':');
    const auto path = group->path() + layer;
    std::cout << Kiv::PathString::string(path) << '\n';
    std::cout << (Kiv::PathString::path("/world/props,:beauty:rim") == path) << '\n';
    std::cout << '\n';

    read("");
    read("/world/props");
    read("/world/props,");
    read("/world//props");
    read("/world/props,,:rim");
    read("/world/props,/");
    read("/world/props,#rim");
    read("world/props");
    read("/world/no/such/item");
    std::cout << '\n';

    // Nothing is escaped.
    const auto bad = model.root() + std::string("a/b");
    std::cout << bad.size() << " components, read back "
              << Kiv::PathString::path(Kiv::PathString::string(bad)).size() << '\n';
    std::cout << fit("a/b, c", '/') << '\n';
    std::cout << '\n';

    // Two run-times share a separator: the one with such an item gets the segment.
    Kiv::memory::RunTime library("library", "assets");
    std::cout << Kiv::RunTimeMgr::instance().getName(Kiv::PathString::path("/assets").runTimeId())
              << '\n';
    read("/world");
    read("/nowhere");
    std::cout << '\n';

    // Text in a notation of the run-time's own.
    Kiv::PathString::setCreateSingleSegmentPathFn(layers.id(), [&](const std::string& text) {
        return text.find("layer ") == 0 ? Kiv::Path(Kiv::PathSegment(
                                              Kiv::PathComponent(text.substr(6)), layers.id(), ':'))
                                        : Kiv::Path();
    });
    std::cout << Kiv::PathString::string(Kiv::PathString::path("layer rim")) << '\n';
    std::cout << '\n';
    Kiv::PathString::setCreateSingleSegmentPathFn(layers.id(),
                                                  [](const std::string&) { return Kiv::Path(); });

    // Another segment separator, for a host whose names contain commas.
    Kiv::PathString::setPathSegmentSeparator(" > ");
    std::cout << Kiv::PathString::string(path) << '\n';
    Kiv::PathString::setPathSegmentSeparator(",");
    std::cout << '\n';

    // The host's own path of an item.
    const auto standIns = std::make_shared<StandIns>();
    standIns->add(path, group->path());
    Kiv::RunTimeMgr::instance().setPathMappingHandler(layers.id(), standIns);
    const auto handler = Kiv::RunTimeMgr::instance().pathMappingHandler(path.runTimeId());
    std::cout << Kiv::PathString::string(handler->hostPath(path)) << '\n';
}
