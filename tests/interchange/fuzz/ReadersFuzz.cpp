#include "ReadersFuzz.h"

#include "CConnections.h"
#include "CatalogNames.h"
#include "CsvColumns.h"
#include "CsvDefaults.h"
#include "Findings.h"
#include "LineValidator.h"
#include "Recordset.h"
#include "RuntimeError.h"

#include <QStringList>

#include <cstdlib>
#include <memory>

namespace
{

/// A catalog that knows no driver, and that must never be written to.
class ReadOnlyDatabase final : public dao::Database
{
public:
    void Execute(const QString&) override { std::abort(); }
    std::unique_ptr<dao::Recordset> OpenRecordset(const QString& statement, dao::RecordsetType) override
    {
        // An apostrophe of a name may break the statement, but nothing may follow it.
        if (statement.count(u'\'') > 2 && statement.contains(u';'))
            std::abort();
        throw RuntimeError(ErrorNumber::OdbcFailed);
    }
    void Close() override {}
    QString Name() const override { return {}; }
    QString Connect() const override { return {}; }
};

CConnection& connection()
{
    static CConnection* made = [] {
        auto* one = new CConnection;
        one->setDb(std::make_unique<ReadOnlyDatabase>());
        CLOCDT local;
        local.LOCAL_TYPE_NAME = QStringLiteral("STRING");
        local.ATTRIBUTES = QStringLiteral("CHARACTER;DEFAULT_LENGTH=10;DEFAULT_PRECISION=10");
        CLOCDTs locals;
        locals.add(local);
        one->setLOCDTs(locals);
        CSQLDT sql;
        sql.SQL_TYPE_NAME = QStringLiteral("CHAR");
        CSQLDTs sqls;
        sqls.add(sql);
        one->setSQLDTs(sqls);
        return one;
    }();
    return *made;
}

void require(bool holds)
{
    if (!holds)
        std::abort();
}

QStringList linesOf(const std::uint8_t* data, std::size_t size)
{
    return QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)).split(u'\n');
}

void validate(const QStringList& lines)
{
    CatalogNames names;
    names.databases.insert(QStringLiteral("SALES"), CatalogNames::Origin::Catalog);
    Findings findings;
    LineValidator validator(connection(), names, findings);
    int number = 0;
    for (const QString& line : lines) {
        const std::size_t former = findings.all().size();
        try {
            validator.validate(++number, line);
        } catch (const RuntimeError& error) {
            // A FILE line of four columns, and a driver that could not be asked for.
            require(error.number() == ErrorNumber::SubscriptOutOfRange || error.number() == ErrorNumber::OdbcFailed);
        }
        require(!line.isEmpty() || findings.all().size() == former);
        for (std::size_t i = former; i < findings.all().size(); ++i)
            require(findings.all()[i].line == number && !findings.all()[i].description.isEmpty());
    }
}

void scan(const QStringList& lines)
{
    for (const QString& line : lines) {
        CsvColumns columns;
        scanLine(line, columns);
        require(columns.count() <= CsvColumns::most && (columns.count() == 0) == line.isEmpty());
        for (int number = 1; number <= columns.count(); ++number)
            require(line.contains(columns[number]));
        if (columns.count() > 0) {
            const QString id = columns[1].toString().toUpper();
            fillIn(id, columns, connection().LOCDTs());
        }
        require(maskedLine(line).count(u',') <= line.count(u','));
    }
}

} // namespace

void fuzzValidator(const std::uint8_t* data, std::size_t size)
{
    validate(linesOf(data, size));
}

void fuzzScanner(const std::uint8_t* data, std::size_t size)
{
    scan(linesOf(data, size));
}
