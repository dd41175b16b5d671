#pragma once

#include "modDatabase.h"

#include <QLineEdit>
#include <QPlainTextEdit>

#include <optional>

struct EntryState;

/// A line for a column's value. Keys pass the filter of the column; a text beyond the column's width is cut, however it
/// came.
class PropertyEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit PropertyEdit(QWidget* parent = nullptr);

    /// What the driver says of the column; until it is known nothing is filtered.
    void setColumn(const modDatabase::FieldInfo& column);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;

private:
    void cut();

    std::optional<modDatabase::FieldInfo> m_column;
};

/// The same for a text of several lines. A text that nobody has edited is given back as it was set, whatever its line
/// ends are.
class PropertyMemo : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit PropertyMemo(QWidget* parent = nullptr);

    void setColumn(const modDatabase::FieldInfo& column);

    QString text() const;
    void setText(const QString& text);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;

private:
    EntryState state() const;
    void cut();

    std::optional<modDatabase::FieldInfo> m_column;
    QString m_set;
};
