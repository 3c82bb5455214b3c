#pragma once

#include <QMenu>

#include "kiv/contextOps.h"
#include "kiv/export.h"
#include "kiv/path.h"

namespace Kiv_v4::qt {

/// The context menu of an item, as its run-time offers it (`ContextOps`): with icons, check marks,
/// exclusive entries, headings, and submenus, which it queries when they open. A host may add
/// entries of its own.
///
///     qt::ContextMenu menu(model.path(index), &view);
///     if (!menu.isEmpty()) {
///         menu.exec(view.viewport()->mapToGlobal(position));
///     }
///
/// It keeps only the path, so the item may be deleted, and its run-time unloaded, while the menu is
/// open.
class KIV_EXPORT ContextMenu : public QMenu
{
    Q_OBJECT

public:
    explicit ContextMenu(Path item, QWidget* parent = nullptr);
    ~ContextMenu() override;

private:
    KIV_HIDDEN void fill(QMenu& menu, const ContextOps::ItemPath& keys);
    KIV_HIDDEN void addEntry(QMenu& menu, const ContextItem& entry, ContextOps::ItemPath keys);
    KIV_HIDDEN void run(const ContextOps::ItemPath& keys, const std::string& label);

    const Path _item;
};

} // namespace Kiv_v4::qt
