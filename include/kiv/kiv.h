#pragma once

// The whole of the library's public interface.

#include "kiv/childFilter.h"
#include "kiv/export.h"
#include "kiv/handleAssert.h"
#include "kiv/hierarchy.h"
#include "kiv/hierarchyHandler.h"
#include "kiv/log.h"
#include "kiv/notification.h"
#include "kiv/notificationGuard.h"
#include "kiv/observer.h"
#include "kiv/path.h"
#include "kiv/pathComponent.h"
#include "kiv/pathSegment.h"
#include "kiv/pathString.h"
#include "kiv/rawAddress.h"
#include "kiv/resultCommands.h"
#include "kiv/rtid.h"
#include "kiv/runTimeMgr.h"
#include "kiv/runTimeRegistration.h"
#include "kiv/scene.h"
#include "kiv/sceneItem.h"
#include "kiv/sceneNotification.h"
#include "kiv/stringUtils.h"
#include "kiv/subject.h"
#include "kiv/typedColorN.h"
#include "kiv/typedSquareMatrixN.h"
#include "kiv/typedVectorN.h"
#include "kiv/undoableCommand.h"
#include "kiv/uniqueName.h"
#include "kiv/value.h"
#include "kiv/versionInfo.h"

/// The library's name without its version.
namespace Kiv = Kiv_v4;
