#pragma once

#include <QString>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

/// A window or pane that exists once under its name: loaded on first touch, hidden and shown with its state kept, and
/// gone when it is unloaded, so that the next touch loads it anew.
class Form : public QWidget
{
public:
    /// The form's name, as "frmWelcome"; it is the object name too.
    explicit Form(const QString& name, QWidget* parent = nullptr);
    ~Form() override;

    QString name() const { return objectName(); }
};

/// The forms that are loaded. A form is made by its factory on first touch.
namespace forms {

using Factory = std::function<Form*()>;

/// Registers the factory of a form. Registering a name again replaces the factory.
void add(const QString& name, Factory factory);
bool isKnown(const QString& name);

/// The loaded form of that name, or null.
Form* loaded(const QString& name);
/// The form of that name, loading it first if need be. Raises 5 for an unknown name.
Form& get(const QString& name);

/// Unloads a form; a form whose code is running (see Running) goes when that code has ended. No effect if not loaded.
void unload(const QString& name);
/// Unloads every form whose name is not listed.
void unloadAllBut(const QStringList& names);

/// Marks the code of a form as running for as long as it lives, and tells whether the form has been unloaded meanwhile.
class Running
{
public:
    explicit Running(Form& form);
    ~Running();
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

private:
    Form* m_form;
};

} // namespace forms
