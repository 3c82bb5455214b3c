#include "mounting.h"

#include <filesystem>
#include <stdexcept>

#include "kiv/hierarchy.h"
#include "kiv/pathString.h"

#include "diagnostics.h"
#include "progressLine.h"

namespace app {

using namespace Kiv_v4;

namespace {

/// `PathString::path`, with the empty path for text that is no path.
Path parsed(const std::string& text)
{
    try {
        return PathString::path(text);
    } catch (const EmptyPathSegment&) {
    } catch (const InvalidPath&) {
    } catch (const InvalidPathComponentSeparator&) {
    }
    return {};
}

std::string gatewayName(const std::string& file)
{
    const auto name = std::filesystem::path(file).stem().string();
    return name.empty() ? "file" : name;
}

/// Does `work` with each of the subjects, complains of those with which it fails, and gives their
/// number.
template <class Work>
std::size_t failures(const std::vector<std::string>& subjects, Work work)
{
    std::size_t failed = 0;
    for (const auto& subject : subjects) {
        try {
            work(subject);
        } catch (const std::exception& error) {
            complain(subject, error.what());
            ++failed;
        }
    }
    return failed;
}

} // namespace

SceneItem::Ptr Mounting::root() const
{
    const auto& model = _memory.model();
    return model.item(model.root());
}

void Mounting::make(const std::string& typeAndPath)
{
    const auto colon = typeAndPath.find(':');
    const auto path = colon == std::string::npos ? Path() : parsed(typeAndPath.substr(colon + 1));
    if (colon == 0 || path.size() < 2) {
        throw std::invalid_argument("not of the form TYPE:PATH with PATH under /" +
                                    root()->nodeName());
    }
    auto& model = _memory.model();
    model.make(path.pop(), typeAndPath.substr(0, colon), path.back().string());
}

Path Mounting::mount(const std::string& file)
{
    ProgressLine line("reading " + file);
    const auto content = _files.read(file, [&line](float fraction) { line.show(fraction); });

    auto& model = _memory.model();
    const auto name = model.uniqueName(model.root(), gatewayName(file));
    const auto gateway = model.make(model.root(), "gateway", name)->path();
    model.setGateway(gateway, _files.id());
    _files.mount(*content, gateway);
    return gateway;
}

SceneItem::Ptr Mounting::item(const std::string& text, const Path& gateway) const
{
    if (text.starts_with(memory::DataModel::kSeparator)) {
        if (const auto found = Hierarchy::createItem(parsed(text))) {
            return found;
        }
    }
    const auto separator = SceneFiles::separator();
    const auto segment = text.starts_with(separator) ? text : separator + text;
    return Hierarchy::createItem(
        parsed(PathString::string(gateway) + PathString::pathSegmentSeparator() + segment));
}

std::optional<std::string> Mounting::originalName(const SceneItem& item) const
{
    return _files.originalName(item);
}

std::size_t fill(Mounting& scene, const std::vector<std::string>& itemsToMake,
                 const std::vector<std::string>& files)
{
    return failures(itemsToMake, [&](const std::string& item) { scene.make(item); }) +
           failures(files, [&](const std::string& file) { scene.mount(file); });
}

} // namespace app
