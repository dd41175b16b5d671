#include "Form.h"

#include "MousePointer.h"
#include "RuntimeError.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>

namespace
{

/// A form that reports its life.
class Sample : public Form
{
public:
    explicit Sample(const QString& name, QWidget* parent = nullptr) : Form(name, parent)
    {
        ++made;
        ++alive;
    }
    ~Sample() override { --alive; }

    int state = 0;
    std::function<void(Sample&)> whenUnloading;

    static inline int made = 0;
    static inline int alive = 0;
    static inline QStringList unloaded;

protected:
    void unloading() override
    {
        unloaded.append(name());
        if (whenUnloading)
            whenUnloading(*this);
    }
};

class Forms : public testing::Test
{
protected:
    void SetUp() override
    {
        Sample::made = 0;
        Sample::unloaded.clear();
        ASSERT_EQ(Sample::alive, 0);
        for (const char* name : {"frmOne", "frmTwo", "frmThree"})
            forms::add(name, [name] { return new Sample(name); });
    }

    void TearDown() override
    {
        forms::unloadAllBut({});
        settle();
        EXPECT_EQ(Sample::alive, 0);
        EXPECT_TRUE(forms::loadedNames().isEmpty());
    }

    /// Lets what waits for the event loop be deleted.
    static void settle() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    static Sample& get(const QString& name) { return dynamic_cast<Sample&>(forms::get(name)); }

    template <class F>
    static std::optional<ErrorNumber> raised(F&& f)
    {
        try {
            f();
            return std::nullopt;
        } catch (const RuntimeError& error) {
            return error.number();
        }
    }
};

} // namespace

TEST_F(Forms, AFormIsLoadedOnFirstTouchAndKeepsItsStateWhileHidden)
{
    EXPECT_TRUE(forms::isKnown("frmOne"));
    EXPECT_EQ(forms::loaded("frmOne"), nullptr);
    Sample& form = get("frmOne");
    EXPECT_EQ(form.name(), "frmOne");
    EXPECT_EQ(form.objectName(), "frmOne");
    form.state = 5;
    form.show();
    form.hide();
    EXPECT_EQ(&get("frmOne"), &form);
    EXPECT_EQ(forms::loaded("frmOne"), &form);
    EXPECT_EQ(get("frmOne").state, 5);
    EXPECT_EQ(Sample::made, 1);
}

TEST_F(Forms, AnUnknownFormRaises5)
{
    EXPECT_FALSE(forms::isKnown("frmDBPV"));
    EXPECT_EQ(raised([] { forms::get("frmDBPV"); }), ErrorNumber::FailedCall);
    EXPECT_EQ(raised([] { forms::get("FRMONE"); }), ErrorNumber::FailedCall);
    forms::unload("frmDBPV");
}

TEST_F(Forms, TouchingAnUnloadedFormLoadsItAnew)
{
    get("frmOne").state = 5;
    forms::unload("frmOne");
    EXPECT_EQ(forms::loaded("frmOne"), nullptr);
    EXPECT_EQ(get("frmOne").state, 0);
    EXPECT_EQ(Sample::made, 2);
    settle();
    EXPECT_EQ(Sample::alive, 1);
}

TEST_F(Forms, RegisteringANameAgainReplacesTheFactory)
{
    forms::add("frmOne", []() -> Form* {
        auto form = std::make_unique<Sample>("frmOne");
        form->state = 9;
        return form.release();
    });
    EXPECT_EQ(get("frmOne").state, 9);
}

TEST_F(Forms, AllButTheNamedAreUnloadedInLoadOrder)
{
    get("frmThree");
    get("frmOne");
    get("frmTwo");
    EXPECT_EQ(forms::loadedNames(), (QStringList{"frmThree", "frmOne", "frmTwo"}));
    forms::unloadAllBut({"frmOne", "mdiMain"});
    EXPECT_EQ(Sample::unloaded, (QStringList{"frmThree", "frmTwo"}));
    EXPECT_EQ(forms::loadedNames(), QStringList("frmOne"));
}

TEST_F(Forms, AFormThatUnloadsAnotherInItsUnloadingIsPassedOver)
{
    get("frmOne").whenUnloading = [](Sample&) { forms::unload("frmTwo"); };
    get("frmTwo");
    get("frmThree");
    forms::unloadAllBut({});
    EXPECT_EQ(Sample::unloaded, (QStringList{"frmOne", "frmTwo", "frmThree"}));
}

TEST_F(Forms, WhileItIsBeingUnloadedAFormStillStands)
{
    Sample& form = get("frmOne");
    form.show();
    bool stood = false;
    form.whenUnloading = [&](Sample& sample) {
        stood = forms::loaded("frmOne") == &sample && sample.isVisible() && !sample.isUnloaded();
        forms::unload("frmOne");
    };
    forms::unload("frmOne");
    EXPECT_TRUE(stood);
    EXPECT_EQ(Sample::unloaded, QStringList("frmOne"));
}

TEST_F(Forms, AFailureInItsUnloadingUnloadsItAllTheSame)
{
    get("frmOne").whenUnloading = [](Sample&) { throw RuntimeError(ErrorNumber::FailedCall); };
    EXPECT_EQ(raised([] { forms::unload("frmOne"); }), ErrorNumber::FailedCall);
    EXPECT_EQ(forms::loaded("frmOne"), nullptr);
    settle();
    EXPECT_EQ(Sample::alive, 0);
}

TEST_F(Forms, AnUnloadedFormIsHiddenAndFoundByNobody)
{
    QWidget window;
    Sample& form = get("frmOne");
    form.setParent(&window);
    auto* button = new QPushButton(&form);
    button->setObjectName("cmdOK");
    window.show();
    form.show();
    forms::unload("frmOne");
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(window.findChild<QWidget*>("frmOne"), nullptr);
    EXPECT_EQ(window.findChild<QPushButton*>("cmdOK"), nullptr);
}

TEST_F(Forms, AFormDeletedByItsParentLeavesTheRegistry)
{
    auto window = std::make_unique<QWidget>();
    get("frmOne").setParent(window.get());
    window.reset();
    EXPECT_EQ(Sample::alive, 0);
    EXPECT_EQ(forms::loaded("frmOne"), nullptr);
    EXPECT_EQ(get("frmOne").state, 0);
}

TEST_F(Forms, AFormWhoseCodeIsRunningGoesWhenThatCodeHasEnded)
{
    Sample& form = get("frmOne");
    form.show();
    {
        const forms::Running outer(form);
        {
            const forms::Running inner(form);
            outer.check();
            form.requireLoaded();
            forms::unload("frmOne");
            EXPECT_FALSE(form.isVisible());
            EXPECT_TRUE(form.isUnloaded());
            EXPECT_EQ(forms::loaded("frmOne"), nullptr);
            EXPECT_EQ(raised([&] { inner.check(); }), ErrorNumber::ObjectNotSet);
        }
        settle();
        ASSERT_EQ(Sample::alive, 1);
        EXPECT_EQ(raised([&] { outer.check(); }), ErrorNumber::ObjectNotSet);
        EXPECT_EQ(raised([&] { form.requireLoaded(); }), ErrorNumber::ObjectNotSet);
    }
    settle();
    EXPECT_EQ(Sample::alive, 0);
}

TEST_F(Forms, ANewOneStandsBesideAnUnloadedOneWhoseCodeIsRunning)
{
    Sample& old = get("frmOne");
    const forms::Running running(old);
    forms::unload("frmOne");
    Sample& fresh = get("frmOne");
    EXPECT_NE(&fresh, &old);
    fresh.requireLoaded();
    EXPECT_TRUE(old.isUnloaded());
}

TEST_F(Forms, RunningOutlivesAFormDeletedByItsParent)
{
    auto window = std::make_unique<QWidget>();
    Sample& form = get("frmOne");
    form.setParent(window.get());
    const forms::Running running(form);
    window.reset();
    EXPECT_EQ(raised([&] { running.check(); }), ErrorNumber::ObjectNotSet);
}

TEST_F(Forms, RunningAloneUnloadsNothing)
{
    Sample& form = get("frmOne");
    {
        const forms::Running running(form);
    }
    settle();
    EXPECT_EQ(forms::loaded("frmOne"), &form);
}

TEST_F(Forms, AButtonMayUnloadItsOwnForm)
{
    Sample& form = get("frmOne");
    auto* button = new QPushButton("Cancel", &form);
    QObject::connect(button, &QPushButton::clicked, &form, [] {
        forms::unload("frmOne");
        QCoreApplication::processEvents();
    });
    form.show();
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(forms::loaded("frmOne"), nullptr);
    EXPECT_TRUE(QTest::qWaitFor([] { return Sample::alive == 0; }));
}

TEST_F(Forms, AFormMayTouchItselfWhileItIsBeingMade)
{
    class Touching : public Sample
    {
    public:
        Touching() : Sample("frmTouching") { itself = &forms::get("frmTouching"); }
        Form* itself;
    };
    forms::add("frmTouching", [] { return new Touching; });
    auto& form = dynamic_cast<Touching&>(forms::get("frmTouching"));
    EXPECT_EQ(form.itself, &form);
    EXPECT_EQ(Sample::made, 1);
}

TEST_F(Forms, AFormThatFailsToLoadIsNotLoaded)
{
    class Failing : public Sample
    {
    public:
        Failing() : Sample("frmFailing") { throw RuntimeError(ErrorNumber::OdbcFailed); }
    };
    forms::add("frmFailing", []() -> Form* { return new Failing; });
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(raised([] { forms::get("frmFailing"); }), ErrorNumber::OdbcFailed);
        EXPECT_EQ(forms::loaded("frmFailing"), nullptr);
    }
    EXPECT_EQ(Sample::alive, 0);
}

TEST_F(Forms, AFormUnloadedWhileItIsBeingMadeRaises91)
{
    class Leaving : public Sample
    {
    public:
        Leaving() : Sample("frmLeaving")
        {
            forms::unloadAllBut({});
            settle();
        }
    };
    forms::add("frmLeaving", [] { return new Leaving; });
    EXPECT_EQ(raised([] { forms::get("frmLeaving"); }), ErrorNumber::ObjectNotSet);
    EXPECT_EQ(forms::loaded("frmLeaving"), nullptr);
    settle();
    EXPECT_EQ(Sample::alive, 0);
}

TEST_F(Forms, AFactoryThatMakesNothingOrAnotherFormFails)
{
    forms::add("frmNothing", []() -> Form* { return nullptr; });
    EXPECT_EQ(raised([] { forms::get("frmNothing"); }), ErrorNumber::ObjectNotSet);
    forms::add("frmWrong", [] { return new Sample("frmOther"); });
    EXPECT_THROW(forms::get("frmWrong"), std::logic_error);
    EXPECT_EQ(Sample::alive, 0);
}

TEST_F(Forms, AFormMadeByHandBelongsToItsMaker)
{
    {
        Sample form("frmOne");
        EXPECT_EQ(forms::loaded("frmOne"), nullptr);
        forms::unloadAllBut({});
        EXPECT_FALSE(form.isUnloaded());
        Sample& loaded = get("frmOne");
        EXPECT_NE(&loaded, &form);
        form.show();
        form.close();
        EXPECT_EQ(forms::loaded("frmOne"), &loaded);
    }
    EXPECT_NE(forms::loaded("frmOne"), nullptr);
}

TEST_F(Forms, ClosingALoadedFormByItsTitleBarUnloadsIt)
{
    Sample& form = get("frmOne");
    form.show();
    form.close();
    EXPECT_EQ(forms::loaded("frmOne"), nullptr);
    EXPECT_EQ(Sample::unloaded, QStringList("frmOne"));
}

TEST_F(Forms, AModalFormReturnsWhenItIsHidden)
{
    Sample& form = get("frmOne");
    QTimer::singleShot(0, &form, [&] {
        EXPECT_TRUE(form.isModal());
        EXPECT_EQ(QApplication::activeModalWidget(), &form);
        form.hide();
    });
    form.showModal();
    EXPECT_EQ(forms::loaded("frmOne"), &form);
    EXPECT_FALSE(form.isVisible());
}

TEST_F(Forms, AModalFormReturnsWhenItIsUnloaded)
{
    QWidget owner;
    Sample& form = get("frmOne");
    const forms::Running running(form);
    QTimer::singleShot(0, &form, [&] {
        EXPECT_EQ(form.parentWidget(), &owner);
        form.close();
    });
    form.showModal(&owner);
    EXPECT_TRUE(form.isUnloaded());
}

TEST_F(Forms, AModalFormReturnsWhenItIsDeleted)
{
    auto owner = std::make_unique<QWidget>();
    QTimer::singleShot(0, qApp, [&] { owner.reset(); });
    get("frmOne").showModal(owner.get());
    EXPECT_EQ(Sample::alive, 0);
}

TEST_F(Forms, AModalFormShownAgainOverItselfEndsBothShowings)
{
    Sample& form = get("frmOne");
    int ended = 0;
    QTimer::singleShot(0, &form, [&] {
        form.hide();
        QTimer::singleShot(0, &form, [&] { form.hide(); });
        form.showModal();
        ++ended;
    });
    form.showModal();
    EXPECT_EQ(ended, 1);
    EXPECT_FALSE(form.isVisible());
}

TEST_F(Forms, TheWaitPointerDoesNotShowOverAModalForm)
{
    mousepointer::set(mousepointer::Wait);
    Sample& form = get("frmOne");
    QTimer::singleShot(0, &form, [&] {
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        form.hide();
    });
    form.showModal();
    EXPECT_NE(QApplication::overrideCursor(), nullptr);
    mousepointer::set(mousepointer::Default);
}

TEST_F(Forms, WhatIsLeftGoesWithTheApplication)
{
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_EXIT(
        {
            get("frmOne").show();
            get("frmTwo");
            forms::unload("frmTwo");
            const bool before = Sample::alive == 2;
            std::unique_ptr<QCoreApplication>(QCoreApplication::instance()).release()->~QCoreApplication();
            std::_Exit(before && Sample::alive == 0 ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}
