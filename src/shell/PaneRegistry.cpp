#include "PaneRegistry.h"

#include "RuntimeError.h"

#include <QHash>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace panes
{

namespace
{

QHash<QString, Operations>& registry()
{
    static QHash<QString, Operations> operations;
    return operations;
}

Call find(const QString& name, Operation operation)
{
    const auto pane = registry().constFind(name);
    if (pane == registry().cend())
        return {};
    switch (operation) {
    case Operation::Display:
        return pane->Display;
    case Operation::AddNew:
        return pane->AddNew;
    case Operation::Edit:
        return pane->Edit;
    case Operation::Delete:
        return pane->Delete;
    }
    return {};
}

} // namespace

void add(const QString& name, forms::Factory factory, Operations operations)
{
    forms::add(name, std::move(factory));
    registry().insert(name, std::move(operations));
}

void remove(const QString& name)
{
    registry().remove(name);
}

bool isKnown(const QString& name)
{
    return registry().contains(name);
}

int count(const QString& name, Operation operation)
{
    const Call call = find(name, operation);
    return call ? call.count : -1;
}

void run(const QString& name, Operation operation, const QStringList& keys)
{
    const Call call = find(name, operation);
    if (!call)
        throw RuntimeError(ErrorNumber::FailedCall);
    if (keys.size() < call.count)
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    Form& form = forms::get(name);
    const forms::Running running(form);
    call.run(form, keys.first(call.count));
}

bool opensInEditState(const QString& name)
{
    // "frmDBPV" is no pane; it stands in the list beside the name that was meant.
    static const std::array names = {
        u"frmFile"_s, u"frmField"_s,  u"frmDatabase"_s, u"frmTable"_s, u"frmColumn"_s,
        u"frmUser"_s, u"frmTBLPRV"_s, u"frmDBPV"_s,     u"frmDBPRV"_s,
    };
    return std::find(names.begin(), names.end(), name) != names.end();
}

} // namespace panes
