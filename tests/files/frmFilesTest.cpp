#include "GridFixture.h"

#include "CellGrid.h"
#include "FaultSweep.h"
#include "Settings.h"
#include "ctlTextLookup.h"

#include <QLabel>
#include <QTest>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace
{

class FilesGrid : public GridTest
{
protected:
    QStringList storedFiles() const
    {
        return stored(u"SELECT FILE_NAME, OPEN_STRING, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE, REMARKS "
                      "FROM TW_FILE WHERE FILE_NAME IN ('PAYROLL', 'EMPTY', 'A', 'B', 'C') ORDER BY FILE_NAME"_s);
    }
};

} // namespace

TEST_F(FilesGrid, ShowsTheFilesAndABlankRow)
{
    open({u"FI"_s});
    EXPECT_EQ(paneTitle(), datasource + u" - Files"_s);
    EXPECT_EQ(grid().Heading(3), u"File Organisation"_s);
    EXPECT_EQ(rows(),
              (QStringList{u"PAYROLL||12|INDEXED|FIXED|"_s, u"EMPTY||0|RELATIVE|FIXED|"_s, u"|||INDEXED|FIXED|"_s}));
    EXPECT_EQ(current(), u"0 File Name"_s);
}

TEST_F(FilesGrid, ThreeRowsAreAddedOneBelowTheOther)
{
    open({u"FI"_s});
    click(blankRow(), u"File Name"_s);
    for (const char* name : {"a", "b", "c"}) {
        write(QLatin1String(name));
        hit(Qt::Key_Tab);
        hit(Qt::Key_Tab);
        write(u"80"_s);
        hit(Qt::Key_Down);
        EXPECT_EQ(current(), QString::number(blankRow()) + u" Record Size"_s);
        click(blankRow(), u"File Name"_s);
    }
    EXPECT_EQ(storedFiles(),
              (QStringList{u"A||80|INDEXED|FIXED|"_s, u"B||80|INDEXED|FIXED|"_s, u"C||80|INDEXED|FIXED|"_s,
                           u"EMPTY||0|RELATIVE|FIXED|"_s, u"PAYROLL||12|INDEXED|FIXED|"_s}));
    EXPECT_EQ(children(key({u"FI"_s})).first(3), (QStringList{u"A"_s, u"B"_s, u"C"_s}));
    EXPECT_EQ(selectedKey(), key({u"FI"_s}));
}
