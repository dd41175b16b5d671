#include "Form.h"

#include "MousePointer.h"
#include "RuntimeError.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QEventLoop>
#include <QScopeGuard>

#include <algorithm>
#include <map>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

namespace forms
{

/// The loaded forms in load order, the factories, and the forms that are unloaded and not yet deleted.
class Registry
{
public:
    static Registry& instance()
    {
        static Registry registry;
        return registry;
    }

    void add(const QString& name, Factory factory) { m_factories[name] = std::move(factory); }
    bool isKnown(const QString& name) const { return m_factories.contains(name); }

    Form* loaded(const QString& name) const
    {
        const auto found =
            std::find_if(m_loaded.begin(), m_loaded.end(), [&](const Form* form) { return form->name() == name; });
        return found == m_loaded.end() ? nullptr : *found;
    }

    QStringList loadedNames() const
    {
        QStringList names;
        for (const Form* form : m_loaded)
            names.append(form->name());
        return names;
    }

    Form& get(const QString& name)
    {
        Form* form = loaded(name);
        return form ? *form : load(name);
    }

    /// Called by the constructor of every form: only one that a factory is being asked for is registered.
    void constructed(Form* form)
    {
        if (!m_making.contains(form->name()) || loaded(form->name()))
            return;
        m_loaded.push_back(form);
        form->m_making = form->m_running = 1;
    }

    void destroyed(Form* form)
    {
        std::erase(m_loaded, form);
        std::erase(m_unloaded, form);
    }

    void unload(Form* form)
    {
        if (form->m_unloading)
            return;
        form->m_unloading = true;
        const QPointer<Form> alive = form;
        const auto finish = qScopeGuard([&] {
            if (alive)
                takeOut(alive);
        });
        form->unloading();
    }

    void unloadAllBut(const QStringList& names)
    {
        std::vector<QPointer<Form>> leaving;
        for (Form* form : m_loaded)
            if (!names.contains(form->name()))
                leaving.emplace_back(form);
        for (const auto& form : leaving)
            if (form && !form->isUnloaded())
                unload(form);
    }

    void codeEnded(Form* form)
    {
        if (form->isUnloaded())
            discard(form);
    }

private:
    Form& load(const QString& name)
    {
        const auto factory = m_factories.find(name);
        if (factory == m_factories.end())
            throw RuntimeError(ErrorNumber::FailedCall, RuntimeError::usualDescription(ErrorNumber::FailedCall) +
                                                            ": there is no form \"" + name + '"');
        endWithApplication();

        QPointer<Form> form = make(name, factory->second);
        if (!form)
            throw RuntimeError(ErrorNumber::ObjectNotSet);
        {
            const Running running(*form);
            if (!form->isUnloaded() && loaded(name) != form)
                m_loaded.push_back(form);
            // What kept the form while it was being made.
            form->m_running -= std::exchange(form->m_making, 0);
        }
        if (!form || form->isUnloaded())
            throw RuntimeError(ErrorNumber::ObjectNotSet);
        return *form;
    }

    Form* make(const QString& name, const Factory& factory)
    {
        m_making.append(name);
        const auto made = qScopeGuard([&] { m_making.removeOne(name); });
        std::unique_ptr<Form> form(factory());
        if (form && form->name() != name)
            throw std::logic_error("The factory of \"" + name.toStdString() + "\" makes another form");
        return form.release();
    }

    void takeOut(Form* form)
    {
        std::erase(m_loaded, form);
        m_unloaded.push_back(form);
        form->m_unloaded = true;
        form->hide();
        form->setEnabled(false);
        if (form->m_running == 0)
            discard(form);
    }

    /// Deletes the form when control is back in the event loop: a button of the form itself may be on the stack.
    /// Without its parent it is found by nobody who looks for its successor.
    void discard(Form* form)
    {
        form->setParent(nullptr);
        form->deleteLater();
    }

    /// What is left when the application ends has no event loop any more that would delete it.
    void endWithApplication()
    {
        if (std::exchange(m_endsWithApplication, true))
            return;
        qAddPostRoutine([] { instance().deleteAll(); });
    }

    void deleteAll()
    {
        m_endsWithApplication = false;
        for (auto* list : {&m_loaded, &m_unloaded})
            while (!list->empty())
                std::unique_ptr<Form>(list->back()).reset();
    }

    std::map<QString, Factory> m_factories;
    QStringList m_making;
    std::vector<Form*> m_loaded;
    std::vector<Form*> m_unloaded;
    bool m_endsWithApplication = false;
};

} // namespace forms

Form::Form(const QString& name, QWidget* parent) : QWidget(parent), m_name(name)
{
    setObjectName(name);
    forms::Registry::instance().constructed(this);
}

Form::~Form()
{
    forms::Registry::instance().destroyed(this);
    if (m_modal)
        m_modal->quit();
}

void Form::requireLoaded() const
{
    if (m_unloaded)
        throw RuntimeError(ErrorNumber::ObjectNotSet);
}

void Form::showModal(QWidget* owner)
{
    const mousepointer::OfDialog pointer;
    const QPointer<Form> alive = this;
    setParent(owner, Qt::Dialog);
    setWindowModality(Qt::ApplicationModal);

    // A second showing over the first one ends both when it ends.
    QEventLoop loop;
    QEventLoop* const outer = std::exchange(m_modal, &loop);
    show();
    activateWindow();
    loop.exec(QEventLoop::DialogExec);
    if (alive)
        m_modal = outer;
    if (outer)
        outer->quit();
}

void Form::setVisible(bool visible)
{
    QWidget::setVisible(visible);
    if (!visible && m_modal)
        m_modal->quit();
}

void Form::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    if (event->isAccepted() && forms::loaded(m_name) == this)
        forms::unload(m_name);
}

void forms::add(const QString& name, Factory factory)
{
    Registry::instance().add(name, std::move(factory));
}

bool forms::isKnown(const QString& name)
{
    return Registry::instance().isKnown(name);
}

Form* forms::loaded(const QString& name)
{
    return Registry::instance().loaded(name);
}

Form& forms::get(const QString& name)
{
    return Registry::instance().get(name);
}

QStringList forms::loadedNames()
{
    return Registry::instance().loadedNames();
}

void forms::unload(const QString& name)
{
    if (Form* form = loaded(name))
        Registry::instance().unload(form);
}

void forms::unloadAllBut(const QStringList& names)
{
    Registry::instance().unloadAllBut(names);
}

forms::Running::Running(Form& form) : m_form(&form)
{
    ++form.m_running;
}

forms::Running::~Running()
{
    if (m_form && --m_form->m_running == 0)
        Registry::instance().codeEnded(m_form);
}

void forms::Running::check() const
{
    if (!m_form || m_form->isUnloaded())
        throw RuntimeError(ErrorNumber::ObjectNotSet);
}
