#include "CsvBlocks.h"
#include "EngineFixture.h"
#include "LineImporter.h"
#include "LineReader.h"
#include "LineValidator.h"
#include "Recordset.h"
#include "TextWriter.h"

#include <QFile>
#include <QMap>
#include <QRandomGenerator>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace
{

QString quoted(const QString& text)
{
    return '\''_L1 + QString(text).replace('\''_L1, "''"_L1) + '\''_L1;
}

/// Catalogs of every kind of row that a validation takes, written, read into an empty catalog, and written again.
class RoundTripTest : public EngineTest
{
protected:
    void run(const QString& statement) const { connection->db()->Execute(statement); }

    void insert(const QString& table, const QString& columns, const QStringList& values) const
    {
        run(u"INSERT INTO %1 (%2) VALUES (%3)"_s.arg(table, columns, values.join(", "_L1)));
    }

    void emptyCatalog() const
    {
        for (const char* table : {"TW_DB", "TW_TABLE", "TW_COLUMN", "TW_DBPRV", "TW_TBLPRV"})
            run(u"DELETE FROM %1 WHERE DATABASE_NAME <> 'TW'"_s.arg(QLatin1String(table)));
        run(u"DELETE FROM TW_USER WHERE USER_NAME <> 'ADMIN'"_s);
        for (const char* table : {"TW_FILE", "TW_FIELD"})
            run(u"DELETE FROM %1 WHERE FILE_NAME NOT IN ('CNTRL','COLUMN','DB','DBPRV','DRIVER','FIELD','FILE','KEY',"
                "'LOCDT','SQLDT','TABLE','TBLPRV','USER')"_s.arg(QLatin1String(table)));
    }

    QByteArray exported() const
    {
        const QString path = folder.filePath(u"catalog.csv"_s);
        {
            TextWriter file(path);
            for (const CsvBlock& block : csvBlocks()) {
                const auto rows = connection->db()->OpenRecordset(QLatin1String(block.statement));
                for (; !rows->Eof(); rows->MoveNext())
                    appendCsvLine(file, block.id, *rows);
            }
            file.close();
        }
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    void importFile() const
    {
        const QString path = folder.filePath(u"catalog.csv"_s);
        Findings findings;
        {
            CatalogNames names;
            names.ReadCurrentCatalog(*connection->db(), [](const char*, QStringView) {});
            LineValidator validator(*connection, names, findings);
            LineReader reader(path);
            for (int line = 1; reader.next(); ++line)
                validator.validate(line, reader.text());
        }
        for (const QString& finding : lines(findings))
            EXPECT_TRUE(finding.endsWith(u"assword is blank"_s)) << finding.toStdString();
        LineImporter importer(*connection, findings);
        LineReader reader(path);
        for (int line = 1; reader.next(); ++line)
            importer.ImportLine(line, reader.text());
    }

    QStringList values(const QString& select) const
    {
        QStringList all;
        const auto rows = connection->db()->OpenRecordset(select);
        for (; !rows->Eof(); rows->MoveNext()) {
            QStringList row;
            for (int column = 0; column < rows->Fields().Count(); ++column)
                row.append(rows->View(column).toString());
            all.append(row.join(' '_L1));
        }
        return all;
    }

    /// What the file leaves out: numbers count from 1 in its order, texts are empty.
    void expectDefaults(const QByteArray& file) const
    {
        QStringList fields;
        QStringList columns;
        QMap<QString, int> counts;
        for (const QByteArray& line : file.split('\n')) {
            const QStringList parts = QString::fromUtf8(line).split(','_L1);
            const auto part = [&](int number) { return QString(parts.value(number - 1)).remove('"'_L1); };
            if (part(1) == "FIELD"_L1)
                fields.append(part(2) + ' ' + part(3) + ' ' + QString::number(++counts[part(2)]));
            if (part(1) == "COLUMN"_L1)
                columns.append(part(3) + ' ' + part(4) + ' ' + QString::number(++counts[part(2) + ' ' + part(3)]));
        }
        fields.sort();
        columns.sort();
        const auto sorted = [&](const QString& select) {
            QStringList all = values(select);
            all.sort();
            return all;
        };
        EXPECT_EQ(sorted(u"SELECT FILE_NAME, FIELD_NAME, FIELD_NUMBER FROM TW_FIELD WHERE FILE_NAME LIKE 'F%!_' "
                         "ESCAPE '!'"_s),
                  fields);
        EXPECT_EQ(sorted(u"SELECT TABLE_NAME, COLUMN_NAME, COLUMN_NUMBER FROM TW_COLUMN WHERE DATABASE_NAME <> 'TW'"_s),
                  columns);
        for (const QString& criterion : {
                 u"TW_FILE WHERE (REMARKS <> '' OR OPEN_STRING <> '') AND FILE_NAME LIKE 'F%!_' ESCAPE '!'"_s,
                 u"TW_FIELD WHERE REMARKS <> '' AND FILE_NAME LIKE 'F%!_' ESCAPE '!'"_s,
                 u"TW_DB WHERE (REMARKS <> '' OR SETUP_PROCEDURE <> '') AND DATABASE_NAME <> 'TW'"_s,
                 u"TW_TABLE WHERE (REMARKS <> '' OR NUMBER_COLUMNS <> 0) AND DATABASE_NAME <> 'TW'"_s,
                 u"TW_COLUMN WHERE (REMARKS <> '' OR SETFILEPARAMETER <> 0) AND DATABASE_NAME <> 'TW'"_s,
                 u"TW_USER WHERE REMARKS <> '' AND USER_NAME <> 'ADMIN'"_s,
                 u"TW_DBPRV WHERE REMARKS <> '' AND DATABASE_NAME <> 'TW'"_s,
                 u"TW_TBLPRV WHERE REMARKS <> '' AND DATABASE_NAME <> 'TW'"_s,
             })
            EXPECT_EQ(values("SELECT REMARKS FROM "_L1 + criterion), QStringList()) << criterion.toStdString();
    }

    int number(int below) { return random.bounded(below); }
    QString bit() { return QString::number(number(2)); }
    QString length() { return QString::number(number(4) == 0 ? 65535 : number(65536)); }

    /// A text that neither reader cuts: no quotes, no commas, no line ends, nothing at its ends that is taken off.
    QString text()
    {
        static const QString inner = u"abcXYZ 019'.;:/\\-_()=<>%\t\u00E9\u00DF\u20AC"_s;
        static const QString outer = u"abcXYZ019'.;:/-_()=<>%"_s;
        const int size = number(14);
        QString made;
        for (int i = 0; i < size; ++i) {
            const QString& from = i == 0 || i == size - 1 ? outer : inner;
            made.append(from[number(static_cast<int>(from.size()))]);
        }
        return made;
    }

    template <class Item>
    const Item& oneOf(const std::vector<Item>& items)
    {
        return items[static_cast<std::size_t>(number(static_cast<int>(items.size())))];
    }

    /// The catalog; what is lost of it on the way is that formats and users' passwords come back in upper case.
    QByteArray makeCatalog();
    void makeFile(int file, QByteArray& lines);
    void makeDatabase(int database, int files);

    static QString shown(const QString& text) { return '"'_L1 + text + '"'_L1; }

    QTemporaryDir folder;
    QRandomGenerator random;
    std::vector<QString> localTypes;
    std::vector<QString> sqlTypes;
    std::vector<int> fieldCounts;
    std::vector<std::pair<QString, QString>> tables;
};

void RoundTripTest::makeFile(int file, QByteArray& lines)
{
    const QString name = u"F%1_"_s.arg(file);
    const QString organisation = oneOf<QString>({u"INDEXED"_s, u"RELATIVE"_s, u"SEQUENTIAL"_s});
    insert(u"TW_FILE"_s, u"FILE_NAME, FILE_ORGANISATION, RECORD_TYPE, RECORD_SIZE, REMARKS, OPEN_STRING"_s,
           {quoted(name), quoted(organisation), quoted(oneOf<QString>({u"FIXED"_s, u"VARIABLE"_s})), length(),
            quoted(text()), quoted(text())});
    fieldCounts.push_back(number(6));
    for (int field = 0; field < fieldCounts.back(); ++field) {
        const QStringList numbers{length(), length(), length(), QString::number(number(33)), bit()};
        const QString format = text();
        const QString value = text();
        const QString type = oneOf(localTypes);
        insert(u"TW_FIELD"_s,
               u"FILE_NAME, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, PRECISION, SCALE, ENCRYPTED, FORMAT, "
               "DEFAULT_VALUE, FIELD_NUMBER, REMARKS"_s,
               {quoted(name), quoted(u"A%1"_s.arg(field)), quoted(type), numbers.join(", "_L1), quoted(format),
                quoted(value), QString::number(number(100)), quoted(text())});
        lines += QStringList{shown(u"FIELD"_s), shown(name),          shown(u"A%1"_s.arg(field)),
                             shown(type),       numbers.join(','_L1), shown(format.toUpper()),
                             shown(value)}
                     .join(','_L1)
                     .toUtf8() +
                 "\r\n";
    }
}

void RoundTripTest::makeDatabase(int database, int files)
{
    const QString name = u"D%1_"_s.arg(database);
    insert(u"TW_DB"_s,
           u"DATABASE_NAME, DEFAULT_DIRECTORY, DRIVER_NAME, CONNECT_STRING, DISPLAY_NAME, REMARKS, SETUP_PROCEDURE"_s,
           {quoted(name), quoted(text()), quoted(u"DISAM"_s), quoted(text()),
            quoted(oneOf<QString>({name, name.toLower(), QString()})), quoted(text()), quoted(text())});
    for (int table = 0; table < number(4); ++table) {
        const QString tableName = u"T%1_%2"_s.arg(database).arg(table);
        tables.emplace_back(name, tableName);
        const int file = number(files);
        insert(u"TW_TABLE"_s,
               u"DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION, CRITERIA, DISPLAY_NAME, "
               "NUMBER_COLUMNS"_s,
               {quoted(name), quoted(tableName), quoted(u"TABLE"_s), quoted(u"F%1_"_s.arg(file)), quoted(text()),
                quoted(text()), quoted(text()), QString::number(number(9))});
        for (int field = 0; field < fieldCounts[static_cast<std::size_t>(file)]; ++field)
            insert(u"TW_COLUMN"_s,
                   u"DATABASE_NAME, TABLE_NAME, COLUMN_NAME, FIELD_NAME, SQL_TYPE_NAME, LENGTH, UPDATABLE, VISIBLE, "
                   "DEFAULT_VALUE, DISPLAY_NAME, COLUMN_TYPE, COLUMN_NUMBER"_s,
                   {quoted(name), quoted(tableName), quoted(u"C%1"_s.arg(field)), quoted(u"A%1"_s.arg(field)),
                    quoted(oneOf(sqlTypes)), length(), bit(), bit(), quoted(text()), quoted(text()), u"0"_s,
                    QString::number(number(99))});
    }
}

QByteArray RoundTripTest::makeCatalog()
{
    fieldCounts.clear();
    tables.clear();
    QByteArray fields;
    QByteArray users;
    const int files = 1 + number(4);
    for (int file = 0; file < files; ++file)
        makeFile(file, fields);
    const int databases = number(3);
    for (int database = 0; database < databases; ++database)
        makeDatabase(database, files);
    const int count = number(4);
    for (int user = 0; user < count; ++user) {
        const QString name = u"U%1_"_s.arg(user);
        const QString password = text();
        insert(u"TW_USER"_s, u"USER_NAME, USER_PASSWORD, REMARKS"_s, {quoted(name), quoted(password), quoted(text())});
        users += "\"USER\",\"" + name.toUtf8() + "\",\"" + password.toUpper().toUtf8() + "\"\r\n";
        for (int database = 0; database < databases; ++database)
            insert(u"TW_DBPRV"_s,
                   u"USER_NAME, DATABASE_NAME, DATABASE_USERNAME, DATABASE_PASSWORD, ALLOW_SELECT, ALLOW_INSERT, "
                   "ALLOW_UPDATE, ALLOW_DELETE, SECURITY_LEVEL"_s,
                   {quoted(name), quoted(u"D%1_"_s.arg(database)), quoted(text().toUpper()), quoted(text()), bit(),
                    bit(), bit(), bit(), quoted(oneOf<QString>({u"DATABASE"_s, u"TABLE"_s}))});
        for (const auto& [database, table] : tables)
            insert(u"TW_TBLPRV"_s,
                   u"USER_NAME, DATABASE_NAME, TABLE_NAME, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, ALLOW_DELETE"_s,
                   {quoted(name), quoted(database), quoted(table), bit(), bit(), bit(), bit()});
    }

    // The lines of fields and of users stand as they come back; all others do so as they are written.
    QByteArray expected;
    bool fieldsDone = false;
    bool usersDone = false;
    for (const QByteArray& line : exported().split('\n')) {
        if (line.startsWith("\"FIELD\",")) {
            if (!std::exchange(fieldsDone, true))
                expected += fields;
        } else if (line.startsWith("\"USER\",")) {
            if (!std::exchange(usersDone, true))
                expected += users;
        } else if (!line.isEmpty()) {
            expected += line + '\n';
        }
    }
    return expected;
}

} // namespace

TEST_F(RoundTripTest, TwoHundredCatalogsComeBackButForWhatTheFormatLeavesOut)
{
    for (const CLOCDT& type : connection->LOCDTs())
        localTypes.push_back(type.LOCAL_TYPE_NAME);
    for (const CSQLDT& type : connection->SQLDTs())
        sqlTypes.push_back(type.SQL_TYPE_NAME);
    // What takes long is only that each statement is brought to the disk.
    run(u"BEGIN"_s);
    qsizetype size = 0;
    for (quint32 seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE(seed);
        random.seed(seed);
        emptyCatalog();
        const QByteArray expected = makeCatalog();
        exported();
        emptyCatalog();
        importFile();
        ASSERT_EQ(QString::fromUtf8(exported()).split('\n'_L1), QString::fromUtf8(expected).split('\n'_L1));
        expectDefaults(expected);
        size += expected.size();
    }
    run(u"COMMIT"_s);
    EXPECT_GT(size, 200000);
}
