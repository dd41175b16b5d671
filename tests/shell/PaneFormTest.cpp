#include "PaneForm.h"

#include "MainWindowFixture.h"
#include "PaneRegistry.h"
#include "Settings.h"
#include "modGUI.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{

/// A pane with a list over its whole body and an entry that is hidden by design.
class SamplePane : public PaneForm
{
public:
    SamplePane() : PaneForm(u"frmSample"_s), lvw(new QListWidget(this)), mirror(new QLineEdit(this))
    {
        lblTitle()->setText(u"Sample"_s);
        lblDescription()->setText(u"What the sample is for."_s);
        lvw->setObjectName(u"lvw"_s);
        mirror->setObjectName(u"txtMirror"_s);
        mirror->hide();
        body()->addWidget(mirror);
        body()->addWidget(lvw);
        modGUI::PaneFormLoad(*this);
    }

    void Display() {}

    QListWidget* lvw;
    QLineEdit* mirror;
};

class PanesLook : public MainWindowTest
{
protected:
    void TearDown() override
    {
        QApplication::setPalette(m_palette);
        MainWindowTest::TearDown();
        panes::remove(u"frmSample"_s);
    }

    SamplePane& show(const QStringList& commandLine = {})
    {
        SamplePane& pane = display(commandLine);
        QCoreApplication::processEvents();
        return pane;
    }
    /// As it is when the pane has been displayed, before anything else has been seen to.
    SamplePane& display(const QStringList& commandLine = {})
    {
        panes::Operations operations;
        operations.Display = panes::call(&SamplePane::Display);
        panes::add(
            u"frmSample"_s, [] { return new SamplePane; }, operations);
        start(commandLine);
        window->PaneDisplay(u"frmSample"_s);
        return static_cast<SamplePane&>(forms::get(u"frmSample"_s));
    }
    static void chooseClassic() { settings::save(u"Options"_s, u"Win98"_s, 0); }

    static QRect inPane(const PaneForm& pane, const QWidget& control)
    {
        return {control.mapTo(&pane, QPoint()), control.size()};
    }

private:
    QPalette m_palette = QApplication::palette();
};

} // namespace

TEST_F(PanesLook, TheWebStyleShowsCornerPictureAndDescription)
{
    const SamplePane& pane = show();
    EXPECT_TRUE(pane.imgCorner()->isVisible());
    EXPECT_TRUE(pane.lblDescription()->isVisible());
}

TEST_F(PanesLook, TheClassicStyleHidesBothOnASurfaceOfTheButtonsColour)
{
    chooseClassic();
    const SamplePane& pane = show();
    EXPECT_FALSE(pane.imgCorner()->isVisible());
    EXPECT_FALSE(pane.lblDescription()->isVisible());
    EXPECT_EQ(pane.backgroundRole(), QPalette::Button);
    EXPECT_TRUE(pane.autoFillBackground());
    EXPECT_EQ(window->backgroundRole(), QPalette::Button);
}

TEST_F(PanesLook, TheClassicStyleStretchesTheListOverTheFreedSpace)
{
    QRect web;
    {
        const SamplePane& pane = show();
        web = inPane(pane, *pane.lvw);
        quit();
    }
    chooseClassic();
    const SamplePane& pane = show();
    const QRect classic = inPane(pane, *pane.lvw);
    EXPECT_LT(classic.top(), web.top());
    EXPECT_EQ(classic.bottom(), web.bottom());
    pane.lblDescription()->clear();
    QCoreApplication::processEvents();
    EXPECT_EQ(inPane(pane, *pane.lvw), classic);
}

TEST_F(PanesLook, TheStyleIsThatOfTheTimeOfLoading)
{
    const SamplePane& pane = show();
    chooseClassic();
    window->PaneDisplay(u"frmSample"_s);
    EXPECT_TRUE(pane.imgCorner()->isVisible());
}

TEST_F(PanesLook, TheCornerPictureStaysInTheLowerRightCornerBehindEverything)
{
    const SamplePane& pane = show();
    for (const QSize size : {QSize(1000, 700), QSize(400, 300)}) {
        window->resize(size);
        QCoreApplication::processEvents();
        EXPECT_EQ(pane.imgCorner()->geometry().bottomRight(), pane.rect().bottomRight());
        EXPECT_GT(pane.imgCorner()->width(), 0);
    }
    for (const QObject* child : pane.children()) {
        if (child->isWidgetType()) {
            EXPECT_EQ(child, pane.imgCorner()) << "the bottom of the stack is not the corner picture";
            break;
        }
    }
}

TEST_F(PanesLook, TheCornerPictureNeverReachesIntoTheTitle)
{
    const SamplePane& pane = show();
    window->resize(500, 200);
    QCoreApplication::processEvents();
    EXPECT_FALSE(pane.imgCorner()->geometry().intersects(pane.lblTitle()->geometry()));
}

TEST_F(PanesLook, WhatDoesNotFitIsReachedByScrolling)
{
    SamplePane& pane = show();
    pane.lvw->setMinimumHeight(2000);
    auto* page = pane.findChild<QScrollArea*>();
    ASSERT_TRUE(page);
    EXPECT_TRUE(QTest::qWaitFor([&] { return page->verticalScrollBar()->isVisible(); }));
    EXPECT_GE(pane.lvw->height(), 2000);
    EXPECT_EQ(pane.lblTitle()->y(), 0);

    pane.lvw->setMinimumHeight(0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !page->verticalScrollBar()->isVisible(); }));
}

TEST_F(PanesLook, TheWordDebugShowsHiddenControls)
{
    EXPECT_TRUE(show({u"quorvane"_s, u"DEBUG"_s}).mirror->isVisible());
}

TEST_F(PanesLook, WithoutTheWordDebugHiddenControlsStayHidden)
{
    EXPECT_FALSE(show({u"quorvane"_s, u"debug"_s}).mirror->isVisible());
}

TEST_F(PanesLook, AnEmptyDescriptionTakesNoRoom)
{
    const SamplePane& pane = show();
    const int described = inPane(pane, *pane.lvw).top();
    pane.lblDescription()->clear();
    QCoreApplication::processEvents();
    EXPECT_LT(inPane(pane, *pane.lvw).top(), described);
}

TEST_F(PanesLook, ADescriptionIsAsHighAsItsTextWhileTheBodyHasItsRoom)
{
    const SamplePane& pane = show();
    const QLabel& description = *pane.lblDescription();
    const int line = description.fontMetrics().lineSpacing();
    const int oneLine = inPane(pane, *pane.lvw).top();
    pane.lblDescription()->setText(u"one\ntwo\nthree"_s);
    QCoreApplication::processEvents();
    EXPECT_EQ(inPane(pane, *pane.lvw).top(), oneLine + 2 * line);
    EXPECT_EQ(description.visibleRegion().boundingRect(), description.rect());
    EXPECT_EQ(description.height(), 3 * line);
}

TEST_F(PanesLook, NothingMovesOnceAPaneShows)
{
    const SamplePane& pane = display();
    const QRect atOnce = inPane(pane, *pane.lvw);
    QCoreApplication::processEvents();
    EXPECT_EQ(inPane(pane, *pane.lvw), atOnce);
}

TEST_F(PanesLook, ADescriptionOfManyLinesScrolls)
{
    const SamplePane& pane = show();
    const QLabel& description = *pane.lblDescription();
    pane.lblDescription()->setText(QStringList(200, u"line"_s).join('\n'_L1));
    QCoreApplication::processEvents();
    EXPECT_LT(description.visibleRegion().boundingRect().height(), description.height());
    EXPECT_EQ(description.height(), 200 * description.fontMetrics().lineSpacing());
    EXPECT_GE(pane.lvw->visibleRegion().boundingRect().height(), pane.lvw->sizeHint().height());
    EXPECT_EQ(inPane(pane, description).left(), inPane(pane, *pane.lvw).left());

    window->resize(window->width(), 300);
    QCoreApplication::processEvents();
    EXPECT_LE(description.visibleRegion().boundingRect().height(), pane.height() / 3);
    EXPECT_GT(description.visibleRegion().boundingRect().height(), 0);
}

TEST_F(PanesLook, ATitleLongerThanThePaneDoesNotWidenIt)
{
    const SamplePane& pane = show();
    const QString title(500, u'W');
    const int width = pane.width();
    pane.lblTitle()->setText(title);
    QCoreApplication::processEvents();
    EXPECT_EQ(pane.width(), width);
    EXPECT_EQ(pane.lblTitle()->width(), width);
    EXPECT_EQ(pane.lblTitle()->text(), title);
    EXPECT_LE(pane.minimumSizeHint().width(), width);
}

TEST_F(PanesLook, EntriesStandOutFromThePageInDarkPalettesToo)
{
    const SamplePane& pane = show();
    EXPECT_EQ(pane.backgroundRole(), QPalette::Base);

    QPalette dark = QApplication::palette();
    dark.setColor(QPalette::Window, QColor(48, 48, 52));
    dark.setColor(QPalette::Base, QColor(30, 30, 33));
    QApplication::setPalette(dark);
    QCoreApplication::processEvents();
    EXPECT_EQ(pane.backgroundRole(), QPalette::Window);
}
