#pragma once

#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>

class QEventLoop;

namespace forms
{
class Registry;
class Running;
} // namespace forms

/// A window or pane that exists once under its name: loaded on first touch, hidden and shown with its state kept, and
/// gone when it is unloaded, so that the next touch loads it anew. A form made by its factory belongs to the registry
/// below unless a Qt parent deletes it first; one made by hand is not registered and belongs to its maker.
class Form : public QWidget
{
public:
    /// The form's name, as "frmWelcome"; it is the object name too.
    explicit Form(const QString& name, QWidget* parent = nullptr);
    ~Form() override;

    QString name() const { return m_name; }

    /// True once the form has been unloaded while its code was running: it is hidden and goes when that code has ended.
    bool isUnloaded() const { return m_unloaded; }
    /// Raises 91 once the form has been unloaded. Code that goes on after it has yielded, shown a box or called another
    /// form asks this before it touches its own form again.
    void requireLoaded() const;

    /// Shows the form as a modal dialog over its owner and returns when it is hidden, unloaded or deleted.
    void showModal(QWidget* owner = nullptr);

    void setVisible(bool visible) override;

protected:
    /// Runs once when the form is being unloaded, while it still stands as it was: the place to save a position.
    virtual void unloading() {}

    /// Closing a loaded form by its title bar unloads it.
    void closeEvent(QCloseEvent* event) override;

private:
    friend class forms::Registry;
    friend class forms::Running;

    QString m_name;
    QEventLoop* m_modal = nullptr;
    int m_running = 0;
    int m_making = 0;
    bool m_unloading = false;
    bool m_unloaded = false;
};

/// The forms that are loaded. A form is made by its factory on first touch.
namespace forms
{

using Factory = std::function<Form*()>;

/// Registers the factory of a form. Registering a name again replaces the factory.
void add(const QString& name, Factory factory);
bool isKnown(const QString& name);

/// The loaded form of that name, or null. A form that is just being made counts as loaded from its Form constructor on.
Form* loaded(const QString& name);
/// The form of that name, loading it first if need be. Raises 5 for an unknown name, and 91 for a form that was
/// unloaded while it was being made.
Form& get(const QString& name);
/// The names of the loaded forms in the order in which they were loaded.
QStringList loadedNames();

/// Unloads a form: it is hidden and out of the registry at once and deleted when control is back in the event loop; a
/// form whose code is running (see Running) only after that code has ended. No effect if not loaded.
void unload(const QString& name);
/// Unloads every form whose name is not listed, in the order in which they were loaded.
void unloadAllBut(const QStringList& names);

/// Marks the code of a form as running for as long as it lives, and tells whether the form has been unloaded meanwhile.
class Running
{
public:
    explicit Running(Form& form);
    ~Running();
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

    /// Raises 91 when the form has been unloaded or deleted meanwhile.
    void check() const;

private:
    QPointer<Form> m_form;
};

} // namespace forms
