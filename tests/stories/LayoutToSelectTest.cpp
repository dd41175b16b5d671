#include "Command.h"
#include "StoryFixture.h"

#include <QFile>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

/// The fenced blocks of a page of docs/, by the word behind their fence and their place among those with that word.
class Page
{
public:
    explicit Page(const QString& name)
    {
        QFile file(QStringLiteral(QUORVANE_DOCS "/") + name);
        if (!file.open(QIODevice::ReadOnly))
            throw std::runtime_error("There is no page " + name.toStdString());
        m_text = QString::fromUtf8(file.readAll());
    }

    QString block(const QString& word, int place = 0) const
    {
        static const QRegularExpression fenced(u"^```(\\w*)\\n(.*?)^```$"_s,
                                               QRegularExpression::MultilineOption |
                                                   QRegularExpression::DotMatchesEverythingOption);
        for (const QRegularExpressionMatch& match : fenced.globalMatch(m_text)) {
            if (match.captured(1) == word && place-- == 0)
                return match.captured(2);
        }
        throw std::runtime_error("The page has too few blocks of " + word.toStdString());
    }

    /// The rows of the table whose heading begins with a word, cells without their back quotes.
    QList<QStringList> table(const QString& heading) const
    {
        QList<QStringList> rows;
        bool within = false;
        for (const QString& line : m_text.split(u'\n')) {
            if (line.startsWith("| "_L1 + heading + " |"_L1))
                within = true;
            else if (within && !line.startsWith(u'|'))
                break;
            else if (within && !line.startsWith("|--"_L1))
                rows.append(cells(line.mid(1).chopped(1).remove(u'`')));
        }
        return rows;
    }

    static QStringList cells(const QString& line)
    {
        QStringList cells;
        for (const QString& cell : line.split(u'|'))
            cells.append(cell.trimmed());
        return cells;
    }

private:
    QString m_text;
};

/// A printed value as SQL has it: numbers by their value, the digits of a date parted.
QString plain(const QString& value)
{
    static const QRegularExpression eight(u"^(20\\d\\d)(\\d\\d)(\\d\\d)$"_s);
    if (const auto date = eight.match(value); date.hasMatch())
        return u"%1-%2-%3"_s.arg(date.captured(1), date.captured(2), date.captured(3));
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    return isNumber ? QString::number(number, 'g', 15) : value;
}

/// The lines with cells in them, but for headings and rules, as plain values.
QList<QStringList> plainRows(const QString& text)
{
    QList<QStringList> rows;
    for (const QString& line : text.split(u'\n')) {
        QStringList row = Page::cells(line);
        row.removeAll(QString());
        if (row.size() < 2 || !row.first().front().isDigit())
            continue;
        for (QString& cell : row)
            cell = plain(cell);
        rows.append(row);
    }
    return rows;
}

class LayoutToSelect : public Story
{
protected:
    QString file(const QString& name) const { return world.folder() + '/'_L1 + name; }

    void put(const QString& name, const QString& text) const
    {
        QFile target(file(name));
        ASSERT_TRUE(target.open(QIODevice::WriteOnly));
        target.write(text.toUtf8());
    }

    /// What the page's program prints, compiled and run beside the page's copybook.
    QString runProgram()
    {
        put(u"delivery.cpy"_s, page.block(u"cobol"_s, 0));
        put(u"bread.cob"_s, page.block(u"cobol"_s, 1));
        const CommandOutput output = RunCommand(
            {"sh", "-c", "cd '" + world.folder().toStdString() + "' && cobc -x -free bread.cob && ./bread"}, "");
        EXPECT_EQ(output.exitCode, 0) << "cobc of the package gnucobol3 is needed. " << output.text;
        return QString::fromStdString(output.text);
    }

    void addFile()
    {
        MainWindowTest::choose(key({u"FI"_s}), u"mnu_FileAdd"_s);
        write(u"FILE_NAME"_s, u"delivery"_s);
        pick(u"FILE_ORGANISATION"_s, u"SEQUENTIAL"_s);
        pick(u"RECORD_TYPE"_s, u"FIXED"_s);
        press(u"OK"_s);
        press(u"Cancel"_s);
    }

    /// One field after the other, by the rows of the page's table; a cell without a value is left as it is proposed.
    void addFields()
    {
        const QList<QStringList> rows = page.table(u"Field Name"_s);
        ASSERT_EQ(rows.size(), 5);
        expandTo(key({u"FI"_s, u"fi=DELIVERY"_s}));
        MainWindowTest::choose(key({u"FI"_s, u"fi=DELIVERY"_s, u"FD"_s}), u"mnu_FieldAddNew"_s);
        for (const QStringList& row : rows) {
            write(u"FIELD_NAME"_s, row[0]);
            pick(u"LOCAL_TYPE_NAME"_s, row[1]);
            const QStringList columns{u"LENGTH"_s, u"PRECISION"_s, u"SCALE"_s};
            for (int i = 0; i < columns.size(); ++i) {
                if (!row[i + 2].isEmpty())
                    write(columns[i], row[i + 2]);
            }
            press(u"OK"_s);
        }
        press(u"Cancel"_s);
        expandTo(key({u"FI"_s}));
        click(key({u"FI"_s, u"fi=DELIVERY"_s}));
        clickButton(u"cmdCalcRecordSize"_s);
        press(u"OK"_s);
    }

    void addDatabase()
    {
        MainWindowTest::choose(key({u"DB"_s}), u"mnu_DBAdd"_s);
        write(u"DATABASE_NAME"_s, u"bakery"_s);
        pick(u"DRIVER_NAME"_s, u"FLAT"_s);
        write(u"DEFAULT_DIRECTORY"_s, u"."_s);
        press(u"OK"_s);
        press(u"Cancel"_s);
    }

    const Page page{u"from-layout-to-select.md"_s};
};

} // namespace

TEST_F(LayoutToSelect, EveryRecordThatTheProgramOfThePageWritesIsReadAsItWasPrinted)
{
    const QString printed = runProgram();
    EXPECT_EQ(printed, page.block(u"text"_s, 0));
    const QList<QStringList> expected = plainRows(printed);
    ASSERT_EQ(expected.size(), 4);

    begin({u"FI"_s});
    addFile();
    addFields();
    EXPECT_EQ(stored(u"SELECT RECORD_SIZE FROM TW_FILE WHERE FILE_NAME = 'DELIVERY'"_s), QStringList{u"35"_s});
    EXPECT_EQ(QFile(file(u"bread.dat"_s)).size(), 4 * 35);
    addDatabase();
    makeTable(u"DELIVERY"_s, u"BAKERY"_s, u"bread.dat"_s);
    QList<QStringList> shown = viewData(u"BAKERY"_s, u"DELIVERY"_s,
                                        {u"DELIVERY_NO"_s, u"SHOP"_s, u"DELIVERED_ON"_s, u"LOAVES"_s, u"AMOUNT"_s});
    for (QStringList& row : shown)
        std::transform(row.begin(), row.end(), row.begin(), plain);
    EXPECT_EQ(shown, expected);
    EXPECT_TRUE(errors.shown().empty());

    // A client that knows nothing of the workbench.
    const auto ask = [&](const std::string& statement) {
        const CommandOutput output = RunCommand({"isql", datasource.toStdString(), "-b"}, statement + "\n");
        EXPECT_EQ(output.exitCode, 0) << output.text;
        return plainRows(QString::fromStdString(output.text));
    };
    EXPECT_EQ(ask("SELECT * FROM BAKERY_DELIVERY"), expected);
    const QString session = page.block(u"text"_s, 1);
    static const QRegularExpression typed(u"^SQL> (.+)$"_s, QRegularExpression::MultilineOption);
    const QString statement = typed.match(session).captured(1);
    ASSERT_TRUE(statement.contains("GROUP BY"_L1));
    const CommandOutput answer = RunCommand({"isql", datasource.toStdString(), "-b"}, statement.toStdString() + "\n");
    for (const QString& line : session.split(u'\n')) {
        if (line.startsWith(u'|')) {
            EXPECT_NE(answer.text.find(line.trimmed().toStdString()), std::string::npos) << line.toStdString();
        }
    }
}
