#pragma once

#include "CCtrls.h"
#include "modDatabase.h"

#include <QHash>
#include <QWidget>

#include <cstdint>
#include <span>

class DropDown;
class PropertyEdit;
class PropertyMemo;
class QGridLayout;
class QHBoxLayout;
class QLabel;
class QPushButton;
class UpDown;

/// How a column is entered.
enum class EntryKind {
    Text,
    /// A text of several lines.
    Memo,
    /// A text that does not show.
    Password,
    /// A second entry of the password of the same column, bound to nothing: txtConfirm.
    Confirmation,
    /// A number with arrows beside it.
    Number,
    /// A choice from a list; the statement's value stands in a hidden text beside it.
    List,
    /// Yes or no, with a hidden text of 1 or 0 beside it.
    Flag,
    /// A hidden text alone.
    Hidden,
};

/// A button behind an entry. Without a tool-tip its picture names it.
struct SideButton {
    const char* name = nullptr;
    const char* image = nullptr;
    const char* toolTip = "";
};

/// The limits of a number: the arrows' index among spnUpDn, their range, and the label that shows it, by its index
/// among lblMinMax.
struct Limits {
    int spinner = -1;
    std::int32_t minimum = 0;
    std::int32_t maximum = 0;
    int label = -1;
    const char* text = nullptr;
};

/// One property of an item pane: everything about a catalog column that its pane shows.
struct Property {
    const char* prompt = "";
    const char* column = "";
    EntryKind kind = EntryKind::Text;
    /// Index among txtProperty; inserts follow it.
    int index = 0;
    const char* toolTip = "";
    Limits limits = {};
    /// A fixed list.
    std::vector<const char*> items = {};
    SideButton button = {};
    /// A change of it makes the row another one.
    bool isKey = false;
    /// Never open to entry.
    bool isFixed = false;
};

/// The controls of an item pane, made from its table of properties: prompts, and behind them entries and limits.
/// Control arrays are those of their names: txtProperty, cboDropdown, chkProperty, spnUpDn, lblMinMax. The object name
/// of a control is its name, "_" and its column or index.
class PropertySheet : public QWidget
{
    Q_OBJECT

public:
    explicit PropertySheet(std::vector<Property> properties, QWidget* parent = nullptr);
    ~PropertySheet() override;

    const std::vector<Property>& properties() const { return m_properties; }
    const Controls& controls() const { return m_controls; }

    /// The text that statements read of a column; the hidden one of a list or flag.
    const Control& text(const QString& column) const { return m_texts.Item(column); }
    DropDown& list(const QString& column) const;
    UpDown& spinner(int index) const;
    QLabel& minMax(int index) const;
    QPushButton& button(const QString& name) const;
    /// What the user works with for a column: its list or check box where it has one, else its text. The confirmation
    /// of a password goes by its own name.
    QWidget& entry(const QString& column) const;

    /// Puts buttons below the last property.
    void addActions(const std::vector<QWidget*>& buttons);

    /// Tells the entries what the driver says of their columns. Raises 3265 for a column that the table lacks.
    void setColumns(const modDatabase::FieldInfos& columns);

signals:
    void TextChanged(const QString& column);
    void ListChanged(const QString& column);
    void FlagClicked(const QString& column);
    void ButtonClicked(const QString& name);

protected:
    void changeEvent(QEvent* event) override;

private:
    void followPalette();
    void addRow(const Property& property);
    void addFlag(const Property& property, QHBoxLayout& line, QLabel* prompt);
    /// Names the entry, and gives the label of its prompt, or null.
    QLabel* promptOf(const Property& property, QWidget& entry);
    QWidget* makeEntry(const Property& property, QHBoxLayout& row);
    QWidget* makeText(const Property& property, bool hidden);
    PropertyEdit* makeConfirmation(const Property& property);
    void addControl(const char* name, int index, const QString& tag, QWidget* widget);

    std::vector<Property> m_properties;
    Controls m_controls;
    CCtrls m_texts;
    QHash<QString, QWidget*> m_entries;
    /// The second entry of a password, and the column that it is entered for.
    PropertyEdit* m_confirmation = nullptr;
    QString m_confirmed;
    QGridLayout* m_rows;
    /// The block of flags that the next flag belongs to, or null.
    QGridLayout* m_flags = nullptr;
    int m_flagColumns = 0;
};
