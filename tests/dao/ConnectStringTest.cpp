#include "ConnectString.h"

#include "QtPrinting.h"

#include <gtest/gtest.h>

using namespace dao;

TEST(ConnectString, ThePrefixIsTakenOffInAnyCase)
{
    EXPECT_EQ(connectString::withoutPrefix("ODBC;DSN=a;DATABASE=PUBS"), "DSN=a;DATABASE=PUBS");
    EXPECT_EQ(connectString::withoutPrefix("odbc;DSN=a"), "DSN=a");
    EXPECT_EQ(connectString::withoutPrefix("DSN=a"), "DSN=a");
}

TEST(ConnectString, TheDatasourceIsTheNameOrThePathOfAFile)
{
    struct {
        QString connect, datasource;
    } const rows[] = {
        {"DSN=Sales;DATABASE=PUBS", "Sales"},
        {"DATABASE=PUBS; dsn = Sales ;X=1", "Sales"},
        {"FILEDSN=/etc/odbc/a.dsn;DATABASE=PUBS", "/etc/odbc/a.dsn"},
        {"DSN={a;b}};c};DATABASE=PUBS", "a;b};c"},
        {"DSN=Sales;DATABASE=PUBSDATABASE=PUBS", "Sales"},
        {"PWD={DSN=no};DSN=yes", "yes"},
        {"DSN=first;DSN=second", "first"},
        {"word;DSN=a", "a"},
        {"DSN={open", "{open"},
        {"DATABASE=PUBS", ""},
        {"", ""},
        {";;=;", ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(connectString::datasource(row.connect), row.datasource) << row.connect.toStdString();
}
