#pragma once

#include "EngineFixture.h"
#include "LineValidator.h"

/// Lines in front of the validation, each row on its own: the lines before it, the line, and what is found in it, as
/// "ERR FILE: text". The lines before must pass.
class ValidatorTest : public EngineTest
{
protected:
    struct Row {
        const char* what;
        QStringList before;
        QString line;
        QStringList findings;
    };

    void check(const std::vector<Row>& rows)
    {
        CatalogNames catalog;
        catalog.ReadCurrentCatalog(*connection->db(), [](const char*, QStringView) {});
        for (const Row& row : rows) {
            SCOPED_TRACE(row.what + (": " + row.line).toStdString());
            CatalogNames names = catalog;
            Findings findings;
            LineValidator validator(*connection, names, findings);
            int number = 0;
            for (const QString& line : row.before)
                validator.validate(++number, line);
            EXPECT_EQ(lines(findings), QStringList()) << "of the lines before";
            findings.clear();
            validator.validate(++number, row.line);
            QStringList expected;
            for (const QString& finding : row.findings)
                expected.append(QString::number(number) + ' ' + finding);
            EXPECT_EQ(lines(findings), expected);
        }
    }

    /// Lines that pass, one for each kind that others refer to.
    const QString file = QStringLiteral("FILE,STOCK,INDEXED,FIXED,20");
    const QString field = QStringLiteral("FIELD,STOCK,PART,STRING,0,8,8,0,0,,");
    const QString database = QStringLiteral("DB,DEPOT,,DISAM,,DEPOT");
    const QString table = QStringLiteral("TABLE,DEPOT,PARTS,TABLE,STOCK,parts.dat,,PARTS");
    const QString user = QStringLiteral("USER,BOB,SECRET");
    const QStringList columnWorld{file, field, database, table};
};
