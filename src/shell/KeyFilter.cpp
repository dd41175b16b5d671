#include "KeyFilter.h"

#include "Passwords.h"

#include <QKeyEvent>
#include <QLineEdit>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace
{

constexpr QLatin1StringView nameCharacters = "01234567890_-abcdefghijklmnopqrstuvwxyz"_L1;

/// The key if its one character is in the set, in whatever case; nothing otherwise.
QString within(const QString& key, QLatin1StringView allowed)
{
    return key.size() == 1 && allowed.contains(key, Qt::CaseInsensitive) && key.at(0).unicode() < 128 ? key : QString();
}

QString number(const EntryState& entry, const QString& key, bool takesPoint)
{
    if (key == "-"_L1)
        return entry.selectionStart == 0 ? key : QString();
    if (takesPoint && key == "."_L1)
        return entry.text.contains('.'_L1) ? QString() : key;
    return within(key, "0123456789"_L1);
}

QString character(const QString& column, const QString& key)
{
    static constexpr std::array unfiltered{"REMARKS"_L1, "DEFAULT_VALUE"_L1, "CONNECTION_STRING"_L1,
                                           "FILE_SPECIFICATION"_L1, "DEFAULT_DIRECTORY"_L1};
    if (std::find(unfiltered.begin(), unfiltered.end(), column) != unfiltered.end())
        return key;
    if (passwords::isPassword(column))
        return modGUI::nameCharacter(key);
    const QString named = key == " "_L1 ? u"_"_s : key;
    return column == "DISPLAY_NAME"_L1 ? within(named, nameCharacters) : modGUI::nameCharacter(named);
}

} // namespace

EntryState EntryState::of(const QLineEdit& entry)
{
    return {entry.text(), entry.hasSelectedText() ? entry.selectionStart() : entry.cursorPosition(),
            entry.selectedText().size()};
}

bool modGUI::typesCharacter(const QKeyEvent& key)
{
    const bool isCommand = key.modifiers().testFlag(Qt::ControlModifier) != key.modifiers().testFlag(Qt::AltModifier);
    const QString text = key.text();
    return !text.isEmpty() && text.at(0) >= u' ' && text.at(0) != u'\x7f' && !isCommand;
}

QString modGUI::ControlKeyPress(const EntryState& entry, const QString& key, const modDatabase::FieldInfo& field)
{
    if (key.isEmpty() || key.at(0) < u' ')
        return key;
    if (entry.text.size() >= field.inputWidth() && entry.selectionLength == 0)
        return {};
    switch (field.Type) {
    case dao::dbBoolean:
        return within(key, "01"_L1);
    case dao::dbByte:
        return within(key, "0123456789"_L1);
    case dao::dbInteger:
    case dao::dbBigInt:
        return number(entry, key, false);
    case dao::dbLong:
    case dao::dbCurrency:
    case dao::dbSingle:
    case dao::dbDouble:
    case dao::dbDecimal:
    case dao::dbFloat:
        return number(entry, key, true);
    case dao::dbDate:
    case dao::dbText:
    case dao::dbGUID:
    case dao::dbChar:
    case dao::dbTime:
    case dao::dbTimeStamp:
        return character(field.Name.toUpper(), key);
    default:
        return key;
    }
}

QString modGUI::nameCharacter(const QString& key)
{
    return within(key, nameCharacters).toUpper();
}

QString modGUI::cutToColumn(const QString& text, const modDatabase::FieldInfo& field)
{
    const bool cuts = field.Type == dao::dbText || field.Type == dao::dbChar;
    if (!cuts || text.size() <= field.Size)
        return text;
    qsizetype size = field.Size;
    if (size > 0 && text.at(size - 1).isHighSurrogate())
        --size;
    return text.left(size);
}

void modGUI::cutToColumn(QLineEdit& entry, const modDatabase::FieldInfo& field)
{
    const QString fitting = cutToColumn(entry.text(), field);
    if (fitting == entry.text())
        return;
    const int caret = entry.cursorPosition();
    entry.setText(fitting);
    entry.setCursorPosition(caret);
}
