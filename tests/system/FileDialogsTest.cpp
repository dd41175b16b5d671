#include "FileDialogs.h"

#include "MousePointer.h"
#include "RuntimeError.h"
#include "ScriptedBoxes.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <optional>

using filedialogs::Mode;
using filedialogs::Request;

namespace
{

/// The real dialogs, with a user who acts each time that one shows.
class FileDialogs : public testing::Test
{
protected:
    using User = std::function<void(QFileDialog&)>;

    void SetUp() override
    {
        m_former = filedialogs::setPresenter(nullptr);
        ASSERT_TRUE(folder.isValid());
    }
    void TearDown() override { filedialogs::setPresenter(m_former); }

    QString path(const QString& name) const { return QDir(folder.path()).filePath(name); }

    void create(const QString& name) const
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }

    /// The chosen path; empty when the choice raised 32755.
    static QString choose(const Request& request, std::vector<User> users)
    {
        QTimer timer;
        std::size_t next = 0;
        QPointer<QFileDialog> served;
        QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
            auto* shown = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (!shown || shown == served)
                return;
            served = shown;
            if (next == users.size()) {
                ADD_FAILURE() << "One dialog too many";
                shown->reject();
                return;
            }
            users[next++](*shown);
        });
        timer.start(0);
        QString path;
        try {
            path = filedialogs::choose(request);
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.number(), ErrorNumber::DialogCancelled);
        }
        EXPECT_EQ(next, users.size());
        return path;
    }

    static User typing(const QString& name)
    {
        return [name](QFileDialog& dialog) {
            auto* edit = dialog.findChild<QLineEdit*>();
            ASSERT_NE(edit, nullptr);
            auto* buttons = dialog.findChild<QDialogButtonBox*>();
            ASSERT_NE(buttons, nullptr);
            auto* accept = buttons->button(dialog.acceptMode() == QFileDialog::AcceptSave ? QDialogButtonBox::Save
                                                                                          : QDialogButtonBox::Open);
            ASSERT_NE(accept, nullptr);
            // Until its folder is read, a dialog goes back to its suggestion and knows no file; what was typed before
            // that is judged anew only when it is typed anew. What an entry without the focus held once stays selected.
            const auto isTaken = [&] {
                const QStringList files = dialog.selectedFiles();
                return accept->isEnabled() && files.size() == 1 && files[0].startsWith(name);
            };
            const bool taken = QTest::qWaitFor(
                [&] {
                    edit->setFocus();
                    if (edit->hasFocus() && !isTaken()) {
                        edit->clear();
                        edit->setText(name);
                    }
                    return edit->hasFocus() && isTaken();
                },
                30'000);
            EXPECT_TRUE(taken) << name.toStdString();
            if (!taken) {
                dialog.reject();
                return;
            }
            QTest::keyClick(edit, Qt::Key_Return);
        };
    }

    static User pressingEscape()
    {
        return [](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); };
    }

    QTemporaryDir folder;

private:
    filedialogs::Presenter* m_former = nullptr;
};

} // namespace

TEST_F(FileDialogs, FiltersTakeQtsForm)
{
    const struct {
        const char* filter;
        QStringList filters;
    } rows[] = {
        {"Text Files (*.txt)|*.txt|All Files (*.*)|*.*", {"Text Files (*.txt)", "All Files (*)"}},
        {"Catalogs|*.csv;*.txt", {"Catalogs (*.csv *.txt)"}},
        {"Catalogs (*.csv; *.txt)|*.csv; *.txt", {"Catalogs (*.csv *.txt)"}},
        {"Old (1999) (*.dat)|*.dat", {"Old (1999) (*.dat)"}},
        {"", {"All Files (*)"}},
        {"No pattern", {"All Files (*)"}},
        {"Text|*.txt|Cut off", {"Text (*.txt)"}},
        {"Nothing|", {"All Files (*)"}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(filedialogs::nameFilters(row.filter), row.filters) << row.filter;
}

TEST_F(FileDialogs, TheDefaultExtensionIsTakenWithOrWithoutStar)
{
    EXPECT_EQ(filedialogs::suffix("*.txt"), "txt");
    EXPECT_EQ(filedialogs::suffix(".txt"), "txt");
    EXPECT_EQ(filedialogs::suffix("txt"), "txt");
    EXPECT_EQ(filedialogs::suffix("*.*"), "");
    EXPECT_EQ(filedialogs::suffix(""), "");
}

TEST_F(FileDialogs, TheDialogShowsWhatWasAskedFor)
{
    Request request{Mode::Save, "Select file...", path("Report.txt"), "Text Files (*.txt)|*.txt|All Files (*.*)|*.*",
                    "*.txt"};
    choose(request, {[&](QFileDialog& dialog) {
               EXPECT_EQ(dialog.windowTitle(), "Select file...");
               EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptSave);
               EXPECT_EQ(dialog.nameFilters(), (QStringList{"Text Files (*.txt)", "All Files (*)"}));
               EXPECT_EQ(dialog.defaultSuffix(), "txt");
               EXPECT_EQ(dialog.findChild<QLineEdit*>()->text(), "Report.txt");
               EXPECT_EQ(QFileInfo(dialog.directory().path()), QFileInfo(folder.path()));
               dialog.reject();
           }});
}

TEST_F(FileDialogs, CancelRaises32755)
{
    EXPECT_EQ(choose({Mode::Open, "Open"}, {pressingEscape()}), "");
    EXPECT_EQ(choose({Mode::Save, "Save"}, {pressingEscape()}), "");
}

TEST_F(FileDialogs, ANameWithoutAnExtensionTakesTheDefaultOne)
{
    const Request request{Mode::Save, "Save", {}, {}, "*.txt"};
    EXPECT_EQ(choose(request, {typing(path("report"))}), path("report.txt"));
    EXPECT_EQ(choose(request, {typing(path("report.log"))}), path("report.log"));
}

TEST_F(FileDialogs, OverwritingIsAskedForAndRefusalAsksForAnotherName)
{
    create("old.txt");
    Request request{Mode::Save, "Save", {}, {}, "*.txt"};
    request.promptBeforeOverwriting = true;
    const boxes::Box question{path("old.txt") + "\nalready exists. Do you want to replace it?",
                              boxes::Icon::Exclamation, boxes::Buttons::YesNo, application::title()};

    ScriptedBoxes boxes;
    boxes.expect(question, boxes::Answer::Yes);
    EXPECT_EQ(choose(request, {typing(path("old"))}), path("old.txt"));
    boxes.verify();

    boxes.expect(question, boxes::Answer::No);
    EXPECT_EQ(choose(request, {typing(path("old.txt")), typing(path("new.txt"))}), path("new.txt"));
    boxes.verify();

    boxes.expect(question, boxes::Answer::No);
    EXPECT_EQ(choose(request, {typing(path("old.txt")), pressingEscape()}), "");
}

TEST_F(FileDialogs, OverwritingIsNotAskedForUnlessWanted)
{
    create("old.txt");
    EXPECT_EQ(choose({Mode::Save, "Save"}, {typing(path("old.txt"))}), path("old.txt"));
}

TEST_F(FileDialogs, CreatingIsAskedForAndRefusalAsksForAnotherName)
{
    create("old.txt");
    Request request{Mode::Save, "Save", {}, {}, "*.txt"};
    request.promptBeforeCreating = true;
    const boxes::Box question{path("new.txt") + "\ndoes not exist. Do you want to create it?", boxes::Icon::Question,
                              boxes::Buttons::YesNo, application::title()};

    ScriptedBoxes boxes;
    boxes.expect(question, boxes::Answer::Yes);
    EXPECT_EQ(choose(request, {typing(path("new"))}), path("new.txt"));
    boxes.verify();

    boxes.expect(question, boxes::Answer::No);
    EXPECT_EQ(choose(request, {typing(path("new.txt")),
                               [&](QFileDialog& dialog) {
                                   EXPECT_EQ(dialog.findChild<QLineEdit*>()->text(), "new.txt");
                                   EXPECT_EQ(QFileInfo(dialog.directory().path()), QFileInfo(folder.path()));
                                   typing(path("old.txt"))(dialog);
                               }}),
              path("old.txt"));
    boxes.verify();

    boxes.expect(question, boxes::Answer::No);
    EXPECT_EQ(choose(request, {typing(path("new.txt")), pressingEscape()}), "");
}

TEST_F(FileDialogs, AFileThatIsThereIsAskedForOnceWhereBothAreAsked)
{
    create("old.txt");
    Request request{Mode::Save, "Save"};
    request.promptBeforeOverwriting = true;
    request.promptBeforeCreating = true;
    ScriptedBoxes boxes;
    boxes.expect({path("old.txt") + "\nalready exists. Do you want to replace it?", boxes::Icon::Exclamation,
                  boxes::Buttons::YesNo, application::title()},
                 boxes::Answer::Yes);
    EXPECT_EQ(choose(request, {typing(path("old.txt"))}), path("old.txt"));
}

TEST_F(FileDialogs, CreatingIsNotAskedForUnlessWantedNorWhenOpening)
{
    EXPECT_EQ(choose({Mode::Save, "Save"}, {typing(path("new.txt"))}), path("new.txt"));
    Request request{Mode::Open, "Open"};
    request.promptBeforeCreating = true;
    EXPECT_EQ(choose(request, {typing(path("new.txt"))}), path("new.txt"));
}

TEST_F(FileDialogs, AFileThatMustExistIsChosen)
{
    create("there.csv");
    Request request{Mode::Open, "Open", path("there.csv")};
    request.fileMustExist = true;
    EXPECT_EQ(choose(request, {typing(path("there.csv"))}), path("there.csv"));
}

TEST_F(FileDialogs, AFileNeedNotExistUnlessWanted)
{
    EXPECT_EQ(choose({Mode::Open, "Open"}, {typing(path("missing.csv"))}), path("missing.csv"));
}

TEST_F(FileDialogs, AFileWithoutAnExtensionIsOpenedByItsName)
{
    Request request{Mode::Open, "Open", {}, {}, "*.txt"};
    create("catalog");
    for (const bool mustExist : {false, true}) {
        request.fileMustExist = mustExist;
        EXPECT_EQ(choose(request, {typing(path("catalog"))}), path("catalog"));
    }
    create("catalog.txt");
    EXPECT_EQ(choose(request, {typing(path("catalog"))}), path("catalog"));
}

TEST_F(FileDialogs, AMissingFileIsTriedWithTheDefaultExtension)
{
    Request request{Mode::Open, "Open", {}, {}, "*.txt"};
    create("catalog.txt");
    create("catalog.csv.txt");
    for (const bool mustExist : {false, true}) {
        request.fileMustExist = mustExist;
        EXPECT_EQ(choose(request, {typing(path("catalog"))}), path("catalog.txt"));
        EXPECT_EQ(choose(request, {typing(path("catalog.csv"))}), path("catalog.csv.txt"));
    }
}

TEST_F(FileDialogs, AMissingFileThatNeedNotExistTakesTheDefaultExtensionIfItHasNone)
{
    const Request request{Mode::Open, "Open", {}, {}, "*.txt"};
    EXPECT_EQ(choose(request, {typing(path("missing"))}), path("missing.txt"));
    EXPECT_EQ(choose(request, {typing(path("missing.csv"))}), path("missing.csv"));
    EXPECT_EQ(choose({Mode::Open, "Open"}, {typing(path("missing"))}), path("missing"));
}

TEST_F(FileDialogs, AMissingFileIsRefusedWhereItMustExist)
{
    create("old.csv");
    ASSERT_TRUE(QDir(folder.path()).mkdir("missing.txt"));
    Request request{Mode::Open, "Open", {}, {}, "*.txt"};
    request.fileMustExist = true;
    const boxes::Box refusal{path("missing") + "\nFile not found.\nCheck the file name and try again.",
                             boxes::Icon::Exclamation, boxes::Buttons::Ok, application::title()};

    ScriptedBoxes boxes;
    boxes.expect(refusal, boxes::Answer::Ok);
    EXPECT_EQ(choose(request, {typing(path("missing")),
                               [&](QFileDialog& dialog) {
                                   EXPECT_EQ(dialog.findChild<QLineEdit*>()->text(), "missing");
                                   EXPECT_EQ(QFileInfo(dialog.directory().path()), QFileInfo(folder.path()));
                                   typing(path("old.csv"))(dialog);
                               }}),
              path("old.csv"));
    boxes.verify();

    boxes.expect(refusal, boxes::Answer::Ok);
    EXPECT_EQ(choose(request, {typing(path("missing")), pressingEscape()}), "");
}

TEST_F(FileDialogs, ARefusalKeepsTheFilter)
{
    create("old.txt");
    Request request{Mode::Save, "Save", {}, "Text Files (*.txt)|*.txt|Catalogs|*.csv|All Files (*.*)|*.*", "*.txt"};
    request.promptBeforeOverwriting = true;
    ScriptedBoxes boxes;
    boxes.expect({path("old.txt") + "\nalready exists. Do you want to replace it?", boxes::Icon::Exclamation,
                  boxes::Buttons::YesNo, application::title()},
                 boxes::Answer::No);
    choose(request, {[&](QFileDialog& dialog) {
                         EXPECT_EQ(dialog.selectedNameFilter(), "Text Files (*.txt)");
                         dialog.selectNameFilter("Catalogs (*.csv)");
                         typing(path("old.txt"))(dialog);
                     },
                     [](QFileDialog& dialog) {
                         EXPECT_EQ(dialog.selectedNameFilter(), "Catalogs (*.csv)");
                         EXPECT_EQ(dialog.findChild<QLineEdit*>()->text(), "old.txt");
                         dialog.reject();
                     }});
}

TEST_F(FileDialogs, TheNextDialogStartsInTheFolderOfTheLastChoice)
{
    choose({Mode::Save, "Save"}, {typing(path("first.txt"))});
    choose({Mode::Save, "Save", "second.txt"}, {[&](QFileDialog& dialog) {
               EXPECT_EQ(QFileInfo(dialog.directory().path()), QFileInfo(folder.path()));
               EXPECT_EQ(dialog.findChild<QLineEdit*>()->text(), "second.txt");
               dialog.reject();
           }});
}

TEST_F(FileDialogs, TheWaitPointerDoesNotShowMeanwhile)
{
    mousepointer::set(mousepointer::Wait);
    choose({Mode::Open, "Open"}, {[](QFileDialog& dialog) {
               EXPECT_EQ(QApplication::overrideCursor(), nullptr);
               dialog.reject();
           }});
    mousepointer::set(mousepointer::Default);
}
