#include <nanobind/stl/unordered_map.h>

#include "overrides.h"
#include "values.h"

namespace bound {

namespace {

using kiv::Attribute;
using kiv::Path;
using kiv::SceneItem;
using kiv::Selection;
using kiv::UndoableCommand;

class PyConnections : public Derivable<kiv::Connections>
{
public:
    using Derivable::Derivable;
    KIV_PURE_NOUN(std::vector<kiv::Connection::Ptr>, allConnections)
};

class PyConnectionHandler : public Derivable<kiv::ConnectionHandler>
{
public:
    using Derivable::Derivable;
    KIV_PURE_CONST_METHOD(kiv::Connections::Ptr, connections, (const SceneItem::Ptr& item), (item))
    KIV_PURE_CONST_METHOD(kiv::ConnectionResultUndoableCommand::Ptr, connectCmd,
                          (const Attribute::Ptr& src, const Attribute::Ptr& dst), (src, dst))
    KIV_PURE_CONST_METHOD(UndoableCommand::Ptr, disconnectCmd,
                          (const Attribute::Ptr& src, const Attribute::Ptr& dst), (src, dst))
};

class PyNodeDefHandler : public Derivable<kiv::NodeDefHandler>
{
public:
    using Derivable::Derivable;
    KIV_PURE_METHOD(kiv::NodeDef::Ptr, definition, (const SceneItem::Ptr& item), (item))
    KIV_PURE_METHOD(kiv::NodeDef::Ptr, definition, (const std::string& type), (type))
    KIV_PURE_METHOD(std::vector<kiv::NodeDef::Ptr>, definitions,
                    (const std::string& classification), (classification))
};

class PyGraphNodeHandler : public Derivable<kiv::UINodeGraphNodeHandler>
{
public:
    using Derivable::Derivable;
    KIV_PURE_METHOD(kiv::UINodeGraphNode::Ptr, uiNodeGraphNode, (const SceneItem::Ptr& item),
                    (item))
};

class PyBatchOpsHandler : public Derivable<kiv::BatchOpsHandler>
{
public:
    using Derivable::Derivable;
    KIV_PURE_METHOD(UndoableCommand::Ptr, duplicateItemsCmd,
                    (const Selection& selection, const kiv::DuplicateOptions& options),
                    (selection, options))
};

class PyPathMappingHandler : public Derivable<kiv::PathMappingHandler>
{
public:
    using Derivable::Derivable;
    KIV_PURE_CONST_METHOD(Path, hostPath, (const Path& path), (path))
    KIV_PURE_CONST_METHOD(Path, runTimePath, (const Path& hostPath), (hostPath))
};

class PyCodeWrapper : public Derivable<kiv::CodeWrapper>
{
public:
    using Derivable::Derivable;
    KIV_PURE_METHOD(void, prelude, (const std::string& subOperation), (subOperation))
    KIV_PURE_METHOD(void, cleanup, (const std::string& subOperation), (subOperation))
};

class PyCodeWrapperHandler : public Derivable<kiv::CodeWrapperHandler>
{
public:
    using Derivable::Derivable;
    KIV_PURE_CONST_METHOD(bool, wraps, (const std::string& operationName), (operationName))
    KIV_METHOD(kiv::CodeWrapper::Ptr, createCodeWrapper,
               (const Selection& selection, const std::string& name), (selection, name))
};

void bindConnections(nb::module_& module)
{
    using kiv::AttributeInfo;
    using kiv::Connection;
    Class<Connection> connection(module, "Connection");
    connection.def(nb::init<const AttributeInfo&, const AttributeInfo&>(), "src"_a, "dst"_a);
    connection.property("src", [](const Connection& self) { return self.src(); });
    connection.property("dst", [](const Connection& self) { return self.dst(); });

    using kiv::Connections;
    Class<Connections, PyConnections> type(module, "Connections");
    enumeration<Connections::AttributeType>(
        type, "AttributeType", "Connections::AttributeType",
        {{"Source", Connections::Source},
         {"Destination", Connections::Destination},
         {"SourceOrDestination", Connections::SourceOrDestination}});
    type.def(nb::init<>());
    type.property("allConnections", &Connections::allConnections);
    type.method("hasConnection", &Connections::hasConnection, "attribute"_a, "type"_a);
    type.method("connections", &Connections::connections, "attribute"_a, "type"_a);

    using Handler = kiv::ConnectionHandler;
    Class<Handler, PyConnectionHandler> handler(module, "ConnectionHandler");
    handler.def(nb::init<>());
    handler.def_static("of", &Handler::connectionHandler, "run_time_id"_a,
                       contract("ConnectionHandler::connectionHandler"));
    handler.method("connections", &Handler::connections, "item"_a);
    handler.method("connectCmd", &Handler::connectCmd, "src"_a, "dst"_a);
    handler.method("disconnectCmd", &Handler::disconnectCmd, "src"_a, "dst"_a);
    handler.method("connect",
                   nb::overload_cast<const Attribute::Ptr&, const Attribute::Ptr&>(
                       &Handler::connect, nb::const_),
                   "src"_a, "dst"_a);
    handler.method("connect",
                   nb::overload_cast<const AttributeInfo&, const AttributeInfo&>(&Handler::connect,
                                                                                 nb::const_),
                   "src"_a, "dst"_a);
    handler.method("disconnect",
                   nb::overload_cast<const Attribute::Ptr&, const Attribute::Ptr&>(
                       &Handler::disconnect, nb::const_),
                   "src"_a, "dst"_a);
    handler.method("disconnect",
                   nb::overload_cast<const AttributeInfo&, const AttributeInfo&>(
                       &Handler::disconnect, nb::const_),
                   "src"_a, "dst"_a);
}

void bindNodeDefs(nb::module_& module)
{
    using kiv::NodeDef;
    Class<NodeDef> type(module, "NodeDef");
    type.def_static("of", &NodeDef::definition, "run_time_id"_a, "type"_a,
                    contract("NodeDef::definition"));
    type.property("type", &NodeDef::type);
    type.property("displayName", &NodeDef::displayName);
    type.property("description", &NodeDef::description);
    type.property("classifications", &NodeDef::classifications);
    type.property("inputNames", &NodeDef::inputNames);
    type.method("hasInput", &NodeDef::hasInput, "name"_a);
    type.method("input", &NodeDef::input, "name"_a);
    type.property("inputs", &NodeDef::inputs);
    type.property("outputNames", &NodeDef::outputNames);
    type.method("hasOutput", &NodeDef::hasOutput, "name"_a);
    type.method("output", &NodeDef::output, "name"_a);
    type.property("outputs", &NodeDef::outputs);
    type.method(
        "metadata",
        [](const NodeDef& self, const std::string& key) { return pythonValue(self.metadata(key)); },
        "key"_a);
    type.method("hasMetadata", &NodeDef::hasMetadata, "key"_a);
    type.method("createNodeCmd", &NodeDef::createNodeCmd, "parent"_a, "name"_a);

    using Handler = kiv::NodeDefHandler;
    Class<Handler, PyNodeDefHandler> handler(module, "NodeDefHandler");
    handler.def(nb::init<>());
    handler.method("definition", nb::overload_cast<const SceneItem::Ptr&>(&Handler::definition),
                   "item"_a);
    handler.method("definition", nb::overload_cast<const std::string&>(&Handler::definition),
                   "type"_a);
    handler.method("definitions", &Handler::definitions, "classification"_a);
}

void bindGraphNodes(nb::module_& module)
{
    using Node = kiv::UINodeGraphNode;
    Class<Node> type(module, "UINodeGraphNode");
    type.def_static("of", &Node::uiNodeGraphNode, "item"_a,
                    contract("UINodeGraphNode::uiNodeGraphNode"));
    type.property("hasPosition", &Node::hasPosition);
    type.settable("position", &Node::position, &Node::setPosition);
    type.method("setPositionCmd", &Node::setPositionCmd, "position"_a);
    type.method("setPosition", &Node::setPosition, "position"_a);
    using Newer = kiv::UINodeGraphNode_v4_1;
    Class<Newer, Node> newer(module, "UINodeGraphNode_v4_1");
    newer.def_static("of", &Newer::uiNodeGraphNode, "item"_a,
                     contract("UINodeGraphNode_v4_1::uiNodeGraphNode"));
    newer.property("hasSize", &Newer::hasSize);
    newer.settable("size", &Newer::size, &Newer::setSize);
    newer.method("setSizeCmd", &Newer::setSizeCmd, "size"_a);
    newer.method("setSize", &Newer::setSize, "size"_a);
    using Handler = kiv::UINodeGraphNodeHandler;
    Class<Handler, PyGraphNodeHandler> handler(module, "UINodeGraphNodeHandler");
    handler.def(nb::init<>());
    handler.method("uiNodeGraphNode", &Handler::uiNodeGraphNode, "item"_a);
}

void bindLooks(nb::module_& module)
{
    using kiv::CellInfo;
    using Color = kiv::Color3f;
    Class<CellInfo> cell(module, "CellInfo");
    cell.def(nb::init<std::string, double, bool, bool, bool, const Color&, const Color&>(),
             "text"_a, "font_point_size"_a = 0.0, "font_bold"_a = false, "font_italic"_a = false,
             "font_strike_out"_a = false, "text_foreground"_a = Color(),
             "text_background"_a = Color());
    cell.field("text", &CellInfo::text).field("fontPointSize", &CellInfo::fontPointSize);
    cell.field("fontBold", &CellInfo::fontBold).field("fontItalic", &CellInfo::fontItalic);
    cell.field("fontStrikeOut", &CellInfo::fontStrikeOut);
    cell.field("textForeground", &CellInfo::textForeground);
    cell.field("textBackground", &CellInfo::textBackground);

    using Handler = kiv::UIInfoHandler;
    Class<Handler> type(module, "UIInfoHandler");
    enumeration<Handler::BadgePosition>(type, "BadgePosition", "UIInfoHandler::BadgePosition",
                                        {{"NoBadge", Handler::NoBadge},
                                         {"UpperLeft", Handler::UpperLeft},
                                         {"UpperRight", Handler::UpperRight},
                                         {"LowerLeft", Handler::LowerLeft},
                                         {"LowerRight", Handler::LowerRight}});
    using Icon = Handler::Icon;
    Class<Icon> icon(type, "Icon", "UIInfoHandler::Icon");
    icon.def(
        "__init__",
        [](Icon* self, std::string base, std::string badge, Handler::BadgePosition position) {
            new (self) Icon{std::move(base), std::move(badge), position};
        },
        "base"_a = "", "badge"_a = "", "badge_position"_a = Handler::NoBadge);
    icon.field("base", &Icon::base).field("badge", &Icon::badge);
    icon.field("badgePosition", &Icon::badgePosition);
    type.def_static("of", &Handler::uiInfoHandler, "run_time_id"_a,
                    contract("UIInfoHandler::uiInfoHandler"));
    type.method("treeViewCellInfo", &Handler::treeViewCellInfo, "item"_a, "host_look"_a);
    type.method("treeViewIcon", &Handler::treeViewIcon, "item"_a);
    type.method("treeViewTooltip", &Handler::treeViewTooltip, "item"_a);
    type.property("runTimeLabel", &Handler::runTimeLabel);
}

void bindGateways(nb::module_& module)
{
    using Handler = kiv::SceneSegmentHandler;
    Class<Handler> type(module, "SceneSegmentHandler");
    type.def_static("of", &Handler::sceneSegmentHandler, "run_time_id"_a,
                    contract("SceneSegmentHandler::sceneSegmentHandler"));
    type.function("isGateway", &Handler::isGateway, "path"_a);
    type.function("findGatewayItems", nb::overload_cast<const Path&>(&Handler::findGatewayItems),
                  "path"_a);
    type.function("findGatewayItems",
                  nb::overload_cast<const Path&, kiv::Rtid>(&Handler::findGatewayItems), "path"_a,
                  "nested_run_time_id"_a);
    type.method("isGatewayItem", &Handler::isGatewayItem, "path"_a);
    type.method("gatewayItems", nb::overload_cast<const Path&>(&Handler::gatewayItems), "path"_a);
    type.method("gatewayItems", nb::overload_cast<const Path&, kiv::Rtid>(&Handler::gatewayItems),
                "path"_a, "nested_run_time_id"_a);

    using Mapping = kiv::PathMappingHandler;
    Class<Mapping, PyPathMappingHandler> mapping(module, "PathMappingHandler");
    mapping.def(nb::init<>());
    mapping.method("hostPath", &Mapping::hostPath, "path"_a);
    mapping.method("runTimePath", &Mapping::runTimePath, "host_path"_a);
}

void bindBatches(nb::module_& module)
{
    using Batch = kiv::BatchOpsHandler;
    Class<Batch, PyBatchOpsHandler> batch(module, "BatchOpsHandler");
    batch.def(nb::init<>());
    batch.function("duplicateSelectionCmd", &Batch::duplicateSelectionCmd, "selection"_a,
                   "options"_a = kiv::DuplicateOptions());
    batch.method("duplicateItemsCmd", &Batch::duplicateItemsCmd, "selection"_a, "options"_a);

    Class<kiv::CodeWrapper, PyCodeWrapper> wrapper(module, "CodeWrapper");
    wrapper.def(nb::init<>());
    wrapper.method("prelude", &kiv::CodeWrapper::prelude, "sub_operation"_a);
    wrapper.method("cleanup", &kiv::CodeWrapper::cleanup, "sub_operation"_a);
    using Handler = kiv::CodeWrapperHandler;
    Class<Handler, PyCodeWrapperHandler> handler(module, "CodeWrapperHandler");
    handler.def(nb::init<>());
    handler.method("wraps", &Handler::wraps, "operation_name"_a);
    handler.method("createCodeWrapper", &Handler::createCodeWrapper, "selection"_a, "name"_a);
}

} // namespace

void bindInterfaces(nb::module_& module)
{
    bindConnections(module);
    bindNodeDefs(module);
    bindGraphNodes(module);
    bindLooks(module);
    bindGateways(module);
    bindBatches(module);
}

} // namespace bound
