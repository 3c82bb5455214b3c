#include "kiv/qt/contextMenu.h"

#include <QActionGroup>
#include <stdexcept>

#include "kiv/hierarchy.h"
#include "kiv/pathString.h"
#include "kiv/qt/icons.h"

#include "attempt.h"
#include "texts.h"

namespace Kiv_v4::qt {

namespace {

using detail::attempt;

/// Asked for anew each time: nothing of a run-time may be held by an open menu.
ContextOps::Ptr operationsOf(const Path& path)
{
    const auto item = Hierarchy::createItem(path);
    if (!item) {
        throw std::runtime_error("no such item '" + PathString::string(path) + "'");
    }
    return ContextOps::contextOps(item);
}

/// The group of the entry before, when both exclude their neighbours; else a new one.
QActionGroup* groupAtEndOf(QMenu& menu)
{
    const auto entries = menu.actions();
    auto* last = entries.isEmpty() ? nullptr : entries.back()->actionGroup();
    return last ? last : new QActionGroup(&menu);
}

} // namespace

ContextMenu::ContextMenu(Path item, QWidget* parent) : QMenu(parent), _item(std::move(item))
{
    fill(*this, {});
}

ContextMenu::~ContextMenu() = default;

void ContextMenu::fill(QMenu& menu, const ContextOps::ItemPath& keys)
{
    attempt("show the menu of '" + PathString::string(_item) + "'", [&] {
        const auto operations = operationsOf(_item);
        for (const auto& entry :
             operations ? operations->items(keys) : std::vector<ContextItem>()) {
            addEntry(menu, entry, keys);
        }
    });
}

void ContextMenu::addEntry(QMenu& menu, const ContextItem& entry, ContextOps::ItemPath keys)
{
    const auto text = detail::menuText(entry.label);
    if (entry.separator) {
        text.isEmpty() ? menu.addSeparator() : menu.addSection(text);
        return;
    }
    keys.push_back(entry.item);
    const auto icon = namedIcon(entry.image);
    if (entry.hasChildren) {
        auto* submenu = menu.addMenu(icon, text);
        submenu->setEnabled(entry.enabled);
        connect(submenu, &QMenu::aboutToShow, this, [this, submenu, keys] {
            submenu->clear();
            fill(*submenu, keys);
        });
        return;
    }
    auto* group = entry.checkable && entry.exclusive ? groupAtEndOf(menu) : nullptr;
    auto* action = menu.addAction(icon, text);
    action->setCheckable(entry.checkable);
    action->setChecked(entry.checked);
    action->setEnabled(entry.enabled);
    action->setActionGroup(group);
    connect(action, &QAction::triggered, this,
            [this, keys, label = entry.label] { run(keys, label); });
}

void ContextMenu::run(const ContextOps::ItemPath& keys, const std::string& label)
{
    attempt(label, [&] {
        const auto operations = operationsOf(_item);
        detail::execute(operations ? operations->doOpCmd(keys) : nullptr);
    });
}

} // namespace Kiv_v4::qt
