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

/// The properties of items as a model for a `QTreeView`: their attributes and, in groups, the
/// properties of their transforms, cameras, lights, objects and places in a node editor.
///
///     qt::AttributeModel model;
///     model.follow(GlobalSelection::get());
///     view.setModel(&model);
///     view.setItemDelegate(new qt::AttributeDelegate(&view));
///
/// For several items, the rows are those that all items have, in the order of the first item. If
/// the items differ in a value, the row shows it as mixed; setting it sets it in all items, as one
/// undoable step. The model follows all changes of values.
///
/// **Cost.** Many items are read in slices between events, while `isReading` returns true. With
/// more than `kWatched` items, the model does not follow changes of transforms, cameras and lights.
class KIV_EXPORT AttributeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    /// The columns, and their number.
    enum Column { LabelColumn, ValueColumn, UnitColumn, ColumnCount };

    /// The roles of the value column beside those of Qt. `Qt::EditRole` is the value as `textOf`
    /// writes it.
    enum Role {
        TypeRole = Qt::UserRole, ///< The type constant of `Attribute`, as a text.
        ChoicesRole,             ///< Of an enumeration, its strings.
        MixedRole                ///< Whether the items differ.
    };

    /// The largest number of items whose transforms, cameras and lights are followed.
    static constexpr std::size_t kWatched = 1000;

    explicit AttributeModel(QObject* parent = nullptr);
    ~AttributeModel() override;

    /// Shows the properties that the items at the paths have in common. Ignores paths without an
    /// item.
    void setItems(std::vector<Path> items);

    /// Shows the items of the selection, and follows it. Null ends following; the shown items stay.
    void follow(ObservableSelection::Ptr selection);

    /// Returns the paths of the items that are shown.
    [[nodiscard]] const std::vector<Path>& items() const noexcept { return _items; }

    /// Returns whether some items were not read yet.
    [[nodiscard]] bool isReading() const noexcept;

    /// Returns whether the definition of the row's attribute has a default value, and the current
    /// value is another one.
    [[nodiscard]] bool canReset(const QModelIndex& index) const;

    /// Sets the attribute to the default value of its definition, in all items. Returns false if
    /// `canReset` is false or a run-time refuses.
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

    struct KIV_HIDDEN Row;
    struct KIV_HIDDEN Group;
    class KIV_HIDDEN Reading;
    class KIV_HIDDEN Watch;

private:
    KIV_HIDDEN void readOn();
    KIV_HIDDEN void publish();
    KIV_HIDDEN void dropItems();
    KIV_HIDDEN void set(const QModelIndex& index, const host::PropertyValue& value);
    KIV_HIDDEN const Row* rowOf(const QModelIndex& index) const;

    std::vector<Path> _items;
    std::vector<Group> _groups;
    std::unique_ptr<Reading> _reading; ///< Null when all items are read.
    std::unique_ptr<Watch> _watch;
    ObservableSelection::Ptr _selection;
    const Observer::Ptr _selectionObserver;
    const host::RunTimeWatch _runTimes; ///< To release the items of one that is unregistered.
    QTimer _slice;                      ///< Reads the next items.
    QTimer _refresh;                    ///< Reads values again once for many changes.
};

/// Editors for the values of an `AttributeModel`: lists for enumerations, a field per element of
/// vectors and colours, dialogs for colours and files, lines for all other values.
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
