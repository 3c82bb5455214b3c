#pragma once

#include <nanobind/nanobind.h>
#include <typeinfo>

#include "kiv/attribute.h"
#include "kiv/attributes.h"
#include "kiv/hierarchy.h"
#include "kiv/light.h"
#include "kiv/notification.h"
#include "kiv/transform3dRead.h"
#include "kiv/uiNodeGraphNode.h"
#include "kiv/undoableCommand.h"

// Objects come to Python as the most derived class that is bound, not as the class of the pointer
// by which C++ hands them out: their own classes are private to run-times.

namespace nanobind::detail {

#define KIV_DYNAMIC_TYPE(Type)                                                                     \
    template <>                                                                                    \
    struct type_hook<Type>                                                                         \
    {                                                                                              \
        static const std::type_info* get(const Type* object);                                      \
    }

KIV_DYNAMIC_TYPE(Kiv_v4::Attribute);
KIV_DYNAMIC_TYPE(Kiv_v4::Attributes);
KIV_DYNAMIC_TYPE(Kiv_v4::Hierarchy);
KIV_DYNAMIC_TYPE(Kiv_v4::Notification);
KIV_DYNAMIC_TYPE(Kiv_v4::Transform3dRead);
KIV_DYNAMIC_TYPE(Kiv_v4::UINodeGraphNode);
KIV_DYNAMIC_TYPE(Kiv_v4::UndoableCommand);

#undef KIV_DYNAMIC_TYPE

} // namespace nanobind::detail
