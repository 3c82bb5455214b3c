#include "valueEditor.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QRegularExpression>
#include <QToolButton>
#include <array>
#include <utility>

#include "kiv/attribute.h"

#include "colors.h"

namespace Kiv_v4::qt::detail {

namespace {

/// Types whose elements have a field each. Matrices are one line.
constexpr std::array<std::pair<const char*, std::size_t>, 7> kFields{{{Attribute::kColorFloat3, 3},
                                                                      {Attribute::kColorFloat4, 4},
                                                                      {Attribute::kInt3, 3},
                                                                      {Attribute::kFloat2, 2},
                                                                      {Attribute::kFloat3, 3},
                                                                      {Attribute::kFloat4, 4},
                                                                      {Attribute::kDouble3, 3}}};

std::size_t nbFields(const std::string& type)
{
    for (const auto& [name, count] : kFields) {
        if (type == name) {
            return count;
        }
    }
    return 1;
}

QStringList elementsOf(const QString& text)
{
    static const QRegularExpression separators("[(),\\s]+");
    return text.split(separators, Qt::SkipEmptyParts);
}

} // namespace

ValueEditor::ValueEditor(const std::string& type, std::function<void(QWidget*)> finish,
                         QWidget* parent)
    : QWidget(parent), _finish(std::move(finish))
{
    setAutoFillBackground(true);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    for (auto count = nbFields(type); count > 0; --count) {
        auto* field = new QLineEdit(this);
        field->setMinimumWidth(24);
        connect(field, &QLineEdit::returnPressed, this, [this] { this->finish(); });
        row->addWidget(field);
        _fields.push_back(field);
    }
    setFocusProxy(_fields.front());
    if (type == Attribute::kColorFloat3 || type == Attribute::kColorFloat4) {
        addButton(tr("Choose a colour"), &ValueEditor::chooseColor);
    } else if (type == Attribute::kFilename) {
        addButton(tr("Choose a file"), &ValueEditor::chooseFile);
    }
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget*, QWidget* now) { finishWithoutFocus(now); });
}

void ValueEditor::setText(const QString& text, bool isMixed)
{
    const auto elements = _fields.size() == 1 ? QStringList(text) : elementsOf(text);
    for (std::size_t i = 0; i < _fields.size(); ++i) {
        _fields[i]->setText(elements.value(static_cast<qsizetype>(i)));
        _fields[i]->setPlaceholderText(isMixed ? tr("mixed") : QString());
        _fields[i]->setCursorPosition(0);
    }
    _fields.front()->selectAll();
    _first = this->text();
}

QString ValueEditor::text() const
{
    QStringList elements;
    for (const auto* field : _fields) {
        elements.append(field->text());
    }
    return elements.join(", ");
}

void ValueEditor::addButton(const QString& text, void (ValueEditor::*choose)())
{
    auto* button = new QToolButton(this);
    button->setText(QChar(0x2026));
    button->setToolTip(text);
    button->setAutoRaise(true);
    connect(button, &QToolButton::clicked, this, choose);
    layout()->addWidget(button);
}

void ValueEditor::chooseColor()
{
    const auto element = [this](std::size_t at) { return _fields[at]->text().toDouble(); };
    const auto chosen = QColorDialog::getColor(screenColor(element(0), element(1), element(2)),
                                               this, tr("Choose a colour"));
    if (chosen.isValid()) {
        const auto elements = elementsOf(linearText(chosen));
        for (std::size_t i = 0; i < 3; ++i) {
            _fields[i]->setText(elements[static_cast<qsizetype>(i)]);
        }
        if (_fields.size() == 4 && _fields[3]->text().isEmpty()) {
            _fields[3]->setText("1");
        }
        finish();
    }
}

void ValueEditor::chooseFile()
{
    const auto chosen =
        QFileDialog::getOpenFileName(this, tr("Choose a file"), _fields.front()->text());
    if (!chosen.isEmpty()) {
        _fields.front()->setText(chosen);
        finish();
    }
}

void ValueEditor::finish()
{
    if (!std::exchange(_isFinished, true)) { // the focus goes once more with the editor
        _finish(this);
    }
}

void ValueEditor::finishWithoutFocus(QWidget* focused)
{
    for (auto* at = focused; at; at = at->parentWidget()) {
        if (at == this) {
            return;
        }
    }
    if (focused && isVisible()) { // a null focus is another program's
        finish();
    }
}

} // namespace Kiv_v4::qt::detail
