#include "RecordSize.h"

#include "Form.h"
#include "GridTest.h"
#include "RuntimeError.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <optional>

using namespace Qt::StringLiterals;

namespace
{

/// The size as text; "Error 6" where it does not fit.
QString sized(int sum, const QString& file)
{
    try {
        return recordsize::withControlBytes(QString::number(sum), file);
    } catch (const RuntimeError& error) {
        return u"Error "_s + QString::number(static_cast<int>(error.number()));
    }
}

const QStringList filesWithControlBytes{u"CNTRL"_s, u"co"_s,    u"DB"_s,    u"DBPRV"_s, u"DRIVER"_s, u"fd"_s,
                                        u"fi"_s,    u"LOCDT"_s, u"SQLDT"_s, u"ta"_s,    u"TBLPRV"_s, u"us"_s};

/// The two places that calculate the size of a file's records: a cell of the grid of files, and the pane of one.
class RecordSizes : public GridTest
{
protected:
    void setSum(const QString& file, int sum) const
    {
        change(u"DELETE FROM TW_FIELD WHERE FILE_NAME = '%1'"_s.arg(file));
        change(
            u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LENGTH) VALUES ('%1', 1, 'X', %2)"_s.arg(file)
                .arg(sum));
    }

    /// What a calculation shows; the error's number where one is reported, and the failed text is then not looked at.
    template <typename Calculate, typename Shown>
    QString outcome(const Calculate& calculate, const Shown& shown)
    {
        const std::size_t before = errors.shown().size();
        calculate();
        if (errors.shown().size() > before)
            return u"Error "_s + errors.shown().back().number;
        return shown();
    }

    QString inTheGrid(const QString& file)
    {
        click(key({u"FI"_s}));
        click(file, u"Record Size"_s);
        hit(Qt::Key_Return);
        return outcome([&] { pressLookUp(); }, [&] { return editorText(); });
    }

    QString inThePane(const QString& file)
    {
        click(key({u"FI"_s, "fi="_L1 + file}));
        const Form& pane = *window->currentPane();
        return outcome([&] { QTest::mouseClick(pane.findChild<QPushButton*>(u"cmdCalcRecordSize"_s), Qt::LeftButton); },
                       [&] { return pane.findChild<QLineEdit*>(u"txtProperty_RECORD_SIZE"_s)->text(); });
    }
};

} // namespace

TEST(RecordSize, ControlBytesAreAddedWithinSixteenBits)
{
    for (const QString& file : filesWithControlBytes) {
        SCOPED_TRACE(file.toStdString());
        EXPECT_EQ(sized(0, file), u"8"_s);
        EXPECT_EQ(sized(32759, file), u"32767"_s);
        for (int sum = 32760; sum <= 32767; ++sum)
            EXPECT_EQ(sized(sum, file), u"Error 6"_s) << sum;
        EXPECT_EQ(sized(32768, file), u"Error 6"_s);
    }
}

TEST(RecordSize, OtherFilesHaveTheSumWhateverItIs)
{
    for (const QString& file : {u"PAYROLL"_s, u"KEY"_s, u"COLUMN"_s, u"TABLE"_s, u"TA"_s, u"db"_s, QString()}) {
        SCOPED_TRACE(file.toStdString());
        for (const int sum : {0, 32759, 32760, 32767, 32768, 65536, 2147483647})
            EXPECT_EQ(sized(sum, file), QString::number(sum));
    }
}

TEST_F(RecordSizes, TheGridAndThePaneCalculateTheSame)
{
    for (const char* file : {"ta", "TA"})
        change(u"INSERT INTO TW_FILE (FILE_NAME, RECORD_SIZE) VALUES ('%1', 1)"_s.arg(QLatin1String(file)));
    errors.otherwise(Press::Ignore);
    open({u"FI"_s});
    expandTo(key({u"FI"_s}));
    for (const auto& [sum, withControlBytes] :
         {std::pair(30, u"38"_s), std::pair(32759, u"32767"_s), std::pair(32760, u"Error 6"_s),
          std::pair(32767, u"Error 6"_s), std::pair(32768, u"Error 6"_s)}) {
        SCOPED_TRACE(sum);
        setSum(u"ta"_s, sum);
        EXPECT_EQ(inTheGrid(u"ta"_s), withControlBytes);
        EXPECT_EQ(inThePane(u"ta"_s), withControlBytes);
        setSum(u"TA"_s, sum);
        EXPECT_EQ(inTheGrid(u"TA"_s), QString::number(sum));
        EXPECT_EQ(inThePane(u"TA"_s), QString::number(sum));
    }
    EXPECT_EQ(errors.shown().size(), 6U);
}
