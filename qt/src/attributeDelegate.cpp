#include <QApplication>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>

#include "kiv/attribute.h"
#include "kiv/qt/attributeModel.h"

#include "valueEditor.h"

namespace Kiv_v4::qt {

AttributeDelegate::AttributeDelegate(QObject* parent) : QStyledItemDelegate(parent) {}

AttributeDelegate::~AttributeDelegate() = default;

QWidget* AttributeDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                         const QModelIndex& index) const
{
    auto* self = const_cast<AttributeDelegate*>(this);
    const auto type = index.data(AttributeModel::TypeRole).toString().toStdString();
    if (type == Attribute::kEnumString) {
        auto* box = new QComboBox(parent);
        box->addItems(index.data(AttributeModel::ChoicesRole).toStringList());
        connect(box, &QComboBox::activated, self, [self, box] {
            Q_EMIT self->commitData(box);
            Q_EMIT self->closeEditor(box);
        });
        return box;
    }
    const auto finish = [self](QWidget* editor) {
        Q_EMIT self->commitData(editor);
        Q_EMIT self->closeEditor(editor);
    };
    return new detail::ValueEditor(type, finish, parent);
}

void AttributeDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    const auto text = index.data(Qt::EditRole).toString();
    if (auto* box = dynamic_cast<QComboBox*>(editor)) {
        box->setCurrentText(text);
        if (index.data(AttributeModel::MixedRole).toBool()) {
            box->setCurrentIndex(-1);
        }
    } else if (auto* fields = dynamic_cast<detail::ValueEditor*>(editor)) {
        fields->setText(text, index.data(AttributeModel::MixedRole).toBool());
    }
}

void AttributeDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                     const QModelIndex& index) const
{
    if (const auto* box = dynamic_cast<QComboBox*>(editor)) {
        if (box->currentIndex() >= 0) {
            model->setData(index, box->currentText(), Qt::EditRole);
        }
    } else if (const auto* fields = dynamic_cast<detail::ValueEditor*>(editor)) {
        if (fields->isChanged()) {
            model->setData(index, fields->text(), Qt::EditRole);
        }
    }
}

QSize AttributeDelegate::sizeHint(const QStyleOptionViewItem& option,
                                  const QModelIndex& index) const
{
    auto size = QStyledItemDelegate::sizeHint(option, index);
    size.setHeight(std::max(size.height(), option.fontMetrics.height() + 6));
    return size;
}

} // namespace Kiv_v4::qt
