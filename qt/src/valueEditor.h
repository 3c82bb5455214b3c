#pragma once

#include <QWidget>
#include <functional>
#include <string>
#include <vector>

class QLineEdit;
class QToolButton;

namespace Kiv_v4::qt::detail {

/// Fields for the elements of a value, with a button for a dialog where there is one.
class ValueEditor : public QWidget
{
public:
    /// `finish` is called with the editor when the user is done.
    ValueEditor(const std::string& type, std::function<void(QWidget*)> finish, QWidget* parent);

    /// Shows the value that `textOf` wrote; none for mixed ones.
    void setText(const QString& text, bool isMixed);

    /// Returns the fields' value for `valueFromText`.
    [[nodiscard]] QString text() const;

    /// Returns whether the value is another than the one shown first.
    [[nodiscard]] bool isChanged() const { return text() != _first; }

private:
    void addButton(const QString& text, void (ValueEditor::*choose)());
    void chooseColor();
    void chooseFile();
    void finish();
    void finishWithoutFocus(QWidget* focused);

    const std::function<void(QWidget*)> _finish;
    std::vector<QLineEdit*> _fields;
    QString _first;
    bool _isFinished = false;
};

} // namespace Kiv_v4::qt::detail
