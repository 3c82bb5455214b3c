#include "attributes.h"

#include <utility>

namespace {

constexpr auto kFirstFrame = "firstFrame";
constexpr auto kLastFrame = "lastFrame";

/// A frame number of a shot.
class FrameAttribute : public Kiv::AttributeInt
{
public:
    FrameAttribute(EntriesPtr entries, const Kiv::SceneItem::Ptr& item, std::string name,
                   int Entry::*field)
        : Kiv::AttributeInt(item), _entries(std::move(entries)), _name(std::move(name)),
          _field(field)
    {}

    [[nodiscard]] bool hasValue() const override { return _entries->find(path()) != nullptr; }
    [[nodiscard]] std::string name() const override { return _name; }
    [[nodiscard]] std::string displayName() const override
    {
        return _name == kFirstFrame ? "First frame" : "Last frame";
    }
    [[nodiscard]] std::string string() const override
    {
        return hasValue() ? std::to_string(get()) : "";
    }

    [[nodiscard]] int get() const override { return _entries->existing(path()).*_field; }

    void set(const int& value) override
    {
        _entries->existing(path()).*_field = value;
        Kiv::Attributes::notify(Kiv::AttributeChanged(path(), _name));
    }

    // No metadata.

    [[nodiscard]] Kiv::Value metadata(const std::string&) const override { return {}; }
    [[nodiscard]] bool hasMetadata(const std::string&) const override { return false; }
    bool setMetadata(const std::string&, const Kiv::Value&) override { return false; }
    bool clearMetadata(const std::string&) override { return false; }

private:
    [[nodiscard]] Kiv::Path path() const { return sceneItem()->path(); }

    const EntriesPtr _entries;
    const std::string _name;
    int Entry::*const _field;
};

/// The two frame numbers of a shot, no more and no fewer.
class ShotAttributes : public Kiv::Attributes
{
public:
    ShotAttributes(EntriesPtr entries, Kiv::SceneItem::Ptr item)
        : _entries(std::move(entries)), _item(std::move(item))
    {}

    [[nodiscard]] Kiv::SceneItem::Ptr sceneItem() const override { return _item; }

    [[nodiscard]] std::string attributeType(const std::string& name) const override
    {
        return hasAttribute(name) ? Kiv::Attribute::kInt : Kiv::Attribute::kInvalid;
    }

    [[nodiscard]] Kiv::Attribute::Ptr attribute(const std::string& name) override
    {
        if (!hasAttribute(name)) {
            return nullptr;
        }
        return std::make_shared<FrameAttribute>(
            _entries, _item, name, name == kFirstFrame ? &Entry::firstFrame : &Entry::lastFrame);
    }

    [[nodiscard]] std::vector<std::string> attributeNames() const override
    {
        return {kFirstFrame, kLastFrame};
    }

    [[nodiscard]] bool hasAttribute(const std::string& name) const override
    {
        return name == kFirstFrame || name == kLastFrame;
    }

    [[nodiscard]] Kiv::AttributeResultUndoableCommand::Ptr
    addAttributeCmd(const std::string&, const std::string&) override
    {
        return nullptr;
    }

    [[nodiscard]] Kiv::UndoableCommand::Ptr removeAttributeCmd(const std::string&) override
    {
        return nullptr;
    }

    [[nodiscard]] Kiv::AttributeResultUndoableCommand::Ptr
    renameAttributeCmd(const std::string&, const std::string&) override
    {
        return nullptr;
    }

private:
    const EntriesPtr _entries;
    const Kiv::SceneItem::Ptr _item;
};

class ShotAttributesHandler : public Kiv::AttributesHandler
{
public:
    explicit ShotAttributesHandler(EntriesPtr entries) : _entries(std::move(entries)) {}

    [[nodiscard]] Kiv::Attributes::Ptr attributes(Kiv::SceneItem::Ptr const& item) override
    {
        return item->nodeType() == "shot" ? std::make_shared<ShotAttributes>(_entries, item)
                                          : nullptr;
    }

private:
    const EntriesPtr _entries;
};

} // namespace

Kiv::AttributesHandler::Ptr makeAttributesHandler(const EntriesPtr& entries)
{
    return std::make_shared<ShotAttributesHandler>(entries);
}
