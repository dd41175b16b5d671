#pragma once

#include "Form.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <utility>

/// The panes that the main window can show, by name, with the operations that it may call on each.
namespace panes
{

enum class Operation { Display, AddNew, Edit, Delete };

/// One operation of a pane: how many key parts it takes and the call itself.
struct Call {
    int count = 0;
    std::function<void(Form&, const QStringList&)> run;
    explicit operator bool() const { return static_cast<bool>(run); }
};

struct Operations {
    Call Display = {};
    Call AddNew = {};
    Call Edit = {};
    Call Delete = {};
};

namespace detail
{
template <class T>
using KeyPart = const QString&;

template <class Pane, class... Keys, std::size_t... I>
Call call(void (Pane::*method)(Keys...), std::index_sequence<I...>)
{
    return {static_cast<int>(sizeof...(Keys)), [method](Form& form, [[maybe_unused]] const QStringList& keys) {
                (static_cast<Pane&>(form).*method)(keys.at(static_cast<int>(I))...);
            }};
}
} // namespace detail

/// The operation that a method of a pane implements; its parameters are the key parts, datasource first.
template <class Pane, class... Keys>
Call call(void (Pane::*method)(Keys...))
{
    return detail::call(method, std::index_sequence_for<Keys...>());
}

/// Registers a pane: the factory of its form and its operations.
void add(const QString& name, forms::Factory factory, Operations operations);
/// Takes a pane out; the main window shows nothing for its name from then on.
void remove(const QString& name);
bool isKnown(const QString& name);

/// How many key parts an operation of a pane takes, or -1 where the pane does not have it.
int count(const QString& name, Operation operation);

/// Calls an operation with the leading key parts. Raises 5 where the pane lacks it, 9 for too few key parts.
void run(const QString& name, Operation operation, const QStringList& keys);

/// Panes that open in edit state when the option "Items" is on.
bool opensInEditState(const QString& name);

} // namespace panes
