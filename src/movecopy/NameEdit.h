#pragma once

#include <QLineEdit>

/// An entry for the name of a copy: digits, letters, "_" and "-", in upper case; any other character that is typed is
/// dropped.
class NameEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit NameEdit(QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
};
