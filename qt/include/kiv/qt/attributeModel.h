#pragma once

#include <QAbstractItemModel>
#include <QStyledItemDelegate>
#include <QTimer>
#include <memory>
#include <vector>

#include "kiv/export.h"
#include "kiv/host/propertyValue.h"
#include "kiv/host/runTimeWatch.h"
#include "kiv/observableSelection.h"
#include "kiv/observer.h"
#include "kiv/path.h"

namespace Kiv_v4::qt {

/// What items offer to be read and set, for a `QTreeView`: their attributes and, group by group,
/// the properties of their transforms, cameras, lights, objects and places in a node editor.
///
///     qt::AttributeModel model;
///     model.follow(GlobalSelection::get());
///     view.setModel(&model);
///     view.setItemDelegate(new qt::AttributeDelegate(&view));
///
/// Of several items, the rows are those that all have, in the order of the first. A value that is
/// not the same in all is shown as mixed; setting it sets it in all, as one undoable step. Values
/// follow what others change.
///
/// **Cost.** Many items are read in slices while the program goes on; `isReading` tells until when.
/// Of more than `kWatched` items, changes of transforms, cameras and lights are not followed.
class KIV_EXPORT AttributeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    /// The columns, and how many there are.
    enum Column { LabelColumn, ValueColumn, UnitColumn, ColumnCount };

    /// What `data` tells of the value column beside the roles of Qt. `Qt::EditRole` is the value as
    /// `textOf` writes it.
    enum Role {
        TypeRole = Qt::UserRole, ///< The type constant of `Attribute`, as a text.
        ChoicesRole,             ///< Of an enumeration, its strings.
        MixedRole                ///< Whether the items differ.
    };

    /// The largest number of items whose transforms, cameras and lights are followed.
    static constexpr std::size_t kWatched = 1000;

    explicit AttributeModel(QObject* parent = nullptr);
    ~AttributeModel() override;

    /// Shows what the items at the paths have in common. Those that do not exist are left out.
    void setItems(std::vector<Path> items);

    /// Shows the items of the selection from now on; null to stay with those shown.
    void follow(ObservableSelection::Ptr selection);

    /// Returns the paths of the items that are shown.
    [[nodiscard]] const std::vector<Path>& items() const noexcept { return _items; }

    /// Returns whether there are items left to be read.
    [[nodiscard]] bool isReading() const noexcept;

    /// Returns whether the definition of the row's attribute tells a value to go back to, which it
    /// does not have.
    [[nodiscard]] bool canReset(const QModelIndex& index) const;

    /// Sets the attribute to the value of its definition, in all items. Returns false when that
    /// cannot be.
    bool reset(const QModelIndex& index);

    /// Reads all values again, for changes that were not announced.
    void refresh();

    /// As in `QAbstractItemModel`.
    [[nodiscard]] QModelIndex index(int row, int column,
                                    const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

    /// Sets the value in all items: from a text as `valueFromText` reads it, or for
    /// `Qt::CheckStateRole` from a check state.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

    struct Row;
    struct Group;
    class Reading;
    class Watch;

private:
    KIV_HIDDEN void readOn();
    KIV_HIDDEN void publish();
    KIV_HIDDEN void letGo();
    KIV_HIDDEN void set(const QModelIndex& index, const host::PropertyValue& value);
    KIV_HIDDEN const Row* rowOf(const QModelIndex& index) const;

    std::vector<Path> _items;
    std::vector<Group> _groups;
    std::unique_ptr<Reading> _reading; ///< Null when all is read.
    std::unique_ptr<Watch> _watch;
    ObservableSelection::Ptr _selection;
    const Observer::Ptr _selectionObserver;
    const host::RunTimeWatch _runTimes; ///< Nothing is held of one that leaves.
    QTimer _slice;                      ///< Reads on.
    QTimer _refresh;                    ///< Gathers changes, of which many may come at once.
};

/// Editors for the values of an `AttributeModel`: lists for enumerations, a field per element of
/// vectors and colours, dialogs for colours and files, lines for all else.
class KIV_EXPORT AttributeDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit AttributeDelegate(QObject* parent = nullptr);
    ~AttributeDelegate() override;

    /// As in `QStyledItemDelegate`.
    [[nodiscard]] QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;
};

} // namespace Kiv_v4::qt
