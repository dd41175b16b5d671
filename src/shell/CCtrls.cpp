#include "CCtrls.h"

#include "DropDown.h"
#include "PropertyEntry.h"

#include <QCheckBox>
#include <QLabel>

using namespace Qt::StringLiterals;

QString Control::Value() const
{
    if (const auto* edit = qobject_cast<QLineEdit*>(Widget))
        return edit->text();
    if (const auto* memo = qobject_cast<PropertyMemo*>(Widget))
        return memo->text();
    if (const auto* list = qobject_cast<QComboBox*>(Widget))
        return list->currentText();
    if (const auto* check = qobject_cast<QCheckBox*>(Widget))
        return check->isChecked() ? u"1"_s : u"0"_s;
    if (const auto* label = qobject_cast<QLabel*>(Widget))
        return label->text();
    return {};
}

void Control::setValue(const QString& value) const
{
    if (auto* edit = qobject_cast<QLineEdit*>(Widget))
        edit->setText(value);
    else if (auto* memo = qobject_cast<PropertyMemo*>(Widget))
        memo->setText(value);
    else if (auto* list = qobject_cast<DropDown*>(Widget))
        list->select(value);
    else if (auto* check = qobject_cast<QCheckBox*>(Widget))
        check->setChecked(value == "1"_L1);
    else if (auto* label = qobject_cast<QLabel*>(Widget))
        label->setText(value);
}

const Control* CCtrls::find(const QString& key) const
{
    const CCtrl* found = m_controls.find(key);
    return found ? &found->Ctl : nullptr;
}

void CCtrls::BindControls(const Controls& form, const QString& prototype)
{
    for (const Control& control : form) {
        if (control.Name == prototype)
            add(control.Tag.isEmpty() ? control.Name + '('_L1 + QString::number(control.Index) + ')'_L1 : control.Tag,
                control);
    }
}
